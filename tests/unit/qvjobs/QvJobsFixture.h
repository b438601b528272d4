#pragma once
// qvjobs run in-process over a fake disk rooted at C:\QV, its output collected.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QvJobsCommand.h"
#include "base/Utf16.h"
#include "platform/fake/FakePlatform.h"
#include "testkit/TextFiles.h"

namespace qvjobs {

using base::Text;

class QvJobsFixture : public ::testing::Test {
 protected:
  QvJobsFixture() { fake.fs.AddFolders(testkit::kCommonFolder); }
  int Run(const std::vector<std::string>& args) { return Run(args, fake.Get()); }
  int Run(const std::vector<std::string>& args, platform::Platform& system) {
    out.clear();
    err.clear();
    return RunQvJobs(args, system, u"C:\\QV", out, err);
  }

  platform::FakePlatform fake;
  std::string out, err;
};

}  // namespace qvjobs
