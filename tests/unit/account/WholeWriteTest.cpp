// The writers of the shared files when the disk fails them or the process is killed.
#include <functional>
#include <random>

#include "../jobstore/JobStoreFixture.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "platform/WholeFile.h"
#include "account/ValueFiles.h"

namespace jobstore::test {
namespace {

using Step = platform::FakeFileSystem::Step;

class SameBytesTest : public JobStoreTest {
 protected:
  // The file's bytes (none when it is absent) and the record count a change leaves.
  using Outcome = std::pair<std::optional<std::string>, long>;
  // What the delete, the state-line guard and the append leave, each on the file in
  // turn: the way the other programs know the update.
  Outcome Stepwise(const std::optional<std::string>& start, ScheduleRecord r, bool bNoSch) {
    Reset(start);
    static_cast<void>(DB_DeleteRecord(app, r.RecordNo, SchedulePath()));
    r.EngineFlag = u"0";
    if (!bNoSch) {
      static_cast<void>(DB_WriteFirstLine(app));
      static_cast<void>(DB_WriteRecord(app, BuildScheduleLine(r), SchedulePath()));
    }
    return Current();
  }
  Outcome InOneWrite(const std::optional<std::string>& start, ScheduleRecord r, bool bNoSch) {
    Reset(start);
    const int before = fake.fs.WriteCount();
    // The trace's own appends count too: only the schedule file's writes matter here.
    fake.fs.SetLocked(Common(u"SerTraceFile.txt"), true);
    EXPECT_TRUE(DB_WriteSchdata(app, r, bNoSch).ok);
    fake.fs.SetLocked(Common(u"SerTraceFile.txt"), false);
    writes = fake.fs.WriteCount() - before;
    return Current();
  }
  void Reset(const std::optional<std::string>& start) {
    fake.fs.DeleteFile(SchedulePath());
    if (start) fake.fs.PutFile(SchedulePath(), *start);
    app.RecordCount = -7;
  }
  Outcome Current() {
    if (!fake.fs.FileExists(SchedulePath())) return {std::nullopt, app.RecordCount};
    return {ScheduleBytes(), app.RecordCount};
  }
  int writes = 0;
};

std::string Utf16(const Text& units) { return base::EncodeUtf16Le(units); }

TEST_F(SameBytesTest, UpdateAndRemovalGiveTheSequencesBytesInOneWrite) {
  const std::string bom(base::kUtf16Bom);
  // Hand-picked starts for what the generated ones below never are: no file, an empty
  // one, line ends without CR, no byte-order mark.
  std::vector<std::optional<std::string>> starts = {
      std::nullopt,
      std::string(),
      bom,
      bom + Utf16(u"0\n" + Rec(u"2") + u"\n" + Rec(u"5")),
      Utf16(u"0\r\n" + Rec(u"3") + u"\r\n"),
  };
  // Random mixes of damaged and good state lines, records, duplicates and loose text.
  std::mt19937 random(20261125);
  const std::vector<Text> firsts = {u"0", u"1", u"2", u"", u"00", u"10", u"x", u" 1", Rec(u"2")};
  const std::vector<Text> bodies = {Rec(u"1"), Rec(u"2"),       Rec(u"2", u"Dup"),
                                    Rec(u"0"), u"no separator", Join({u"2", u"o"}, kU),
                                    Rec(u"21")};
  for (int i = 0; i < 300; ++i) {
    std::vector<Text> lines{firsts[random() % firsts.size()]};
    for (unsigned n = random() % 6; n > 0; --n) lines.push_back(bodies[random() % bodies.size()]);
    std::string bytes = Utf16File(lines);
    if (random() % 5 == 0) bytes.resize(bytes.size() - 2);  // the last CR LF missing
    starts.push_back(bytes);
  }

  for (const auto& start : starts) {
    for (const Text& no : {Text(u"2"), Text(u"0"), Text(u"9"), Text()}) {
      for (bool bNoSch : {false, true}) {
        const Outcome expected = Stepwise(start, Numbered(no), bNoSch);
        const std::string shown = ::testing::PrintToString(start);
        EXPECT_EQ(InOneWrite(start, Numbered(no), bNoSch), expected) << shown;
        EXPECT_LE(writes, 1) << "one change is one write: " << shown;
      }
    }
  }
}

struct Writer {
  const char* name;
  std::function<Text(JobStoreTest&)> setUp;  // the file it writes
  std::function<WriteResult(JobStoreTest&)> run;
};

std::vector<Writer> Writers() {
  auto schedule = [](JobStoreTest& t) {
    t.fake.fs.PutFile(t.app.ScheduleFilePath, Utf16File({u"1", Rec(u"1"), Rec(u"2"), Rec(u"3")}));
    return t.app.ScheduleFilePath;
  };
  return {
      {"update", schedule,
       [](JobStoreTest& t) {
         ScheduleRecord r = Numbered(u"2");
         return DB_WriteSchdata(t.app, r, false);
       }},
      {"delete", schedule,
       [](JobStoreTest& t) { return DB_DeleteRecord(t.app, u"1", t.app.ScheduleFilePath); }},
      {"state word", schedule,
       [](JobStoreTest& t) { return SetStateWord(t.app, t.app.ScheduleFilePath, u"2"); }},
      {"first line reset",
       [](JobStoreTest& t) {
         t.fake.fs.PutFile(t.app.ScheduleFilePath, Utf16File({u"10", Rec(u"1")}));
         return t.app.ScheduleFilePath;
       },
       [](JobStoreTest& t) { return DB_WriteFirstLine(t.app); }},
      {"setting",
       [](JobStoreTest& t) {
         t.fake.profile.WriteString(u"Corvane", u"BANDWIDTH", u"40", t.Common(u"qvwin.ini"));
         return t.Common(u"qvwin.ini");
       },
       [](JobStoreTest& t) { return frame::WriteSetting(t.app, u"BANDWIDTH", u"75"); }},
      {"password",
       [](JobStoreTest& t) {
         t.fake.fs.AddFolders(t.Common(u"jsmith"));
         EXPECT_TRUE(account::WriteValueFile(t.app, u"jsmith", u"old secret",
                                             account::ValueKind::Password));
         return account::ValueFilePath(t.app, u"jsmith", account::ValueKind::Password);
       },
       [](JobStoreTest& t) {
         return account::WriteValueFile(t.app, u"jsmith", u"new secret",
                                        account::ValueKind::Password);
       }},
  };
}

class FailingWriteTest : public JobStoreTest {
 protected:
  bool NoTemporaries() {
    for (const Text& folder : {Common(u""), Common(u"jsmith")})
      if (!fake.fs.List(folder, platform::kTemporaryPattern).empty()) return false;
    return true;
  }
};

TEST_F(FailingWriteTest, EachStepThatFailsKeepsTheOldBytesAndSaysWhy) {
  struct Failure {
    const char* name;
    std::function<void(platform::FakeFileSystem&, const Text& path)> arm;
  };
  const std::vector<Failure> failures = {
      {"short write", [](auto& fs, auto&) { fs.FailAt(Step::Write); }},
      {"failed flush", [](auto& fs, auto&) { fs.FailAt(Step::Flush); }},
      {"refused replace", [](auto& fs, auto&) { fs.FailAt(Step::Replace); }},
      {"held, then a short write in place",
       [](auto& fs, auto&) {
         fs.FailAt(Step::Held);
         fs.FailAt(Step::Write, 2);
       }},
      {"full disk", [](auto& fs, auto&) { fs.SetSpaceLeft(0); }},
      {"nearly full disk", [](auto& fs, auto&) { fs.SetSpaceLeft(5); }},
      {"read-only file", [](auto& fs, auto& path) { fs.SetReadOnly(path, true); }},
  };
  for (const Writer& writer : Writers()) {
    for (const Failure& failure : failures) {
      SCOPED_TRACE(std::string(writer.name) + ", " + failure.name);
      const Text path = writer.setUp(*this);
      const std::string before = fake.fs.Bytes(path);
      app.LastWriteFailure.clear();
      failure.arm(fake.fs, path);
      const WriteResult result = writer.run(*this);
      fake.fs.SetSpaceLeft(std::nullopt);
      fake.fs.SetReadOnly(path, false);
      EXPECT_TRUE(NoTemporaries());
      // A read-only password file is replaced all the same, as it always was.
      if (std::string(failure.name) == "read-only file" && std::string(writer.name) == "password") {
        EXPECT_TRUE(result.ok);
        EXPECT_NE(fake.fs.Bytes(path), before);
        continue;
      }
      EXPECT_FALSE(result.ok);
      EXPECT_EQ(app.LastWriteFailure, result.reason);
      if (std::string(failure.name) == "read-only file") {
        EXPECT_EQ(result.reason, u"Access is denied.");
      } else {
        EXPECT_FALSE(result.reason.empty());
      }
      if (std::string(failure.name).rfind("held", 0) != 0) {
        EXPECT_EQ(fake.fs.Bytes(path), before);
      }
    }
  }
}

TEST_F(FailingWriteTest, AMissingFolderCreatesNothing) {
  // A data root whose QVCOMMON is gone and cannot be made again.
  app.DataRoot = u"C:\\Gone";
  app.ScheduleFilePath = u"C:\\Gone\\QVCOMMON\\scheduleData.txt";
  fake.fs.FailCreateFolder(u"C:\\Gone");
  fake.fs.FailCreateFolder(u"C:\\Gone\\QVCOMMON");
  ScheduleRecord r = Numbered(u"4");
  const WriteResult update = DB_WriteSchdata(app, r, false);
  EXPECT_FALSE(update.ok);
  EXPECT_EQ(update.reason, u"The system cannot find the path specified.");
  EXPECT_FALSE(SetStateWord(app, app.ScheduleFilePath, u"2").ok);
  EXPECT_FALSE(DB_WriteFirstLine(app).ok);
  EXPECT_FALSE(frame::WriteSetting(app, u"BANDWIDTH", u"75").ok);
  EXPECT_FALSE(account::WriteValueFile(app, u"jsmith", u"secret", account::ValueKind::Password).ok);
  EXPECT_FALSE(fake.fs.FolderExists(u"C:\\Gone"));
  EXPECT_TRUE(fake.fs.List(u"C:\\", u"*").size() == 1u) << "only C:\\QV";
}

TEST_F(FailingWriteTest, AFileHeldByAnotherProgramIsWrittenInPlaceAndTraced) {
  PutSchedule({u"1", Rec(u"1")});
  fake.fs.FailAt(Step::Held);
  const WriteResult result = SetStateWord(app, SchedulePath(), u"2");
  EXPECT_TRUE(result.ok);
  EXPECT_TRUE(result.inPlace);
  EXPECT_EQ(ScheduleBytes(), Utf16File({u"2", Rec(u"1")}));
  EXPECT_EQ(Trace().back(),
            u"Written in place, the file is held by another program: " + SchedulePath());
  EXPECT_TRUE(NoTemporaries());
}

TEST_F(FailingWriteTest, AFailedAppendLeavesNoStumpOfTheFileItWouldHaveCreated) {
  const Text fresh = Common(u"logs\\new.txt");
  fake.fs.AddFolders(Common(u"logs"));
  fake.fs.SetSpaceLeft(7);
  EXPECT_FALSE(platform::TextFile::AppendLine(fake.fs, fresh, u"a line").ok);
  EXPECT_FALSE(fake.fs.FileExists(fresh));
}

TEST_F(FailingWriteTest, EveryAppenderLeavesNoHalfLineWhateverFails) {
  struct Appender {
    const char* name;
    Text path;
    std::function<void()> run;
  };
  app.CurrentLogName = u"job1";
  fake.fs.AddFolders(Common(u"logs"));
  const std::vector<Appender> appenders = {
      {"trace", Common(u"SerTraceFile.txt"), [&] { frame::WriteTrace(app, u"a traced line"); }},
      {"activity log", Common(u"logs\\job1.txt"),
       [&] { frame::WriteActivityLog(app, u"a logged line", 1); }},
      {"schedule record", SchedulePath(),
       [&] { static_cast<void>(DB_WriteRecord(app, Rec(u"2"), SchedulePath())); }},
  };
  struct Failure {
    const char* name;
    std::function<void(const Text& path)> arm;
  };
  const std::vector<Failure> failures = {
      {"failed append", [&](const Text&) { fake.fs.FailAt(Step::Append); }},
      {"disk full half way", [&](const Text&) { fake.fs.SetSpaceLeft(7); }},
      {"disk full", [&](const Text&) { fake.fs.SetSpaceLeft(0); }},
      {"read-only file", [&](const Text& path) { fake.fs.SetReadOnly(path, true); }},
  };
  for (const Appender& appender : appenders) {
    for (const Failure& failure : failures) {
      SCOPED_TRACE(std::string(appender.name) + ", " + failure.name);
      platform::TextFile::WriteLines(fake.fs, appender.path, {u"0", Rec(u"1")});
      const std::string before = fake.fs.Bytes(appender.path);
      failure.arm(appender.path);
      appender.run();
      fake.fs.SetSpaceLeft(std::nullopt);
      fake.fs.SetReadOnly(appender.path, false);
      EXPECT_EQ(fake.fs.Bytes(appender.path), before);
      EXPECT_TRUE(NoTemporaries());
    }
    // With nothing failing the same call adds its line: the checks above look at the
    // file it writes.
    const std::size_t before = fake.fs.Bytes(appender.path).size();
    appender.run();
    EXPECT_GT(fake.fs.Bytes(appender.path).size(), before) << appender.name;
  }
}

TEST_F(FailingWriteTest, KilledAtAnyPointTheFileIsOldOrNewAndTheNextStartClearsUp) {
  int points = 0;
  for (const Writer& writer : Writers()) {
    SCOPED_TRACE(writer.name);
    const Text path = writer.setUp(*this);
    const std::string old = fake.fs.Bytes(path);
    ASSERT_TRUE(writer.run(*this).ok);
    const std::string fresh = fake.fs.Bytes(path);
    ASSERT_NE(fresh, old);
    for (int n = 0;; ++n) {
      writer.setUp(*this);
      fake.fs.CrashAt(n);
      writer.run(*this);
      const bool died = fake.fs.Crashed();
      fake.fs.Revive();
      const std::string after = fake.fs.Bytes(path);
      EXPECT_TRUE(after == old || after == fresh)
          << "killed at change " << n << ": " << ::testing::PrintToString(after);
      frame::RemoveLeftoverWrites(app);
      EXPECT_TRUE(NoTemporaries()) << "killed at change " << n;
      EXPECT_EQ(fake.fs.Bytes(path), after) << "the clean-up leaves the file alone";
      if (!died) break;
      ++points;
    }
  }
  // Every writer has at least its temporary file and the replace.
  EXPECT_GE(points, 2 * static_cast<int>(Writers().size()));
}

}  // namespace
}  // namespace jobstore::test
