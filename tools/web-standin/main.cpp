// Corvane_Web.exe stand-in. The real helper logs in to the web service and reports
// the outcome in ErrVal (section OLWA of qvwin.ini); this one reports a chosen outcome
// at once and then stays running until it is ended, which is all the monitor sees of
// the helper.
//
// The outcome, first found wins:
//   1. the environment variable QV_WEB_ERRVAL ("0", "-1", "-2", "-3"; "none" writes nothing),
//   2. the first line of Corvane_Web.errval beside the program,
//   3. "0".
// qvwin.ini is <data root>\QVCOMMON\qvwin.ini, the data root being QV_DATA_ROOT when
// set, else the program's folder (as for the monitor on a system that is not Vista).
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::wstring Environment(const wchar_t* name) {
  wchar_t buffer[1024];
  const DWORD n = GetEnvironmentVariableW(name, buffer, 1024);
  if (n == 0 || n >= 1024) return {};
  return std::wstring(buffer, n);
}

std::wstring ProgramFolder() {
  wchar_t buffer[MAX_PATH];
  const DWORD n = GetModuleFileNameW(nullptr, buffer, MAX_PATH);
  std::wstring path(buffer, n);
  const auto slash = path.find_last_of(L"\\/");
  return slash == std::wstring::npos ? std::wstring(L".") : path.substr(0, slash);
}

std::wstring Trimmed(std::wstring s) {
  const auto first = s.find_first_not_of(L" \t\r\n");
  if (first == std::wstring::npos) return {};
  const auto last = s.find_last_not_of(L" \t\r\n");
  return s.substr(first, last - first + 1);
}

std::wstring ChosenOutcome(const std::wstring& folder) {
  std::wstring chosen = Trimmed(Environment(L"QV_WEB_ERRVAL"));
  if (!chosen.empty()) return chosen;
  std::ifstream file(std::filesystem::path(folder + L"\\Corvane_Web.errval"));
  std::string line;
  if (file && std::getline(file, line)) {
    chosen = Trimmed(std::wstring(line.begin(), line.end()));
    if (!chosen.empty()) return chosen;
  }
  return L"0";
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  const std::wstring folder = ProgramFolder();
  std::wstring root = Trimmed(Environment(L"QV_DATA_ROOT"));
  if (root.empty()) root = folder;
  const std::wstring outcome = ChosenOutcome(folder);
  if (outcome != L"none") {
    const std::wstring ini = root + L"\\QVCOMMON\\qvwin.ini";
    WritePrivateProfileStringW(L"OLWA", L"ErrVal", outcome.c_str(), ini.c_str());
  }
  // Stays until the monitor ends it (TerminateProcess), as the real helper does.
  for (;;) Sleep(60000);
}
