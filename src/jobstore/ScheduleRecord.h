#pragma once
// One line of scheduleData.txt: twenty text fields in memory order. The place of a
// field in the line differs at the tail (see the reader and writer in DBaction).
// Plain data with no code, so the process state can hold the job array.
#include "base/Text.h"

namespace jobstore {

using base::Text;

struct ScheduleRecord {
  Text RecordNo;        // 1, file position 1
  Text BackupSetName;   // 2, 2
  Text NextRun;         // 3, 3  "mm-dd-yyyy H:mm:ss"
  Text CreatedOn;       // 4, 4
  Text Destination;     // 5, 5
  Text FrequencyIndex;  // 6, 6
  Text JobKind;         // 7, 7
  Text Compression;     // 8, 8
  Text MailAddresses;   // 9, 9
  Text Reserved10;      // 10, 10
  Text Reserved11;      // 11, 11
  Text Reserved12;      // 12, 12
  Text Encryption;      // 13, 13
  Text Reserved14;      // 14, 14
  Text MailMode;        // 15, 15
  Text UserName;        // 16, file position 17
  Text Password;        // 17, file position 18
  Text SortKey;         // 18, file position 16
  Text EngineFlag;      // 19, 19
  Text Days;            // 20, 20

  bool operator==(const ScheduleRecord&) const = default;
};

}  // namespace jobstore
