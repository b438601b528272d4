#pragma once
// The edge between the logic's UTF-16 text and the Windows API's wchar_t, and the
// guard that keeps an allocation failure from leaving a platform call.
#include <windows.h>
// The interfaces have methods of these names; the API's macros would rename them.
#undef DeleteFile
#undef CreateMutex

#include <cstddef>
#include <utility>

#include "base/Text.h"

namespace platform::win32 {

static_assert(sizeof(wchar_t) == 2, "Text and wchar_t must share their unit");

inline const wchar_t* Wide(const base::Text& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

inline base::Text FromWide(const wchar_t* units, std::size_t count) {
  return base::Text(reinterpret_cast<const char16_t*>(units), count);
}

inline base::Text FromWide(const wchar_t* units) {
  return units ? base::Text(reinterpret_cast<const char16_t*>(units)) : base::Text();
}

// Runs body(); anything thrown (in practice only std::bad_alloc) gives `fallback`.
template <class R, class Body>
R NoThrow(R fallback, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return fallback;
  }
}

}  // namespace platform::win32
