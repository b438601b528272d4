#pragma once
// The dice of the fault decorators. One plan per run, seeded: the same seed makes the
// same calls fail in the same ways, so a finding can be played again. Each decorated
// call asks the plan whether it fails and how, among the ways that call can fail on
// Windows; the plan counts what it injected, by call and by kind, and remembers the
// exceptions it threw so that the harness can look for them in the trace.
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fault {

enum class Fault : int {
  Error,    // the call's own failure result: false, 0, nullopt, an error number
  Throw,    // an exception, where the implementation is not a noexcept boundary
  Short,    // a short read or write: part of the data, then the failure
  Empty,    // an empty answer that looks like success
  Timeout,  // the call gave up after waiting (the caller sees a failure; time passed)
};
inline constexpr int kFaultKinds = 5;
const char* FaultName(Fault kind);

// One injected exception, to be found again in the trace.
struct ThrownFault {
  std::string site;
  std::string marker;  // the text its description carries: "injected fault #id"
};

class FaultPlan {
 public:
  FaultPlan(std::uint64_t seed, double probability);

  // Whether the call at `site` fails now, and which of `kinds` it meets. Nothing fails
  // while the plan is off, or for a kind that is left out of this run.
  std::optional<Fault> Draw(const char* site, std::initializer_list<Fault> kinds);
  // Throws the injected exception (a base::Failure whose description names it).
  [[noreturn]] void Throw(const char* site);
  // A length in [0, n) for a short read or write (0 when n is 0).
  std::size_t ShortLength(std::size_t n);
  // A number in [0, n).
  std::uint64_t Pick(std::uint64_t n);

  // The harness turns the faults off while it sets up and checks.
  void SetEnabled(bool on) { enabled_ = on; }
  bool Enabled() const { return enabled_; }
  void LeaveOut(Fault kind) { leftOut_.insert(kind); }
  bool LeftOut(Fault kind) const { return leftOut_.count(kind) != 0; }

  // What was injected.
  std::uint64_t Total() const { return total_; }
  std::uint64_t Count(Fault kind) const { return byKind_[static_cast<int>(kind)]; }
  const std::map<std::string, std::uint64_t>& BySite() const { return bySite_; }
  std::uint64_t Calls() const { return calls_; }
  // Thrown faults not yet accounted for; the harness takes them after each step.
  std::vector<ThrownFault> TakeThrown();

 private:
  std::mt19937_64 rng_;
  double probability_;
  bool enabled_ = false;
  std::set<Fault> leftOut_;
  std::uint64_t total_ = 0;
  std::uint64_t calls_ = 0;
  std::uint64_t byKind_[kFaultKinds] = {};
  std::map<std::string, std::uint64_t> bySite_;
  std::vector<ThrownFault> thrown_;
};

// The name of a decorated call, "IFileSystem::ReadAll", taken from its member pointer
// as the compiler spells it in the function's own name; the plan counts by it.
template <auto Method>
const char* CallName() {
  static const std::string name = [](const std::string& f) {
    // f: "... [with auto Method = &ns::I::Call]"
    const std::size_t from = f.rfind('&') + 1;
    const std::string full = f.substr(from, f.find_first_of("];", from) - from);
    const std::size_t call = full.rfind("::");
    const std::size_t owner = full.rfind("::", call - 1);
    return owner == std::string::npos ? full : full.substr(owner + 2);
  }(__PRETTY_FUNCTION__);
  return name.c_str();
}

// The base of the decorators over an interface I: the implementation it wraps, the
// plan, and the one step that a call takes, "fail as the plan says, or pass through".
template <class I>
class Faulty : public I {
 public:
  Faulty(I& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}

 protected:
  using Interface = I;
  // Calls `Method` of the wrapped implementation with `args`, unless the plan draws
  // one of `kinds` for it: then the injected exception (Throw) or `failed`.
  template <auto Method, class R, class... A>
  R Maybe(std::initializer_list<Fault> kinds, R failed, A&&... args) {
    const auto fault = plan_.Draw(CallName<Method>(), kinds);
    if (fault == Fault::Throw) plan_.Throw(CallName<Method>());
    if (fault) return failed;
    return (in_.*Method)(std::forward<A>(args)...);
  }
  // The same with the call's own failure result only.
  template <auto Method, class R, class... A>
  R Maybe(R failed, A&&... args) {
    return Maybe<Method>({Fault::Error}, std::move(failed), std::forward<A>(args)...);
  }
  // An answer that can fail (`failed`), come back empty (Empty) or cut short (Short):
  // a read, a listing, a name. Which of these the call meets is in `kinds`.
  template <auto Method, class R, class... A>
  R Cut(std::initializer_list<Fault> kinds, R failed, A&&... args) {
    const auto fault = plan_.Draw(CallName<Method>(), kinds);
    if (fault == Fault::Error) return failed;
    if (fault == Fault::Empty) return Emptied(R{});
    R answer = (in_.*Method)(std::forward<A>(args)...);
    if (fault == Fault::Short) Shorten(answer);
    return answer;
  }
  // A call without a result, left out when it fails.
  template <auto Method, class... A>
  void MaybeDo(std::initializer_list<Fault> kinds, A&&... args) {
    const auto fault = plan_.Draw(CallName<Method>(), kinds);
    if (fault == Fault::Throw) plan_.Throw(CallName<Method>());
    if (!fault) (in_.*Method)(std::forward<A>(args)...);
  }
  // A call whose failure leaves an error number for the interface's LastError: `error`
  // for an Error, `timeout` for a Timeout (which the call meets only when not 0).
  template <auto Method, class R, class... A>
  R Failing(unsigned long error, unsigned long timeout, R failed, A&&... args) {
    injectedError_ = 0;
    const auto fault = timeout != 0 ? plan_.Draw(CallName<Method>(), {Fault::Error, Fault::Timeout})
                                    : plan_.Draw(CallName<Method>(), {Fault::Error});
    if (!fault) return (in_.*Method)(std::forward<A>(args)...);
    injectedError_ = fault == Fault::Timeout ? timeout : error;
    return failed;
  }
  // A close: the handle is gone either way; only the answer can fail (with `error`).
  template <auto Method, class H>
  bool Closing(H handle, unsigned long error = 0) {
    const bool ok = (in_.*Method)(handle);
    if (!plan_.Draw(CallName<Method>(), {Fault::Error})) return ok;
    if (error != 0) injectedError_ = error;
    return false;
  }
  unsigned long LastErrorOr(unsigned long inner) const {
    return injectedError_ != 0 ? injectedError_ : inner;
  }

  I& in_;
  FaultPlan& plan_;
  unsigned long injectedError_ = 0;

 private:
  // An empty answer that looks like success: an empty text or list, never "none".
  template <class T>
  static T Emptied(T empty) {
    return empty;
  }
  template <class T>
  static std::optional<T> Emptied(std::optional<T>) {
    return T{};
  }
  template <class T>
  void Shorten(T& answer) {
    answer.resize(plan_.ShortLength(answer.size()));
  }
  template <class T>
  void Shorten(std::optional<T>& answer) {
    if (answer) Shorten(*answer);
  }
};

}  // namespace fault
