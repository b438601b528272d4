#pragma once
// The session listing's order as the design writes it, kept for the tests and the
// benchmark to hold the fast listing against: each entry is inserted into a work array
// kept in ascending order of plain text comparison of the keys (a new entry whose key
// is smaller than the last one's moves down until the one below is not greater, so
// equal keys keep the order of finding), and the names are read from the last entry
// to the first. Quadratic when names arrive out of order.
#include <utility>
#include <vector>

#include "sessions/SessionFiles.h"

namespace testkit {

inline std::vector<base::Text> InsertionNewestFirst(
    const std::vector<sessions::SessionEntry>& found) {
  std::vector<sessions::SessionEntry> work;
  work.reserve(found.size());
  for (const sessions::SessionEntry& entry : found) {
    work.push_back(entry);
    size_t i = work.size() - 1;
    if (i > 0 && entry.key < work[i - 1].key) {
      while (i > 0 && work[i - 1].key > entry.key) {
        std::swap(work[i], work[i - 1]);
        --i;
      }
    }
  }
  std::vector<base::Text> names;
  names.reserve(work.size());
  for (auto it = work.rbegin(); it != work.rend(); ++it) names.push_back(it->name);
  return names;
}

}  // namespace testkit
