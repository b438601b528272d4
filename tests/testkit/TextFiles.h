#pragma once
// The data root's files as tests write and show them, for fixtures with or without a
// monitor's process state.
#include <string>
#include <vector>

#include "base/Text.h"
#include "base/Utf16.h"

namespace testkit {

// The shared data folder of a fake program folder rooted at C:\QV.
inline const base::Text kCommonFolder = u"C:\\QV\\QVCOMMON";

// The bytes of a text file as the product writes it: UTF-16 with BOM, CR LF after
// every line.
inline std::string Utf16File(const std::vector<base::Text>& lines) {
  std::string bytes(base::kUtf16Bom);
  for (const base::Text& l : lines) bytes += base::EncodeUtf16Le(l + u"\r\n");
  return bytes;
}

// Readable failure output for UTF-16 texts.
inline std::string U8(const base::Text& t) { return base::ToUtf8(t); }

}  // namespace testkit
