#include <gtest/gtest.h>

#include <stdexcept>

#include "engine/EngineObject.h"
#include "engine/EngineObjects.h"
#include "engine/StopWord.h"
#include "jobstore/DBaction.h"
#include "testkit/FrameFixture.h"

using base::Text;
using testkit::FrameFixture;

namespace {

class StopWordTest : public ::testing::Test, public FrameFixture {
 protected:
  void SetUp() override { engine::CreateEngines(app); }  // background engine by default
  void Word(const Text& w) {
    AddCommon();
    platform::TextFile::WriteLines(fake.fs, app.ScheduleFilePath, {w, u"12\b\bDocuments\b\bx"});
  }
  Text FirstLine() {
    auto lines = Lines(app.ScheduleFilePath);
    return lines.empty() ? Text(u"<none>") : lines[0];
  }
  bool FileThere() { return fake.fs.FileExists(app.ScheduleFilePath); }
};

TEST_F(StopWordTest, StopTransferTurnsOnlyARunningWordIntoStop) {
  EXPECT_FALSE(app.ActiveEngine->StopTransferMsgBox());
  app.ActiveEngine->StopTransfer();
  EXPECT_FALSE(FileThere());
  for (const Text w : {u"0", u"2", u""}) {
    Word(w);
    EXPECT_FALSE(app.ServiceEngine->StopTransferMsgBox());
    app.ActiveEngine->StopTransfer();
    EXPECT_EQ(FirstLine(), w);
  }
  Word(u"1");
  EXPECT_TRUE(app.ActiveEngine->StopTransferMsgBox()) << "it only tells";
  EXPECT_TRUE(fake.ui.questions.empty());
  app.ServiceEngine->StopTransfer();
  EXPECT_EQ(FirstLine(), u"2");
  EXPECT_EQ(Lines(app.ScheduleFilePath)[1], u"12\b\bDocuments\b\bx");  // the records stay
}

TEST_F(StopWordTest, MenuStopAsksFirstAndStopsOnYesInTheProductBoxWhenInstalled) {
  engine::AskAndStopTransfer(app);  // nothing to stop: no question
  EXPECT_TRUE(fake.ui.questions.empty());

  Word(u"1");
  fake.ui.answers = {false};
  engine::AskAndStopTransfer(app);
  EXPECT_EQ(fake.ui.questions.size(), 1u);
  EXPECT_EQ(FirstLine(), u"1");

  fake.ui.answers = {true};
  engine::AskAndStopTransfer(app);
  EXPECT_EQ(FirstLine(), u"2");

  // With the product's own box installed the question goes there, as a Yes/No box.
  Word(u"1");
  std::vector<int> shown;
  app.Store.ShowMessage = [&](const Text&, int, int buttons) {
    shown.push_back(buttons);
    return engine::kAnswerYes;
  };
  engine::AskAndStopTransfer(app);
  EXPECT_EQ(shown, std::vector<int>{4});
  EXPECT_EQ(fake.ui.questions.size(), 2u);
  EXPECT_EQ(FirstLine(), u"2");
}

TEST_F(StopWordTest, IsBackingUpAsksOnlyOverATransferAndNoKeepsTheEngineRunning) {
  EXPECT_FALSE(engine::IsBackingUp(app));
  Word(u"2");
  EXPECT_FALSE(engine::IsBackingUp(app));
  EXPECT_TRUE(fake.ui.questions.empty());
  Word(u"1");
  int stopping = 0;
  fake.ui.answers = {false};
  EXPECT_TRUE(engine::IsBackingUp(app, {[&] { ++stopping; }, nullptr}));
  EXPECT_EQ(FirstLine(), u"1");
  EXPECT_EQ(stopping, 0);
  EXPECT_EQ(fake.ui.questions.size(), 1u);
}

TEST_F(StopWordTest, IsBackingUpOnAnythingButNoAsksTheEngineToStop) {
  Word(u"1");
  std::vector<Text> order;
  app.Store.ShowMessage = [&](const Text&, int, int buttons) {
    order.push_back(buttons == 4 ? u"question" : u"told");
    return 2;  // the box closed without an answer
  };
  EXPECT_TRUE(engine::IsBackingUp(
      app, {[&] { order.push_back(u"Set_Stopping"); }, [&] { order.push_back(u"redraw"); }}));
  EXPECT_EQ(FirstLine(), u"2");
  EXPECT_EQ(order, (std::vector<Text>{u"question", u"Set_Stopping", u"told", u"redraw"}));
}

TEST_F(StopWordTest, IsBackingUpOnAFullDiskClaimsNoStop) {
  Word(u"1");
  const std::string before = fake.fs.Bytes(app.ScheduleFilePath);
  std::vector<Text> shown;
  int stopping = 0;
  app.Store.ShowMessage = [&](const Text& text, int, int buttons) {
    shown.push_back(text);
    return buttons == 4 ? 6 : 1;  // Yes
  };
  fake.fs.SetSpaceLeft(0);
  // Still true: the engine must not be stopped under a running transfer.
  EXPECT_TRUE(engine::IsBackingUp(app, {[&] { ++stopping; }, nullptr}));
  fake.fs.SetSpaceLeft(std::nullopt);
  EXPECT_EQ(fake.fs.Bytes(app.ScheduleFilePath), before);
  EXPECT_EQ(stopping, 0) << "the window showed a stop that was never asked for";
  ASSERT_EQ(shown.size(), 1u) << "only the question, no word of a stop";
  EXPECT_FALSE(app.LastWriteFailure.empty());
}

TEST_F(StopWordTest, CanPauseReadsTheFirstByteSoAUnicodeFileRefuses) {
  EXPECT_TRUE(engine::CanPause(app));  // absent
  Word(u"0");                          // written with its byte-order mark
  EXPECT_FALSE(engine::CanPause(app));
  fake.fs.WriteAll(app.ScheduleFilePath, "0\r\n");
  EXPECT_TRUE(engine::CanPause(app));
  fake.fs.WriteAll(app.ScheduleFilePath, "1\r\n");
  EXPECT_FALSE(engine::CanPause(app));
  fake.fs.WriteAll(app.ScheduleFilePath, "");
  EXPECT_FALSE(engine::CanPause(app));
}

TEST_F(StopWordTest, AStaleWordIsClearedOnlyWhileTheActiveEngineIsDown) {
  engine::ClearStaleStateWord(app);
  EXPECT_FALSE(FileThere()) << "nothing to clear makes no file";
  Word(u"0");
  const std::string before = fake.fs.Bytes(app.ScheduleFilePath);
  engine::ClearStaleStateWord(app);
  EXPECT_EQ(fake.fs.Bytes(app.ScheduleFilePath), before);
  for (bool runs : {false, true}) {
    if (runs) fake.processes.Add(20, u"C:\\QV\\QVBackground_955.exe");
    for (const Text w : {u"1", u"2"}) {
      Word(w);
      engine::ClearStaleStateWord(app);
      EXPECT_EQ(FirstLine(), runs ? w : u"0") << runs << testkit::U8(w);
    }
  }
  // A service engine that is down counts, even though the background program runs.
  fake.profile.WriteString(u"Corvane", Text(u"Type"), Text(u"service"), Common(u"QVDetails.ini"));
  engine::CreateEngines(app);
  Word(u"1");
  engine::ClearStaleStateWord(app);
  EXPECT_EQ(FirstLine(), u"0");
}

}  // namespace

