#include "account/VersionInventory.h"

#include "account/FeedbackReport.h"

namespace account {

namespace {

struct Column {
  const char16_t* name;
  int width;
};

// Beacon.ocx has a column though nothing asks for it; QVPatch.dll and QVWINHelp.chm
// are read but have none, so they never show.
constexpr Column kColumns[] = {
    {u"CorvaneForWindows_955.exe", 25},
    {u"QVWinSrv.dll", 40},
    {u"QVBackground_955.exe", 31},
    {u"QVMonitor.exe", 38},
    {u"Beacon.ocx", 25},
};

constexpr const char16_t* kInventory[] = {u"CorvaneForWindows_955.exe",
                                          u"QVWinSrv.dll",
                                          u"QVBackground_955.exe",
                                          u"QVMonitor.exe",
                                          u"QVPatch.dll",
                                          u"QVWINHelp.chm"};

}  // namespace

Text GetVersionInfo(frame::AppState& app, const Text& file) {
  if (app.platform.versions == nullptr) return u"N/A";
  auto v = app.platform.versions->Read(file);
  if (!v) return u"N/A";
  return base::FromNumber((*v)[0]) + u"." + base::FromNumber((*v)[1]) + u"." +
         base::FromNumber((*v)[2]) + u"." + base::FromNumber((*v)[3]);
}

void AddVersionLine(Text& list, const Text& file, const Text& version) {
  const std::size_t slash = file.rfind(u'\\');
  const Text name = slash == Text::npos ? file : file.substr(slash + 1);
  if (version == u"N/A") return;
  for (const Column& column : kColumns) {
    if (!base::EqualsNoCase(name, column.name)) continue;
    const long blanks = column.width - static_cast<long>(name.size());
    // A negative count of blanks is a failure of this line: the line is dropped.
    if (blanks < 0) return;
    list += u"\r\n" + name + Text(static_cast<std::size_t>(blanks), u' ') + version;
    return;
  }
}

Text BuildVersionList(frame::AppState& app, const Text& folder) {
  Text list = Text(u"\r\n") + u"Release Date                                  " + kReleaseDate;
  for (const char16_t* file : kInventory) {
    const Text path = folder + u"\\" + file;
    AddVersionLine(list, path, GetVersionInfo(app, path));
  }
  return list;
}

Text AboutTitleLine(frame::AppState& app) {
  Text version = u"0.0.0";
  if (app.platform.versions != nullptr && app.platform.system != nullptr) {
    auto v = app.platform.versions->Read(app.platform.system->ProgramFolder() + u"\\" +
                                         app.platform.system->ProgramFileName());
    // The program's major, minor and revision; the third number of the file version
    // stays 0 in the build.
    if (v)
      version = base::FromNumber((*v)[0]) + u"." + base::FromNumber((*v)[1]) + u"." +
                base::FromNumber((*v)[3]);
  }
  return app.AppTitle + u" - Version " + version;
}

}  // namespace account
