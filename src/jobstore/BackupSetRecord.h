#pragma once
// One line of BacksetData.txt. The main application owns the line; the monitor reads
// only the set name in front of the first U+0008 and carries the rest untouched.
#include "base/Text.h"

namespace jobstore {

using base::Text;

struct BackupSetRecord {
  Text Name;  // text before the first U+0008; empty for a line without one
  Text Line;  // the whole line as read

  bool operator==(const BackupSetRecord&) const = default;
};

}  // namespace jobstore
