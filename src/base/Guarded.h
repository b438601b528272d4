#pragma once
// Last-resort handling. The product's routines go on past a failed step and end in
// one handler that writes a trace line; Guarded() is that handler for C++ code:
// nothing thrown inside the body ever leaves it. Where a failure is passed over
// without a word, on purpose, the code says so with IgnoreFailure(); a handler that
// writes the routine's own trace line is frame::TraceFailure(). An empty handler is
// refused by tools/check-sources.pl: silence by design and an oversight must not
// look alike.
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

// A test may watch the failures that IgnoreFailure passes over (the soak counts them,
// to tell a failure dropped on purpose from one lost); the program never sets it.
using IgnoredFailureObserver = void (*)(const ErrorInfo& error) noexcept;
void SetIgnoredFailureObserver(IgnoredFailureObserver observer) noexcept;
// Inside a catch block: tells the observer, if there is one.
void NoteIgnoredFailure() noexcept;

// Runs body() and passes a failure over without a word, on purpose: one statement of
// a routine that goes on past failures, or a routine whose failures the design tells
// nowhere (the caller sees only the missing result). Returns true when the body
// completed.
template <class Body>
bool IgnoreFailure(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    NoteIgnoredFailure();
    return false;
  }
}

// Runs body(); on any exception calls handler(ErrorInfo). Returns true when the
// body completed. The handler itself is shielded too: a failure while telling a
// failure has nowhere left to go.
template <class Body, class Handler>
bool Guarded(Body&& body, Handler&& handler) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    const ErrorInfo info = DescribeCurrentException();
    IgnoreFailure([&] { std::forward<Handler>(handler)(info); });
    return false;
  }
}

}  // namespace base
