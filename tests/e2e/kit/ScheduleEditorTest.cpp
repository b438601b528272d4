// The schedule editor on real windows over a data root of its own: a weekly job, a
// monthly job, mail on with an address and the mail error are saved as pictures under
// build/screenshots/kit/; then a weekly job becomes hourly at a new time, the real
// pointer presses the main button and the schedule file is read back.
#include <gtest/gtest.h>

#include <filesystem>

#include "Files.h"
#include "KitSupport.h"
#include "Screenshot.h"
#include "jobs/frmDTEmail.h"
#include "jobstore/DBaction.h"
#include "kit/HostedUi.h"
#include "kit/MesgBox.h"
#include "platform/win32/Win32Platform.h"
#include "platform/win32/Win32UiHost.h"

namespace kit_e2e {
namespace {

namespace fs = std::filesystem;

std::wstring Rec(const std::wstring& no, const std::wstring& name, const std::wstring& next,
                 const std::wstring& freq, const std::wstring& key, const std::wstring& days) {
  const std::wstring b = L"\b\b";
  return no + b + name + b + next + b + L"03-18-2013 15:02:33" + b + L"My Corvane/" + b + freq + b +
         L"2" + b + L"1" + b + b + b + b + b + L"0" + b + L"1" + b + L"0" + b + key + b +
         L"jsmith" + b + L"1" + b + L"0" + b + days;
}

class ScheduleEditorOnWindows : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { UseKitScreenshotFolder(); }

  void SetUp() override {
    root = fs::temp_directory_path() / "qv-schedule-editor";
    fs::remove_all(root);
    fs::create_directories(root / "QVCOMMON");
    weekly = Rec(L"1", L"Documents", L"03-20-2030 9:00:00", L"4", L"203003200900", L"4");
    monthly =
        Rec(L"2", L"Photos & Music", L"03-31-2030 6:41:00", L"0", L"203003310641", L"Monthly");
    daily = Rec(L"3", L"Mail", L"03-19-2030 2:30:00", L"3", L"203003190230", L"1234567");
    ASSERT_TRUE(e2e::WriteUtf16File(Schedule(), {L"0", weekly, monthly, daily}));
    app.DataRoot = T(root.wstring());
    app.ProgramFolder = app.DataRoot;
    app.ScheduleFilePath = app.CommonFile(u"scheduleData.txt");
    app.MailFilePath = app.CommonFile(u"Mailid.txt");
    app.ServiceLogPath = app.CommonFile(u"QVWServiceLog.txt");
  }
  void TearDown() override {
    std::error_code ec;
    fs::remove_all(root, ec);
  }

  fs::path Schedule() const { return root / "QVCOMMON" / "scheduleData.txt"; }
  HWND Hwnd(const kit::Control& c) { return host.WindowHandle(ui.Forms().HandleOf(c)); }
  void Shot(const std::string& name) {
    Pump(host, Ms{400});
    if (!e2e::Screenshot(name) && e2e::RunningUnderWine())
      ADD_FAILURE() << "no screenshot " << name;
  }

  fs::path root;
  std::wstring weekly, monthly, daily;
  platform::Win32Platform system;
  frame::AppState app{system.Get()};
  platform::Win32UiHost host{ImageFolder()};
  kit::HostedUi ui{host};
};

TEST_F(ScheduleEditorOnWindows, WeeklyBecomesHourlyAndOnlyThatJobChanges) {
  jobs::frmDTEmail form(app, ui);
  Attached attached{ui, form};
  form.Load();
  jobstore::DB_ReadSchdata(app, base::Text(), app.Jobs, false);
  jobs::LoadTempJobs(app, form.Editor());
  form.Sch_ShowSelectedRecord(u"1");
  ui.Show(form);
  HWND window = host.WindowHandle(ui.Forms().WindowOf(form));
  ASSERT_TRUE(PumpUntil(host, [&] { return window != nullptr && IsWindowVisible(window); }));
  EXPECT_EQ(ListView_GetItemCount(Hwnd(form.Sch_list_lv)), 3);
  Shot("schedule-editor-weekly");

  form.Sch_list_lv.UserClickRow(form.Sch_list_lv.FindKey(u"QV_2")->Index());
  EXPECT_EQ(SendMessageW(Hwnd(form.optMonthly), BM_GETCHECK, 0, 0), BST_CHECKED);
  Shot("schedule-editor-monthly");

  form.ChkEmailNotification.UserClick();
  form.txtEmailNotification.SetText(u"jsmith@example.com");
  Shot("schedule-editor-mail");

  // A malformed address: the message comes up over the editor and keeps it open.
  form.txtEmailNotification.SetText(u"jsmith@example");
  bool boxUp = false;
  std::uintptr_t timer = 0;
  timer = host.StartTimer(300, [&] {
    host.StopTimer(timer);
    boxUp = ui.Forms().WindowOf(ui.Box()) != 0;
    Shot("schedule-editor-mail-error");
    ui.Box().MsgClose.RaiseMouseUp({kit::kLeftButton, 0, 0, 0});
  });
  form.Sch_Start4_Next_Click();
  EXPECT_TRUE(boxUp);
  EXPECT_TRUE(form.IsLoaded());
  form.ChkEmailNotification.UserClick();  // mail off again

  form.Sch_list_lv.UserClickRow(form.Sch_list_lv.FindKey(u"QV_1")->Index());
  form.optHourly.UserClick();
  base::DateTime at = form.DTPicker.Value();
  at.hour = 23;
  at.minute = 45;
  at.second = 0;
  form.DTPicker.SetValue(at);
  Shot("schedule-editor-hourly");

  Click(Hwnd(form.Sch_Start4_Next));
  ASSERT_TRUE(PumpUntil(host, [&] { return !form.IsLoaded(); }));

  auto lines = e2e::ReadTextFile(Schedule());
  ASSERT_TRUE(lines.has_value());
  ASSERT_EQ(lines->size(), 4u);
  EXPECT_EQ((*lines)[0], L"0");
  // The untouched jobs keep their lines; job 2's mail was switched on and off again.
  EXPECT_EQ(e2e::CountLine(*lines, daily), 1);
  std::vector<jobstore::ScheduleRecord> rows;
  jobstore::DB_ReadSchdata(app, base::Text(), rows, false);
  ASSERT_EQ(rows.size(), 3u);
  const jobstore::ScheduleRecord* edited = nullptr;
  for (const auto& r : rows)
    if (r.RecordNo == u"1") edited = &r;
  ASSERT_NE(edited, nullptr);
  EXPECT_EQ(edited->Days, u"Hourly");
  EXPECT_EQ(edited->FrequencyIndex, u"0");
  // Hourly at a time still ahead today runs then; past 23:45 the rule takes the clock
  // plus one hour instead.
  SYSTEMTIME local{};
  GetLocalTime(&local);
  if (local.wHour * 60 + local.wMinute < 23 * 60 + 45) {
    EXPECT_TRUE(base::EndsWith(edited->NextRun, u" 23:45:00")) << base::ToUtf8(edited->NextRun);
  }
  EXPECT_EQ(edited->SortKey, jobstore::Sch_SortBuildDate(app, edited->NextRun));
  EXPECT_EQ(edited->MailMode, u"0");
}

}  // namespace
}  // namespace kit_e2e
