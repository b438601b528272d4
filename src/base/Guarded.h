#pragma once
// Last-resort handling. The product's routines go on past a failed step and end in
// one handler that writes a trace line; Guarded() is that handler for C++ code:
// nothing thrown inside the body ever leaves it.
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/Text.h"

namespace base {

// A failure that carries the numbered error the trace lines report.
class Failure : public std::runtime_error {
 public:
  Failure(long number, const std::string& description)
      : std::runtime_error(description), number_(number) {}
  long Number() const noexcept { return number_; }

 private:
  long number_;
};

struct ErrorInfo {
  long number = 0;
  Text description;
};

ErrorInfo DescribeCurrentException() noexcept;

// Runs body(); on any exception calls handler(ErrorInfo). Returns true when the
// body completed. The handler itself is shielded too.
template <class Body, class Handler>
bool Guarded(Body&& body, Handler&& handler) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    ErrorInfo info = DescribeCurrentException();
    try {
      std::forward<Handler>(handler)(info);
    } catch (...) {
    }
    return false;
  }
}

}  // namespace base
