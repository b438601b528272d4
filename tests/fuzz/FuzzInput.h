#pragma once
// What the fuzz programs share: a check that names the program and the line of the
// promise it broke before stopping the run, a reader that turns the fuzzer's bytes
// into the values a target feeds (running out gives zeros, never a read past the
// end), and a monitor on the fake platform rooted at C:\QV.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/Text.h"
#include "testkit/FrameFixture.h"

#define FUZZ_CHECK(condition)                                                              \
  do {                                                                                     \
    if (!(condition)) {                                                                    \
      std::fprintf(stderr, "%s: broken at line %d: %s\n", __FILE__, __LINE__, #condition); \
      std::abort();                                                                        \
    }                                                                                      \
  } while (false)

namespace fuzz {

class Reader {
 public:
  Reader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::uint8_t Byte() { return at_ < size_ ? data_[at_++] : 0; }
  std::uint16_t Word() { return static_cast<std::uint16_t>(Byte() | (Byte() << 8)); }
  // Any value of a plain type, from its raw bytes (NaN and infinities included).
  template <class T>
  T Number() {
    unsigned char bytes[sizeof(T)] = {};
    for (auto& b : bytes) b = Byte();
    T value{};
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }
  // A text of fewer than `limit` UTF-16 units, its length first.
  base::Text String(std::size_t limit) {
    base::Text t;
    for (std::size_t n = Byte() % limit; n > 0; --n) t.push_back(static_cast<char16_t>(Word()));
    return t;
  }
  bool More() const { return at_ < size_; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

// One monitor per input: nothing carries over from the input before.
using Monitor = testkit::FrameFixture;

}  // namespace fuzz
