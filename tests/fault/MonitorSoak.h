#pragma once
// The whole monitor program, natively, on decorated fakes that fail as a seeded plan
// says: the fake UI host with its timers, the simulated clock, an engine that calls
// the progress class and leaves job ends, dial-up requests and missed-backup keys
// behind, and a user who works every screen from the tray and the window. After every
// step the run checks what must hold whatever fails underneath (see docs/reliability.md)
// and writes down each finding.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fault/FaultPlan.h"

namespace fault {

struct SoakOptions {
  std::uint64_t seed = 1;
  long ticks = 10000;         // progress ticks to run
  double probability = 0.02;  // of each platform call failing
  bool shortWrites = true;    // writes that stop part way (--no-short-writes leaves them out)
  long memorySample = 100;    // ticks between two counts of live allocations
};

struct SoakResult {
  std::uint64_t seed = 0;
  long ticks = 0;
  long steps = 0;
  std::uint64_t calls = 0;   // platform calls the plan was asked about
  std::uint64_t faults = 0;  // of them failed
  std::uint64_t byKind[kFaultKinds] = {};
  std::map<std::string, std::uint64_t> bySite;
  std::uint64_t thrown = 0;            // exceptions injected
  std::uint64_t thrownTraced = 0;      // of them found in the trace
  std::uint64_t thrownPassedOver = 0;  // of them passed over by IgnoreFailure, on purpose
  long restarts = 0;                   // starts that ended at once under faults
  long liveEarly = 0, liveLate = 0;    // lowest live allocations after warm-up, early and late
  // Each finding once, with how often it came.
  std::map<std::string, long> findings;
};

// What is wrong with the bytes of a schedule file, by the soak's rule: a state word,
// then whole records of twenty fields, each record number once, every line ended.
std::vector<std::string> ScheduleProblems(const std::string& bytes);

// One seed. Deterministic: the same options give the same run.
SoakResult RunSoak(const SoakOptions& options);

std::string Describe(const SoakResult& result);

}  // namespace fault
