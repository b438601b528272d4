// String values in the two registry roots the product uses.
#include <gtest/gtest.h>

#include "Targets.h"

namespace contract {
namespace {

using platform::RegRoot;

class RegistryContract : public ::testing::TestWithParam<RegistryTarget> {
 protected:
  void SetUp() override {
    registry_ = GetParam().make();
    // A key of this run's own, so runs side by side do not meet.
    key_ = u"Software\\CorvaneContract\\Run" + Stamp();
  }
  void TearDown() override {
    for (RegRoot root : {RegRoot::CurrentUser, RegRoot::LocalMachine})
      for (const Text& name : {Text(u"Type"), Text(u"QVWin Monitor"), Text(u"Long")})
        registry_->DeleteValue(root, key_, name);
  }

  std::unique_ptr<platform::IRegistry> registry_;
  Text key_;
};

TEST_P(RegistryContract, WriteReadDeleteInBothRoots) {
  for (RegRoot root : {RegRoot::CurrentUser, RegRoot::LocalMachine}) {
    SCOPED_TRACE(root == RegRoot::CurrentUser ? "HKCU" : "HKLM");
    EXPECT_EQ(registry_->ReadString(root, key_, u"Type", 2048), std::nullopt);
    ASSERT_TRUE(registry_->WriteString(root, key_, u"Type", u"service", 0x20006))
        << "the key is created on the way";
    EXPECT_EQ(registry_->ReadString(root, key_, u"Type", 2048), u"service");
    ASSERT_TRUE(registry_->WriteString(root, key_, u"Type", u"exe \u00e9\u0416", 0x20006));
    EXPECT_EQ(registry_->ReadString(root, key_, u"type", 2048), u"exe \u00e9\u0416")
        << "value names ignore case";
    EXPECT_TRUE(registry_->DeleteValue(root, key_, u"Type"));
    EXPECT_EQ(registry_->ReadString(root, key_, u"Type", 2048), std::nullopt);
    EXPECT_FALSE(registry_->DeleteValue(root, key_, u"Type")) << "already gone";
  }
}

// A value in one root is not in the other; a missing key or value, or one longer than
// the buffer, reads as nothing.
TEST_P(RegistryContract, RootsAreSeparateAndWhatIsMissingOrTooLongIsNothing) {
  const RegRoot user = RegRoot::CurrentUser;
  ASSERT_TRUE(
      registry_->WriteString(user, key_, u"QVWin Monitor", u"C:\\QV\\QVMonitor.exe Min", 0x20006));
  EXPECT_EQ(registry_->ReadString(RegRoot::LocalMachine, key_, u"QVWin Monitor", 2048),
            std::nullopt);
  EXPECT_EQ(registry_->ReadString(user, key_, u"QVWin Monitor", 2048),
            u"C:\\QV\\QVMonitor.exe Min");
  EXPECT_FALSE(registry_->DeleteValue(user, key_ + u"\\Absent", u"Type"));
  ASSERT_TRUE(registry_->WriteString(user, key_, u"Long", Text(600, u'v'), 0x20006));
  EXPECT_EQ(registry_->ReadString(user, key_, u"Long", 2048), Text(600, u'v'));
  EXPECT_EQ(registry_->ReadString(user, key_, u"Long", 1000), std::nullopt)
      << "1202 bytes with the terminator do not fit 1000";
}

INSTANTIATE_TEST_SUITE_P(All, RegistryContract, ::testing::ValuesIn(RegistryTargets()),
                         TargetName());

}  // namespace
}  // namespace contract
