#pragma once
// A UI host without windows. It keeps what it was told (windows, controls, tips,
// tray icons, menus) as plain records a test can read, fires timers only when a test
// says so, and lets a test play the user through the same event calls the Windows
// host makes.
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/UiHost.h"

namespace platform {

class FakeUiHost : public IUiHost {
 public:
  // ---- Loop and timers ----
  int RunMessageLoop() override { return exitCode; }
  void Quit(int code) override {
    quitRequested = true;
    exitCode = code;
  }
  void DoEvents() override { ++doEventsCalls; }
  void AnswerOtherPrograms() override { ++answerCalls; }
  std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) override;
  void StopTimer(std::uintptr_t id) override { timers.erase(id); }
  bool AskYesNo(const Text& text, const Text& title) override;
  void SetFailureSink(std::function<void(const Text& line)> sink) override {
    failureSink = std::move(sink);
  }

  // Runs the timer's tick as the host's loop would: a failure that escapes it is kept
  // in `failures` (and told to the sink), and the timer goes on.
  void FireTimer(std::uintptr_t id);
  struct TimerEntry {
    std::uint32_t intervalMs;
    std::function<void()> onTick;
  };
  std::map<std::uintptr_t, TimerEntry> timers;
  std::deque<bool> answers;  // empty: No
  std::vector<Text> questions;
  bool quitRequested = false;
  int exitCode = 0;
  int doEventsCalls = 0;
  int answerCalls = 0;  // AnswerOtherPrograms
  std::function<void(const Text& line)> failureSink;
  std::vector<Text> failures;  // one line per failure that reached the host

  // ---- Screen ----
  int TwipsPerPixelX() override { return twipsPerPixel; }
  int TwipsPerPixelY() override { return twipsPerPixel; }
  // Every unit 11 twips per point wide, lines 24 twips per point high.
  UiTextSize MeasureText(const Text& text, const UiFont& font, double wrapWidth) override;
  int twipsPerPixel = 15;

  // ---- Windows ----
  UiHandle CreateForm(const UiWindow& window, IUiEvents& events) override;
  void UpdateForm(UiHandle window, const UiWindow& state, UiChange changes) override;
  void DestroyForm(UiHandle window) override;
  UiHandle CreateControl(UiHandle window, UiHandle container, const UiControl& control) override;
  void UpdateControl(UiHandle control, const UiControl& state, UiChange changes) override;
  void FocusControl(UiHandle window, UiHandle control) override;
  // Runs `onModal` (the user at work) once and returns, whether or not the window
  // was ended: a fake loop never waits.
  void RunModal(UiHandle window) override;
  void EndModal(UiHandle window) override;
  // Records the call; the window becomes visible, restored and active.
  void ShowNormal(UiHandle window) override;
  // What the user's minimise box does: the window goes to the taskbar and the
  // form is told (an active window stays active, as on the platform).
  void Minimize(UiHandle window);
  void BeginDrag(UiHandle window) override { dragRequests.push_back(window); }
  // Answers from `popupChoices` (0 when empty) and records the menu shown.
  std::uint32_t PopupMenu(UiHandle window, const std::vector<UiMenuItem>& items) override;

  struct FormRecord {
    UiWindow state;
    IUiEvents* events = nullptr;
    UiHandle focus = 0;
    int updates = 0;
    UiChange lastChanges = UiChange::None;
    bool modal = false;  // a modal loop runs for it
    bool ended = false;  // EndModal came
    bool minimized = false;
  };
  struct ControlRecord {
    UiHandle window = 0;
    UiHandle container = 0;
    UiControl state;
    int updates = 0;
    UiChange lastChanges = UiChange::None;
    std::vector<int> scrolledTo;  // a list's rows brought into view, in order
    // What a list shows, its rows held or asked of their source as the Windows host asks
    // when it draws; rows and columns from 0, "" outside the rows.
    int RowCount() const;
    Text Cell(int row0, int column0) const;
    int SelectedRow() const;  // from 1; 0 for none
  };
  std::map<UiHandle, FormRecord> forms;
  std::map<UiHandle, ControlRecord> controls;
  // One line per call that changes windows ("CreateForm MesgBox", "DestroyForm
  // MesgBox", "RunModal MesgBox", ...), in order.
  std::vector<std::string> calls;
  std::function<void(UiHandle window)> onModal;
  // The program's active window: one that was shown without the no-activation flag,
  // a modal one, or one a test activates; 0 for none.
  UiHandle activeWindow = 0;
  std::vector<UiHandle> dragRequests;
  std::deque<std::uint32_t> popupChoices;
  std::vector<std::vector<UiMenuItem>> popups;

  // ---- Tips ----
  UiHandle CreateTip(const UiTip& tip) override;
  void DestroyTip(UiHandle tip) override { tips.erase(tip); }
  void TrackTip(UiHandle tip, long x, long y, UiHandle control) override;
  void ShowPlainTip(const Text& text) override {
    plainTip = text;
    plainTipShown = true;
  }
  void HidePlainTip() override { plainTipShown = false; }
  struct TipRecord {
    UiTip tip;
    bool tracked = false;
    long x = 0;
    long y = 0;
  };
  std::map<UiHandle, TipRecord> tips;
  Text plainTip;
  bool plainTipShown = false;

  // ---- Notification area ----
  UiHandle AddTrayIcon(const UiTrayIcon& icon, std::function<void(int)> onEvent) override;
  void ModifyTrayIcon(UiHandle icon, const UiTrayIcon& state) override;
  void RemoveTrayIcon(UiHandle icon) override { trayIcons.erase(icon); }
  void ShowTrayBalloon(UiHandle icon, const UiTrayBalloon& balloon) override;
  // Every balloon asked for, with its icon, in order.
  std::vector<std::pair<UiHandle, UiTrayBalloon>> balloons;
  struct TrayRecord {
    UiTrayIcon state;
    std::function<void(int)> onEvent;
  };
  std::map<UiHandle, TrayRecord> trayIcons;
  int trayModifies = 0;  // calls of ModifyTrayIcon
  // Plays a mouse message on an icon, as the shell's callback would; a failure that
  // escapes the handler is kept as FireTimer keeps it.
  void FireTray(UiHandle icon, int mouseMessage);

  // ---- Lookups for tests ----
  // The live window of that form name, 0 when none.
  UiHandle FindForm(const Text& name) const;
  // The control of that design name on a window, 0 when none.
  UiHandle FindControl(UiHandle window, const Text& name) const;
  const UiControl* Control(UiHandle window, const Text& name) const;
  // Whether the window and every container of the control are visible.
  bool Shown(UiHandle control) const;
  IUiEvents* Events(UiHandle window) const;

 private:
  // Inside a catch block: keeps the failure's line and tells the sink.
  void Failed(const Text& what);

  UiHandle next_ = 1;
  std::uintptr_t nextTimer_ = 1;
};

}  // namespace platform
