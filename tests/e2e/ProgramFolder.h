#pragma once
// A fresh program folder for one test: a copy of the staged folder, so that every test
// has a data root of its own (the data root is the program folder here) and nothing a
// test leaves behind reaches the next one.
#include <filesystem>
#include <string>

namespace e2e {

// The staged program folder: $QV_E2E_STAGE, else <build tree>\stage, found from this
// program's own place (<build tree>\tests\e2e\<program>.exe).
std::filesystem::path StageFolder();
// This test program's own folder, and where the copies go: its subfolder runs.
std::filesystem::path OwnFolder();
std::filesystem::path RunsFolder();

class ProgramFolder {
 public:
  // Copies the stage into RunsFolder()\<name>, replacing an earlier copy of that name.
  // The stage's QVCOMMON (demo data of `make run`) is not copied.
  explicit ProgramFolder(const std::string& name);
  ~ProgramFolder();  // removes the copy unless Keep() was called
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  bool Ok() const { return ok_; }
  const std::string& Error() const { return error_; }
  // Leaves the copy on disk for a person to look at (a failed test).
  void Keep() { keep_ = true; }

  const std::filesystem::path& Root() const { return root_; }
  std::filesystem::path Exe() const { return root_ / L"QVMonitor.exe"; }
  std::filesystem::path Common() const { return root_ / L"QVCOMMON"; }
  std::filesystem::path CommonFile(const std::wstring& name) const { return Common() / name; }
  std::filesystem::path Trace() const { return CommonFile(L"SerTraceFile.txt"); }
  std::filesystem::path PermCheck() const { return root_ / L"PermCheck.dat"; }

 private:
  std::filesystem::path root_;
  bool ok_ = false;
  bool keep_ = false;
  std::string error_;
};

}  // namespace e2e
