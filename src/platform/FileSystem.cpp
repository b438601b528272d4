#include "platform/FileSystem.h"

namespace platform {

bool MatchesPattern(base::TextView name, base::TextView pattern) {
  // Iterative wildcard match with backtracking on the last '*'.
  size_t n = 0, p = 0, starP = base::TextView::npos, starN = 0;
  auto eq = [](char16_t a, char16_t b) {
    return base::EqualsNoCase(base::TextView(&a, 1), base::TextView(&b, 1));
  };
  while (n < name.size()) {
    if (p < pattern.size() && (pattern[p] == u'?' || eq(pattern[p], name[n]))) {
      ++n;
      ++p;
    } else if (p < pattern.size() && pattern[p] == u'*') {
      starP = p++;
      starN = n;
    } else if (starP != base::TextView::npos) {
      p = starP + 1;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'*') ++p;
  // "*.*" also matches names without a dot, as the platform's search does.
  if (p < pattern.size() && pattern.substr(p) == u".*") return true;
  return p == pattern.size();
}

Text ParentFolder(base::TextView path) {
  size_t p = path.find_last_of(u"\\/");
  if (p == base::TextView::npos) return Text();
  return Text(path.substr(0, p));
}

Text FileNameOf(base::TextView path) {
  size_t p = path.find_last_of(u"\\/");
  return Text(p == base::TextView::npos ? path : path.substr(p + 1));
}

}  // namespace platform
