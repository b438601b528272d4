#include "frame/Settings.h"

#include "base/Guarded.h"
#include "frame/Logs.h"

namespace frame {

namespace {

constexpr const char16_t* kResolutionKeys[] = {
    u"MonWidth",       u"MonHeight",   u"MonTop",       u"MonLeft",         u"DefaultMWidth",
    u"DefaultMHeight", u"DefaultMTop", u"DefaultMLeft", u"DefaultMCodinate"};

Text IniPath(AppState& app) { return app.CommonFile(u"qvwin.ini"); }

std::optional<Text> NullIfEmpty(const Text& t) {
  if (t.empty()) return std::nullopt;
  return t;
}

// What the platform says of its own error numbers, for the one trace line that shows them.
Text DescribeError(unsigned long code) {
  switch (code) {
    case 2: return u"The system cannot find the file specified.";
    case 3: return u"The system cannot find the path specified.";
    case 5: return u"Access is denied.";
    case 32:
      return u"The process cannot access the file because it is being used by another process.";
    case 112: return u"There is not enough space on the disk.";
    case 1117: return u"The request could not be performed because of an I/O device error.";
    default: return u"Error " + base::FromNumber(static_cast<long long>(code));
  }
}

}  // namespace

bool IsResolutionKey(const Text& key) {
  for (const char16_t* k : kResolutionKeys)
    if (base::EqualsNoCase(key, k)) return true;
  return false;
}

Text ResolutionSection(AppState& app) {
  int twips = app.platform.system->TwipsPerPixelX();
  if (twips <= 0) return u"LDPI";
  return (1440 / twips) <= 96 ? u"LDPI" : u"NDPI";
}

Text SettingSectionForRead(AppState& app, const Text& key) {
  if (base::EqualsNoCase(key, u"DateFormat")) return u"DateFormat";
  if (IsResolutionKey(key)) return ResolutionSection(app);
  return u"Corvane";
}

Text SettingSectionForWrite(AppState& app, const Text& key) {
  if (IsResolutionKey(key)) return ResolutionSection(app);
  return u"Corvane";
}

Text ReadSetting(AppState& app, const Text& key, bool secure) {
  Text result;
  base::IgnoreFailure([&] {
    if (secure) {
      if (app.secureStore) result = app.secureStore->ReadSecure(key);
      return;
    }
    result = app.platform.profile->GetString(SettingSectionForRead(app, key), key, Text(),
                                             kProfileBufferChars, IniPath(app));
  });
  return result;
}

platform::WriteResult WriteSetting(AppState& app, const Text& key, const Text& value, bool secure) {
  auto result = platform::WriteResult::Success();
  base::Guarded(
      [&] {
        auto& fs = *app.platform.fs;
        if (!fs.FolderExists(app.CommonFolder())) fs.CreateFolder(app.CommonFolder());
        if (secure) {
          if (app.secureStore) result = app.secureStore->WriteSecure(key, value);
          if (!result) WriteTrace(app, u"0  " + result.reason);
          return;
        }
        auto& profile = *app.platform.profile;
        if (!profile.WriteString(SettingSectionForWrite(app, key), NullIfEmpty(key),
                                 NullIfEmpty(value), IniPath(app))) {
          unsigned long code = profile.LastError();
          Text line = base::FromNumber(static_cast<long long>(code)) + u"  " + DescribeError(code);
          WriteTrace(app, line);
          result = platform::WriteResult::Failure(DescribeError(code));
        }
      },
      [&](const base::ErrorInfo& e) {
        WriteTrace(app, base::FromNumber(e.number) + u"  " + e.description);
        result = platform::WriteResult::Failure(e.description);
      });
  if (!result) app.LastWriteFailure = result.reason;
  return result;
}

bool StaysInItsFolder(const Text& userName) {
  const Text name = base::Trim(userName);
  return name.find_first_of(u"\\/:") == Text::npos && name.find(u"..") == Text::npos;
}

Text ReadAccountKey(AppState& app, const Text& section, const Text& key, bool perUser,
                    const Text& user) {
  Text result;
  base::IgnoreFailure([&] {
    Text file;
    if (!perUser) {
      file = app.CommonFile(u"QVDetails.ini");
    } else {
      Text who = base::Trim(user.empty() ? app.UserName : user);
      if (!StaysInItsFolder(who)) return;
      file = app.CommonFile(who + u"\\qvwinserver.ini");
    }
    Text value = app.platform.profile->GetString(section, key, Text(), kProfileBufferChars, file);
    if (!value.empty()) result = value;
  });
  return result;
}

void WriteAccountKey(AppState& app, const Text& section, const Text& key, const Text& value,
                     const Text& user) {
  base::IgnoreFailure([&] {
    auto& fs = *app.platform.fs;
    Text who = base::Trim(user.empty() ? app.UserName : user);
    if (!StaysInItsFolder(who)) {
      WriteTrace(app, u"The settings of the user '" + who +
                          u"' were not written: the name would leave its folder.");
      return;
    }
    Text folder = app.CommonFile(who);
    if (!fs.FolderExists(app.CommonFolder())) fs.CreateFolder(app.CommonFolder());
    if (!fs.FolderExists(folder)) fs.CreateFolder(folder);
    app.platform.profile->WriteString(section, NullIfEmpty(key), NullIfEmpty(value),
                                      folder + u"\\qvwinserver.ini");
  });
}

platform::RegRoot ProfileRoot(AppState& app) {
  return app.platform.system->MajorVersion() < 6 ? platform::RegRoot::LocalMachine
                                                 : platform::RegRoot::CurrentUser;
}

int EngineIsService(AppState& app) {
  int answer = 0;
  base::IgnoreFailure([&] {
    Text type = base::Trim(ReadAccountKey(app, u"Corvane", u"Type", false));
    if (type.empty()) {
      auto value = app.platform.registry->ReadString(platform::RegRoot::LocalMachine,
                                                     u"Software\\QVWin", u"Type", 2048);
      type = value ? base::CutAtNul(*value) : Text();
    }
    answer = base::ToLower(base::Trim(type)) == u"service" ? 1 : 0;
  });
  return answer;
}

void AddToRun(AppState& app) {
  base::IgnoreFailure([&] {
    app.platform.registry->WriteString(ProfileRoot(app), kRunKey, kRunValue,
                                       app.ProgramFolder + u"\\QVMonitor.exe Min", 0x20006);
  });
}

void RemoveFromRun(AppState& app) {
  base::IgnoreFailure(
      [&] { app.platform.registry->DeleteValue(ProfileRoot(app), kRunKey, kRunValue); });
}

int IsInRun(AppState& app) {
  int answer = 0;
  base::IgnoreFailure([&] {
    auto value = app.platform.registry->ReadString(ProfileRoot(app), kRunKey, kRunValue, 2048);
    if (value && !base::Trim(base::CutAtNul(*value)).empty()) answer = 1;
  });
  return answer;
}

}  // namespace frame
