#include "ProgramFolder.h"

#include <windows.h>

#include <cstdlib>

namespace e2e {

namespace fs = std::filesystem;

fs::path OwnFolder() {
  wchar_t path[MAX_PATH * 2] = {};
  DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH * 2);
  return fs::path(std::wstring(path, n)).parent_path();
}

namespace {

// Wine lets go of a program's files a moment after the program has ended.
bool RemoveTree(const fs::path& root, std::error_code& ec) {
  for (int attempt = 0; attempt < 50; ++attempt) {
    ec.clear();
    fs::remove_all(root, ec);
    if (!ec) return true;
    Sleep(100);
  }
  return false;
}

}  // namespace

fs::path StageFolder() {
  if (const wchar_t* env = _wgetenv(L"QV_E2E_STAGE"); env && *env) return fs::path(env);
  return OwnFolder().parent_path().parent_path() / L"stage";
}

fs::path RunsFolder() { return OwnFolder() / L"runs"; }

ProgramFolder::ProgramFolder(const std::string& name) {
  root_ = RunsFolder() / fs::path(name);
  std::error_code ec;
  if (!RemoveTree(root_, ec)) {
    error_ = "cannot remove the earlier copy " + root_.string() + ": " + ec.message();
    return;
  }
  const fs::path stage = StageFolder();
  if (!fs::exists(stage / L"QVMonitor.exe", ec)) {
    error_ = "no QVMonitor.exe in the program folder " + stage.string() + " (build it first)";
    return;
  }
  fs::create_directories(root_, ec);
  for (const auto& entry : fs::directory_iterator(stage, ec)) {
    if (_wcsicmp(entry.path().filename().c_str(), L"QVCOMMON") == 0) continue;
    fs::copy(entry.path(), root_ / entry.path().filename(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing, ec);
    if (ec) {
      error_ = "cannot copy " + entry.path().string() + ": " + ec.message();
      return;
    }
  }
  ok_ = !ec;
  if (!ok_) error_ = "cannot list " + stage.string() + ": " + ec.message();
}

ProgramFolder::~ProgramFolder() {
  if (keep_) return;
  std::error_code ec;
  RemoveTree(root_, ec);
}

}  // namespace e2e
