// qvjobs entry: the real platform of the system it runs on, UTF-8 on the console.
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "QvJobsCommand.h"

#ifdef _WIN32
#include "platform/win32/Win32Platform.h"
#else
#include "platform/portable/PortableFileSystem.h"
#include "platform/portable/PortableProfile.h"
#include "platform/portable/PortableServices.h"
#endif

namespace {

#ifndef _WIN32
// The folder of this program, where the plug-in's files would stand beside it.
base::Text ProgramFolder() {
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return {};
  return exe.parent_path().u16string();
}
#endif

base::Text CurrentFolder() {
  std::error_code ec;
  auto cwd = std::filesystem::current_path(ec);
  if (ec) return u".";
  return cwd.u16string();
}

// Writes all of `text` and flushes it: false when the stream did not take all of it.
bool Write(std::FILE* stream, const std::string& text) {
  const bool whole =
      text.empty() || std::fwrite(text.data(), 1, text.size(), stream) == text.size();
  return std::fflush(stream) == 0 && whole;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);

#ifdef _WIN32
  platform::Win32Platform system;
  platform::Platform& bundle = system.Get();
#else
  platform::PortableFileSystem fs;
  platform::PortableProfile profile(fs);
  platform::PortableClock clock;
  platform::PortableLocale locale;
  platform::Platform bundle;
  bundle.fs = &fs;
  bundle.profile = &profile;
  bundle.clock = &clock;
  bundle.locale = &locale;
#endif

  std::string out, err;
#ifdef _WIN32
  int code = qvjobs::RunQvJobs(args, bundle, CurrentFolder(), out, err);
#else
  int code = qvjobs::RunQvJobs(args, bundle, CurrentFolder(), out, err, ProgramFolder());
#endif
  // An answer that did not reach its reader is no answer: the exit code says so, never
  // the code of the answer itself (a check that exits 0 and prints nothing is not OK).
  if (!Write(stdout, out)) {
    err += "qvjobs: the answer could not be written to standard output\n";
    code = qvjobs::kExitAnswerLost;
  }
  Write(stderr, err);
  return code;
}
