// QVBackground_955.exe of the simulated engine: a hidden window titled "QVBackground"
// that the monitor closes with WM_CLOSE, and the work loop on a thread of its own.
#include <windows.h>

#include <cwctype>
#include <string>
#include <thread>

#include "EngineSim.h"

namespace {

LRESULT CALLBACK WindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  switch (msg) {
    case WM_CLOSE: DestroyWindow(hwnd); return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(hwnd, msg, wp, lp);
  }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR arguments, int) {
  // "--title X" gives the window another title, so that a test can find its own copy
  // among other running ones; the engine's title is the default.
  std::wstring title = L"QVBackground";
  const std::wstring args = arguments ? arguments : L"";
  if (args.rfind(L"--title ", 0) == 0) title = args.substr(8);
  // One engine per program folder, as with the real one: the monitor's status check
  // starts the program whenever it finds it down, perhaps while a test starts it too.
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring key = path;
  key = key.substr(0, key.find_last_of(L'\\'));
  for (wchar_t& c : key) c = (c == L'\\' || c == L':') ? L'_' : static_cast<wchar_t>(towlower(c));
  HANDLE single = CreateMutexW(nullptr, FALSE, (L"QVEngineSim_" + key).c_str());
  if (single && GetLastError() == ERROR_ALREADY_EXISTS) return 0;

  WNDCLASSW wc{};
  wc.lpfnWndProc = WindowProc;
  wc.hInstance = instance;
  wc.lpszClassName = L"QVBackgroundSimulator";
  RegisterClassW(&wc);
  // Never shown: the monitor finds it by its title.
  HWND window = CreateWindowExW(0, wc.lpszClassName, title.c_str(), WS_OVERLAPPEDWINDOW, 0, 0, 100,
                                100, nullptr, nullptr, instance, nullptr);
  if (!window) return 1;

  enginesim::Control control;
  std::thread worker([&] { enginesim::RunEngine(control); });
  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  control.quit = true;
  worker.join();
  return 0;
}