namespace {

// A disk on which the schedule file cannot be looked at: every other file works, so
// the last-resort lines reach the trace.
class BrokenScheduleDisk : public platform::FakeFileSystem {
 public:
  bool FileExists(const Text& path) override {
    if (base::EndsWith(path, u"scheduleData.txt")) throw std::runtime_error("Device unavailable");
    return FakeFileSystem::FileExists(path);
  }
};

class LastResortTest : public ::testing::Test, public FrameFixture {
 protected:
  void SetUp() override {
    disk.AddFolders(testkit::kCommonFolder);
    app.platform.fs = &disk;
    engine::CreateEngines(app);
  }
  std::vector<Text> Trace() {
    return platform::TextFile::ReadLines(disk, Common(u"SerTraceFile.txt"))
        .value_or(std::vector<Text>{});
  }
  BrokenScheduleDisk disk;
};

TEST_F(LastResortTest, EachRoutineOfTheHandshakeWritesItsOwnLine) {
  app.ActiveEngine->StopTransfer();
  EXPECT_FALSE(app.ServiceEngine->StopTransferMsgBox());
  EXPECT_FALSE(engine::IsBackingUp(app));
  EXPECT_FALSE(engine::CanPause(app));
  engine::ClearStaleStateWord(app);
  engine::TimerProc(app);
  const std::vector<Text> expected = {u"Unable to stop the transfer. ",
                                      u"Reason: Device unavailable",
                                      u"Error in StopTransferMsgBox() Reason: Device unavailable",
                                      u"Error reading Scheduled data: Device unavailable",
                                      u"Error reading Scheduled data: Device unavailable",
                                      u"Error obtaining the service status: Device unavailable",
                                      u"Error in TimerProc, Reason: Device unavailable"};
  EXPECT_EQ(Trace(), expected);
  EXPECT_TRUE(fake.ui.questions.empty());
}

}  // namespace
