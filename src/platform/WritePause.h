#pragma once
// A way for tests to stop a write at one of its steps, so that a crash at exactly that
// moment can be made and what it leaves looked at.
//
// QV_WRITE_PAUSE="<step>|<file name>|<marker>" makes the first write of a file whose
// path ends in <file name> that reaches <step> create the file <marker> (a path of the
// system the program runs on) and then wait there for good, until the test kills the
// program. The variable is read once; without it, or with a step name not known, every
// call here is one test of a flag.
#include "base/Text.h"

namespace platform {

enum class WriteStep {
  Written,    // "written": the temporary file's bytes are written, not yet flushed
  Flushed,    // "flushed": the temporary file is flushed and closed
  Replacing,  // "replacing": the replace of the original is about to be asked for
  Replaced,   // "replaced": the new content has taken the original's place
  Appending,  // "appending": half of an append is in the file, the rest not yet
};

// True when a pause is asked for at `step` of a write of `path`.
bool PauseAsked(WriteStep step, base::TextView path);

// Creates the marker and waits for good. Called only when PauseAsked said so.
void PauseHere();

inline void PauseIfAsked(WriteStep step, base::TextView path) {
  if (PauseAsked(step, path)) PauseHere();
}

}  // namespace platform
