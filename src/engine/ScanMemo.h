#pragma once
// The program names the walks of the process list have read, each with the process it
// belongs to (its id and start time), so that a walk opens only the processes it has
// not met before. Plain data: the process state holds it; engine/ProcessScan fills and
// reads it.
#include <cstdint>
#include <vector>

#include "base/Text.h"

namespace engine {

struct ProcessScanMemo {
  struct Known {
    std::uint32_t processId = 0;
    std::uint64_t start = 0;  // never 0: a process whose start is unknown is not kept
    std::uint32_t openAccess = 0;
    bool opened = false;  // false: it could not be opened with that access
    base::Text tail;      // the program's file name, lower case
  };
  std::vector<Known> known;
  // The array size of the last full list; the next list starts there.
  std::uint32_t byteCount = 0;
};

}  // namespace engine
