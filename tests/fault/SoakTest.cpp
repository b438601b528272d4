// A few seeds of the soak, briefly: the whole program on failing platform calls finds
// nothing. `make soak` runs many seeds for longer.
#include <gtest/gtest.h>

#include "fault/MonitorSoak.h"

namespace {

void RunSeed(std::uint64_t seed, double probability = fault::SoakOptions{}.probability) {
  fault::SoakOptions options;
  options.seed = seed;
  options.probability = probability;
  options.ticks = QV_SOAK_TICKS;
  const fault::SoakResult r = fault::RunSoak(options);
  // The run did what it says: all its ticks, with faults of every kind among them.
  EXPECT_EQ(r.ticks, options.ticks);
  for (fault::Fault k :
       {fault::Fault::Error, fault::Fault::Throw, fault::Fault::Empty, fault::Fault::Timeout})
    EXPECT_GT(r.byKind[static_cast<int>(k)], 0u) << fault::FaultName(k);
  EXPECT_TRUE(r.findings.empty()) << fault::Describe(r);
}

TEST(SoakTest, Seed1) { RunSeed(1); }
TEST(SoakTest, Seed2) { RunSeed(2); }
TEST(SoakTest, Seed3) { RunSeed(3); }
// Faults five times as often bring failures together that the usual rate rarely does (a
// cut read whose file size could not be asked for either).
TEST(SoakTest, Seed2AtFiveTimesTheRate) { RunSeed(2, 0.1); }

}  // namespace
