#pragma once
// The monitor as the server of the engine's progress class: registration for the
// present user (at every start and by "/RegServer"), the class object of the running
// program, and a start by COM ("-Embedding"), which is a start into the tray.
#include <optional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "platform/SystemInfo.h"
#include "platform/win32/Win32ComServer.h"

namespace app {

// "/RegServer" or "-RegServer" in any case, alone on the command line.
bool IsRegServerCommand(const base::Text& arguments);
// "-Embedding" or "/Embedding" in any case: COM started the program for a client.
bool IsEmbeddingCommand(const base::Text& arguments);

// The system facts of a program that COM started: everything as it is, but the
// command line reads "Min", so the start goes into the tray as at logon and shows
// no window of its own.
class StartedByCom : public platform::ISystemInfo {
 public:
  explicit StartedByCom(platform::ISystemInfo& real) : real_(real) {}
  unsigned long PlatformId() override { return real_.PlatformId(); }
  unsigned long MajorVersion() override { return real_.MajorVersion(); }
  unsigned long MinorVersion() override { return real_.MinorVersion(); }
  unsigned long BuildNumber() override { return real_.BuildNumber(); }
  int TwipsPerPixelX() override { return real_.TwipsPerPixelX(); }
  int TwipsPerPixelY() override { return real_.TwipsPerPixelY(); }
  platform::Rect WorkArea() override { return real_.WorkArea(); }
  platform::Rect Screen() override { return real_.Screen(); }
  base::Text ComputerName() override { return real_.ComputerName(); }
  base::Text ProgramFolder() override { return real_.ProgramFolder(); }
  base::Text ProgramFileName() override { return real_.ProgramFileName(); }
  base::Text SystemFolder() override { return real_.SystemFolder(); }
  base::Text CommandLine() override { return u"Min"; }
  std::optional<base::Text> Environment(const base::Text& name) override {
    return real_.Environment(name);
  }
  bool PreviousInstanceRunning() override { return real_.PreviousInstanceRunning(); }

 private:
  platform::ISystemInfo& real_;
};

// After Main has settled the program: register the class for this user and serve it.
void ServeMonitorClass(frame::AppState& app, platform::Win32ComServer& server);

}  // namespace app
