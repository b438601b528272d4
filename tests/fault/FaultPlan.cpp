#include "fault/FaultPlan.h"

#include "base/Guarded.h"

namespace fault {

const char* FaultName(Fault kind) {
  switch (kind) {
    case Fault::Error: return "error";
    case Fault::Throw: return "exception";
    case Fault::Short: return "short";
    case Fault::Empty: return "empty";
    case Fault::Timeout: return "timeout";
  }
  return "?";
}

FaultPlan::FaultPlan(std::uint64_t seed, double probability)
    : rng_(seed), probability_(probability) {}

std::optional<Fault> FaultPlan::Draw(const char* site, std::initializer_list<Fault> kinds) {
  ++calls_;
  if (!enabled_ || probability_ <= 0) return std::nullopt;
  std::uniform_real_distribution<double> dice(0.0, 1.0);
  if (dice(rng_) >= probability_) return std::nullopt;
  std::vector<Fault> open;
  for (Fault k : kinds)
    if (!LeftOut(k)) open.push_back(k);
  if (open.empty()) return std::nullopt;
  const Fault kind = open[Pick(open.size())];
  ++total_;
  ++byKind_[static_cast<int>(kind)];
  ++bySite_[std::string(site) + " " + FaultName(kind)];
  return kind;
}

void FaultPlan::Throw(const char* site) {
  ThrownFault t{site, "injected fault #" + std::to_string(total_)};
  thrown_.push_back(t);
  throw base::Failure(5, t.marker + " at " + site);
}

std::size_t FaultPlan::ShortLength(std::size_t n) {
  return n == 0 ? 0 : static_cast<std::size_t>(Pick(n));
}

std::uint64_t FaultPlan::Pick(std::uint64_t n) {
  if (n == 0) return 0;
  return std::uniform_int_distribution<std::uint64_t>(0, n - 1)(rng_);
}

std::vector<ThrownFault> FaultPlan::TakeThrown() {
  std::vector<ThrownFault> out;
  out.swap(thrown_);
  return out;
}

}  // namespace fault
