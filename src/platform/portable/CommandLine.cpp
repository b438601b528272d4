#include "platform/portable/CommandLine.h"

namespace platform {

namespace {

bool IsBlankOrTab(char16_t c) { return c == u' ' || c == u'\t'; }

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

// Whether `line` starts with `path`, without regard to case, followed by its end or a
// blank: the program's own path written unquoted.
bool StartsWithPath(base::TextView line, base::TextView path) {
  if (path.empty() || line.size() < path.size()) return false;
  for (std::size_t i = 0; i < path.size(); ++i)
    if (Lower(line[i]) != Lower(path[i])) return false;
  return line.size() == path.size() || IsBlankOrTab(line[path.size()]);
}

}  // namespace

base::Text ArgumentsOf(base::TextView line, base::TextView modulePath) {
  std::size_t i = 0;
  if (!line.empty() && line[0] == u'"') {
    std::size_t close = line.find(u'"', 1);
    i = close == base::TextView::npos ? line.size() : close + 1;
  } else if (StartsWithPath(line, modulePath)) {
    // The Run value's form: the full path unquoted, blanks and all, as the shell
    // hands it over when the program lies under "Program Files".
    i = modulePath.size();
  } else {
    while (i < line.size() && !IsBlankOrTab(line[i])) ++i;
  }
  while (i < line.size() && IsBlankOrTab(line[i])) ++i;
  return base::Text(line.substr(i));
}

}  // namespace platform
