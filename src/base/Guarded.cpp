#include "base/Guarded.h"

#include <new>

namespace base {

ErrorInfo DescribeCurrentException() noexcept {
  ErrorInfo info;
  try {
    throw;
  } catch (const Failure& f) {
    info.number = f.Number();
    info.description = FromUtf8(f.what());
  } catch (const std::bad_alloc&) {
    info.number = 7;
    info.description = u"Out of memory";
  } catch (const std::out_of_range& e) {
    info.number = 9;
    info.description = u"Subscript out of range";
  } catch (const std::exception& e) {
    info.number = 5;
    info.description = FromUtf8(e.what());
  } catch (...) {
    info.number = 440;
    info.description = u"Automation error";
  }
  return info;
}

namespace {
IgnoredFailureObserver ignoredObserver = nullptr;
}  // namespace

void SetIgnoredFailureObserver(IgnoredFailureObserver observer) noexcept {
  ignoredObserver = observer;
}

void NoteIgnoredFailure() noexcept {
  if (ignoredObserver == nullptr) return;
  ignoredObserver(DescribeCurrentException());
}

}  // namespace base
