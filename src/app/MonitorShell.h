#pragma once
// The first monitor window: a plain top-level window and the notification-area icon
// with its popup menu. The full window (panes, menus, tick) replaces the inside of
// this class; the start-up contract with Main stays the same.
#include <windows.h>
#include <shellapi.h>

#include "frame/Startup.h"

namespace app {

inline constexpr UINT kTrayCallbackMessage = 2025;
inline constexpr wchar_t kWindowClass[] = L"QVMonitorWindow";
inline constexpr wchar_t kWindowTitle[] = L"Corvane for Windows Monitor";

enum MenuId : UINT { kMenuOpen = 101, kMenuShutdown = 111 };
inline constexpr UINT_PTR kDailyTimerId = 0;

class MonitorShell : public frame::IStartupSteps {
 public:
  explicit MonitorShell(HINSTANCE instance) : instance_(instance) {}
  ~MonitorShell() override;

  void CreateEngines(frame::AppState& app) override;
  void LoadMonitorWindow(frame::AppState& app) override;
  void ApplyGeometry(frame::AppState& app, std::optional<long> width, std::optional<long> height,
                     std::optional<long> top, std::optional<long> left) override;
  void HideFromTaskBar(frame::AppState& app) override;
  void ShowFromTaskBar(frame::AppState& app) override;
  void ShowLogInWindow(frame::AppState& app) override;

  HWND Window() const { return window_; }

 private:
  static LRESULT CALLBACK WindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;
  LRESULT Handle(UINT msg, WPARAM wp, LPARAM lp);
  void AddTrayIcon();
  void RemoveTrayIcon();
  void ShowTrayMenu();
  void StoreGeometry();
  void Shutdown();
  base::Text TrayTip() const;

  HINSTANCE instance_;
  frame::AppState* app_ = nullptr;
  HWND window_ = nullptr;
  HICON icon_ = nullptr;
  NOTIFYICONDATAW tray_{};
  bool trayAdded_ = false;
  bool menuOpenEnabled_ = false;
  UINT taskbarCreated_ = 0;
};

}  // namespace app
