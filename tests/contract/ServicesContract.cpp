// The smaller services: the single-instance mutex, the user's formats and the
// facts about the system.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "Targets.h"
#include "platform/fake/FakeServices.h"
#include "platform/portable/PortableServices.h"

#if QV_HAVE_WIN32
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32Locale.h"
#include "platform/win32/Win32OsNameProvider.h"
#include "platform/win32/Win32Shell.h"
#include "platform/win32/Win32SystemInfo.h"
#endif

namespace contract {
namespace {

// ---- mutex -----------------------------------------------------------------

class MutexContract : public ::testing::TestWithParam<MutexTarget> {
 protected:
  void SetUp() override {
    mutex_ = GetParam().make();
    name_ = u"Global\\QVContract" + Stamp();
  }
  std::unique_ptr<platform::IMutexService> mutex_;
  Text name_;
};

TEST_P(MutexContract, SecondCreateOfOneNameSaysItExistsAndOtherNamesDoNotMeet) {
  auto first = mutex_->CreateMutex(name_, true);
  ASSERT_NE(first.handle, 0u);
  EXPECT_EQ(first.lastError, 0u);
  auto other = mutex_->CreateMutex(name_ + u"B", true);
  EXPECT_EQ(other.lastError, 0u);
  EXPECT_TRUE(mutex_->CloseHandle(other.handle));
  auto second = mutex_->CreateMutex(name_, true);
  EXPECT_NE(second.handle, 0u) << "a handle to the existing mutex";
  EXPECT_EQ(second.lastError, platform::kErrorAlreadyExists);

  // The instance guard closes and then releases; the release comes too late to matter.
  EXPECT_TRUE(mutex_->CloseHandle(second.handle));
  EXPECT_FALSE(mutex_->ReleaseMutex(second.handle));
  EXPECT_TRUE(mutex_->ReleaseMutex(first.handle)) << "the owner may release";
  EXPECT_TRUE(mutex_->CloseHandle(first.handle));

  auto again = mutex_->CreateMutex(name_, false);
  EXPECT_EQ(again.lastError, 0u) << "gone once every handle is closed";
  EXPECT_TRUE(mutex_->CloseHandle(again.handle));
}

INSTANTIATE_TEST_SUITE_P(All, MutexContract, ::testing::ValuesIn(MutexTargets()), TargetName());

// ---- clock -----------------------------------------------------------------

using ClockTarget = Target<platform::IClock>;

std::vector<ClockTarget> ClockTargets() {
  std::vector targets{TargetOf<platform::IClock, platform::PortableClock>("Portable"),
                      TargetOf<platform::IClock, platform::FakeClock>("Fake")};
#if QV_HAVE_WIN32
  targets.push_back(TargetOf<platform::IClock, platform::Win32Clock>("Win32"));
#endif
  return targets;
}

class ClockContract : public ::testing::TestWithParam<ClockTarget> {};

TEST_P(ClockContract, LocalTimeIsValidAndSleepMovesTheTicks) {
  auto clock = GetParam().make();
  base::DateTime now = clock->Now();
  EXPECT_GE(now.year, 2020);
  EXPECT_TRUE(
      base::DateTime::IsValid(now.year, now.month, now.day, now.hour, now.minute, now.second));
  std::uint64_t before = clock->TickMs();
  clock->Sleep(60);
  std::uint64_t after = clock->TickMs();
  // A tick counter may advance in steps of up to about 16 ms, and a sleep may end a
  // little early on such a step.
  EXPECT_GE(after - before, 40u);
  EXPECT_LT(after - before, 5000u);
}

INSTANTIATE_TEST_SUITE_P(All, ClockContract, ::testing::ValuesIn(ClockTargets()), TargetName());

// ---- locale ----------------------------------------------------------------

using LocaleTarget = Target<platform::ILocale>;

std::vector<LocaleTarget> LocaleTargets() {
  std::vector targets{TargetOf<platform::ILocale, platform::PortableLocale>("Portable"),
                      TargetOf<platform::ILocale, platform::FakeLocale>("Fake")};
#if QV_HAVE_WIN32
  targets.push_back(TargetOf<platform::ILocale, platform::Win32Locale>("Win32"));
#endif
  return targets;
}

class LocaleContract : public ::testing::TestWithParam<LocaleTarget> {};

// The United States formats of a fresh system: what every target here has.
TEST_P(LocaleContract, GivesTheFormatsOfTheDefaultUser) {
  auto l = GetParam().make();
  const std::vector<Text> formats = {
      l->DateSeparator(),   l->TimeSeparator(), l->DecimalSeparator(), l->ThousandsSeparator(),
      l->ShortDateFormat(), l->TimeFormat(),    l->AmSymbol(),         l->PmSymbol()};
  EXPECT_EQ(formats,
            (std::vector<Text>{u"/", u":", u".", u",", u"M/d/yyyy", u"h:mm:ss tt", u"AM", u"PM"}));
}

INSTANTIATE_TEST_SUITE_P(All, LocaleContract, ::testing::ValuesIn(LocaleTargets()), TargetName());

// ---- system facts ----------------------------------------------------------

using SystemTarget = Target<platform::ISystemInfo>;

std::vector<SystemTarget> SystemTargets() {
  std::vector targets{TargetOf<platform::ISystemInfo, platform::FakeSystemInfo>("Fake")};
#if QV_HAVE_WIN32
  targets.push_back(TargetOf<platform::ISystemInfo, platform::Win32SystemInfo>("Win32"));
#endif
  return targets;
}

class SystemInfoContract : public ::testing::TestWithParam<SystemTarget> {};

TEST_P(SystemInfoContract, FactsArePlausible) {
  auto system = GetParam().make();
  EXPECT_EQ(system->PlatformId(), 2u) << "the NT family";
  EXPECT_GE(system->MajorVersion(), 6u);
  EXPECT_GT(system->BuildNumber(), 0u);
  int twips = system->TwipsPerPixelX();
  EXPECT_TRUE(twips == 15 || twips == 12 || twips == 10 || twips == 7) << twips;
  EXPECT_EQ(system->TwipsPerPixelY(), twips);

  platform::Rect screen = system->Screen();
  platform::Rect work = system->WorkArea();
  EXPECT_GE(screen.Width(), 640);
  EXPECT_GE(screen.Height(), 480);
  EXPECT_GT(work.Width(), 0);
  EXPECT_GT(work.Height(), 0);
  EXPECT_GE(work.left, screen.left);
  EXPECT_GE(work.top, screen.top);
  EXPECT_LE(work.right, screen.right);
  EXPECT_LE(work.bottom, screen.bottom);

  EXPECT_FALSE(system->ComputerName().empty());
  Text folder = system->ProgramFolder();
  Text file = system->ProgramFileName();
  EXPECT_FALSE(folder.empty());
  EXPECT_TRUE(base::EndsWith(base::ToLower(file), u".exe")) << base::ToUtf8(file);
  EXPECT_FALSE(base::EndsWith(folder, u"\\"));
  EXPECT_EQ(system->Environment(u"QV_CONTRACT_SURELY_UNSET"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, SystemInfoContract, ::testing::ValuesIn(SystemTargets()),
                         TargetName());

#if QV_HAVE_WIN32

TEST(Win32SystemInfo, ProgramPathIsThisTestProgramAndTheEnvironmentIsRead) {
  platform::Win32SystemInfo system;
  platform::Win32FileSystem fs;
  EXPECT_TRUE(base::EqualsNoCase(system.ProgramFileName(), u"contract_platform.exe"))
      << base::ToUtf8(system.ProgramFileName());
  EXPECT_TRUE(fs.FileExists(system.ProgramFolder() + u"\\" + system.ProgramFileName()));
  EXPECT_EQ(base::InStrNoCase(system.CommandLine(), u"contract_platform"), 0u)
      << "the program's own name is not an argument: " << base::ToUtf8(system.CommandLine());
  auto path = system.Environment(u"PATH");
  ASSERT_TRUE(path);
  EXPECT_FALSE(path->empty());
  auto profile = system.Environment(u"USERPROFILE");
  ASSERT_TRUE(profile);
  EXPECT_NE(profile->find(u'\\'), Text::npos) << base::ToUtf8(*profile);
}

// Runs only as the second copy that the test below starts: it stays until told to go.
TEST(Win32Helper, LingerWhileAsked) {
  const char* stopFile = std::getenv("QV_CONTRACT_LINGER");
  if (!stopFile) GTEST_SKIP() << "helper for PreviousInstanceIsSeen";
  for (int i = 0; i < 200 && !std::filesystem::exists(stopFile); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

TEST(Win32SystemInfo, PreviousInstanceIsSeen) {
  platform::Win32SystemInfo system;
  auto stopFile = std::filesystem::temp_directory_path() / ("qv-linger-" + base::ToUtf8(Stamp()));
  std::string stop = stopFile.string();
  ASSERT_EQ(_putenv(("QV_CONTRACT_LINGER=" + stop).c_str()), 0);
  platform::Win32Shell shell;
  Text self = system.ProgramFolder() + u"\\" + system.ProgramFileName();
  ASSERT_TRUE(shell.Run(u"\"" + self + u"\" --gtest_filter=Win32Helper.LingerWhileAsked", true));
  _putenv("QV_CONTRACT_LINGER=");

  bool seen = false;
  for (int i = 0; i < 100 && !seen; ++i) {
    seen = system.PreviousInstanceRunning();
    if (!seen) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  { std::ofstream(stopFile) << "stop"; }
  EXPECT_TRUE(seen);
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  std::error_code ec;
  std::filesystem::remove(stopFile, ec);
}

TEST(Win32OsNameProvider, UnregisteredObjectGivesNothing) {
  platform::Win32OsNameProvider provider;
  EXPECT_EQ(provider.OsName(), std::nullopt);
}

#endif

}  // namespace
}  // namespace contract
