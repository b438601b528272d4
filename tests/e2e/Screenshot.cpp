#include "Screenshot.h"

#include <windows.h>

#include <cstdlib>
#include <filesystem>

#include "Process.h"

namespace e2e {

namespace {

std::wstring Widen(const std::string& s) {
  int n = MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), nullptr, 0);
  std::wstring w(static_cast<size_t>(n), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), w.data(), n);
  return w;
}

std::string SafeName(const std::string& name) {
  std::string out;
  for (char c : name) {
    bool keep = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                c == '-' || c == '_' || c == '.';
    out.push_back(keep ? c : '_');
  }
  return out;
}

std::string ScreenshotFolder() {
  if (const char* env = std::getenv("QV_SCREENSHOT_DIR"); env && *env) return env;
  return std::string(QV_E2E_SOURCE_DIR) + "/build/screenshots/e2e";
}

}  // namespace

std::wstring WindowsPathOf(const std::string& unixPath) {
  std::wstring w = L"Z:" + Widen(unixPath);
  for (auto& c : w)
    if (c == L'/') c = L'\\';
  return w;
}

bool RunningUnderWine() {
  HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  return ntdll && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

std::optional<std::string> Screenshot(const std::string& name, Ms timeout) {
  if (!RunningUnderWine()) return std::nullopt;
  const std::string out = ScreenshotFolder() + "/" + SafeName(name) + ".png";
  const std::string script = std::string(QV_E2E_SOURCE_DIR) + "/tools/screenshot.sh";
  const std::filesystem::path outWin = WindowsPathOf(out);
  std::error_code ec;
  std::filesystem::remove(outWin, ec);

  // Wine starts a Unix program given by its Z: path. The handle it returns cannot be
  // waited on, so the script's atomic rename of the finished picture is the signal.
  // It inherits no handle: given the test's standard handles (or the null device's in
  // their place), the test program's own output was lost from the first screenshot on,
  // failures' words included.
  std::wstring commandLine = L"bash \"" + Widen(script) + L"\" \"" + Widen(out) + L"\"";
  STARTUPINFOW si{};
  si.cb = sizeof(si);
  PROCESS_INFORMATION pi{};
  if (!CreateProcessW(L"Z:\\bin\\bash", commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &si, &pi))
    return std::nullopt;
  platform::win32::UniqueHandle thread(pi.hThread), process(pi.hProcess);
  if (!WaitUntil([&] { return std::filesystem::exists(outWin, ec); }, timeout, Ms{100}))
    return std::nullopt;
  return out;
}

}  // namespace e2e
