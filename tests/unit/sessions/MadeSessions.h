#pragma once
// Made-up session file names: the n-th is n days back from New Year's Day 2027 at ten,
// so that session 1 is the newest; odd ones are Backups, even ones Restores.
#include "base/DateTime.h"
#include "base/Text.h"

namespace testsessions {

inline base::Text MadeSession(int n, base::Text word = {}) {
  const base::DateTime day = base::DateTime{2027, 1, 1, 10, 0, 0}.AddDays(-n);
  if (word.empty()) word = n % 2 ? u"Backup" : u"Restore";
  auto two = [](int v) { return base::PadLeft(base::FromNumber(v), 2, u'0'); };
  return word + u" " + two(day.month) + u"-" + two(day.day) + u"-" + base::FromNumber(day.year) +
         u"  10-00-00.txt";
}

}  // namespace testsessions
