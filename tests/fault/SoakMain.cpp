// qvsoak: the monitor on failing platform calls, seed after seed.
//   qvsoak [--seeds FIRST-LAST] [--ticks N] [--probability P] [--no-short-writes] [--sites]
// Prints one summary per seed and the findings; exits 1 when any seed found something.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <string>

#include "fault/MonitorSoak.h"

int main(int argc, char** argv) {
  std::uint64_t first = 1, last = 20;
  fault::SoakOptions options;
  bool sites = false;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    const char* next = i + 1 < argc ? argv[i + 1] : "";
    if (a == "--seeds") {
      if (std::sscanf(next, "%lu-%lu", &first, &last) == 1) last = first;
      ++i;
    } else if (a == "--ticks") {
      options.ticks = std::atol(next);
      ++i;
    } else if (a == "--probability") {
      options.probability = std::atof(next);
      ++i;
    } else if (a == "--no-short-writes") {
      options.shortWrites = false;
    } else if (a == "--sites") {
      sites = true;
    } else {
      std::cerr << "usage: qvsoak [--seeds FIRST-LAST] [--ticks N] [--probability P] "
                   "[--no-short-writes] [--sites]\n";
      return 2;
    }
  }
  long failing = 0;
  std::uint64_t ticks = 0, faults = 0, thrown = 0;
  std::map<std::string, long> all;
  std::map<std::string, std::uint64_t> bySite;
  for (std::uint64_t seed = first; seed <= last; ++seed) {
    options.seed = seed;
    const fault::SoakResult r = fault::RunSoak(options);
    std::cout << fault::Describe(r) << std::flush;
    ticks += static_cast<std::uint64_t>(r.ticks);
    faults += r.faults;
    thrown += r.thrown;
    if (!r.findings.empty()) ++failing;
    for (const auto& [what, n] : r.findings) all[what] += n;
    for (const auto& [site, n] : r.bySite) bySite[site] += n;
  }
  std::cout << "seeds " << first << "-" << last << ": " << ticks << " ticks, " << faults
            << " faults injected (" << thrown << " exceptions), " << all.size()
            << " distinct findings in " << failing << " seeds\n";
  for (const auto& [what, n] : all) std::cout << "  " << n << "x " << what << "\n";
  if (sites)
    for (const auto& [site, n] : bySite) std::cout << "  site " << site << ": " << n << "\n";
  return failing == 0 ? 0 : 1;
}
