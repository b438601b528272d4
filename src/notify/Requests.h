#pragma once
// The engine's requests to the notices: the files it leaves in QVCOMMON when a job has
// ended (qvwincurjobname.txt, UTF-16) and when a dial-up line is to be dropped
// (DialupDisconnect.txt, plain text), the result it leaves in DESKNOTIFYICON, and the
// names the notices keep for the life of the process.
#include <optional>

#include "base/Text.h"
#include "frame/AppState.h"

namespace notify {

using base::Text;
using base::TextView;

inline constexpr char16_t kJobRequestFile[] = u"qvwincurjobname.txt";
inline constexpr char16_t kDialupRequestFile[] = u"DialupDisconnect.txt";

// What the notices keep between requests. The set of the last job is the process's
// CurrentLogName and the second line of a dial-up request its CurrentSessionFile
// (AppState): the activity log's lines of the dial-up window go to that job's log
// and session file as well. The account is the notices' own.
struct KeptNames {
  Text accountName;
};

// Line 1 the set, line 2 dropped, line 3 the account. An empty file names nothing and
// empties the set's label; a file that cannot be read, or has fewer than three lines,
// leaves the labels and names as they were. The notice opens in every case.
struct JobRequest {
  enum class Kind { Names, Empty, Unusable };
  Kind kind = Kind::Names;
  Text jobName;
  Text accountName;
};
// Reads the request file (nullopt when there is none); it is left in place.
std::optional<JobRequest> ReadJobRequest(frame::AppState& app);
// Takes a request's names into the kept ones; other requests keep them as they were.
void KeepNames(frame::AppState& app, KeptNames& kept, const JobRequest& request);

// Line 1 the job, line 2 the second string. An empty file clears both and the account;
// a file of one line clears the second.
struct DialupRequest {
  std::size_t lines = 0;
  Text jobName;
  Text secondLine;
};
std::optional<DialupRequest> ReadDialupRequest(frame::AppState& app);
void KeepNames(frame::AppState& app, KeptNames& kept, const DialupRequest& request);

// A name as a label shows it: every "&" doubled, so that none marks a hot key.
Text LabelText(TextView name);

// The set of a default job is not named on the notice ("Default BackupSet" in any case).
bool IsDefaultSet(TextView jobName);

// Which result picture the notice shows for DESKNOTIFYICON ("RED", "GREEN", any case).
struct ResultPictures {
  bool failed = false;
  bool success = false;
};
ResultPictures ResultPicturesFor(TextView deskNotifyIcon);

}  // namespace notify
