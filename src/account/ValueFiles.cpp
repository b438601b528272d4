#include "account/ValueFiles.h"

#include <cstdint>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "platform/TextFile.h"

namespace account {

namespace {

constexpr std::size_t kKeyLength = 7;

// The 16-bit signed arithmetic of the original routine: a sum out of range is an
// overflow, error 6.
std::int16_t Checked(std::int32_t value) {
  if (value > INT16_MAX || value < INT16_MIN) throw base::Failure(6, "Overflow");
  return static_cast<std::int16_t>(value);
}

std::int16_t Code(char16_t unit) { return static_cast<std::int16_t>(unit); }

char16_t KeyAt(std::size_t position1) { return kScrambleKey[position1 % kKeyLength]; }

}  // namespace

Text Encrypt(frame::AppState& app, const Text& text) {
  Text out;
  if (base::IsBlank(text)) return out;
  base::Guarded(
      [&] {
        for (std::size_t i = 1; i <= text.size(); ++i) {
          std::int16_t sum = Checked(Code(text[i - 1]) + Code(KeyAt(i)));
          out.push_back(static_cast<char16_t>(sum & 0xFF));
        }
      },
      [&](const base::ErrorInfo& e) {
        frame::WriteTrace(
            app, u"Error encrypting Reason: " + e.description + u"  " + base::FromNumber(e.number));
      });
  return out;
}

Text Decrypt(frame::AppState& app, const Text& scrambled) {
  Text out;
  if (base::IsBlank(scrambled)) return out;
  base::Guarded(
      [&] {
        for (std::size_t i = 1; i <= scrambled.size(); ++i) {
          // A step that fails is passed over and the walk goes on.
          std::int32_t diff = Code(scrambled[i - 1]) - Code(KeyAt(i));
          if (diff > INT16_MAX || diff < INT16_MIN) continue;
          out.push_back(static_cast<char16_t>(diff & 0xFF));
        }
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error Reason :", e, u"in procedure Decrypt of Module modGeneral");
      });
  return out;
}

Text ValueFilePath(frame::AppState& app, const Text& keyName, ValueKind kind) {
  Text name = base::Trim(keyName);
  Text file;
  switch (kind) {
    case ValueKind::Password: file = name + u".txt"; break;
    case ValueKind::OpenFilePath: file = u"QVOpenfilepath.txt"; break;
    case ValueKind::TempPath: file = u"QVTemppath.txt"; break;
    case ValueKind::SystemStatePath: file = u"QVSystemStatePath.txt"; break;
  }
  return app.CommonFile(name) + u"\\" + file;
}

platform::WriteResult WriteValueFile(frame::AppState& app, const Text& keyName, const Text& value,
                                     ValueKind kind) {
  auto result = platform::WriteResult::Failure(u"The value could not be stored.");
  if (!frame::StaysInItsFolder(keyName)) {
    frame::WriteTrace(app, u"The value file of '" + base::Trim(keyName) +
                               u"' was not written: the name would leave its folder.");
    return platform::WriteResult::Failure(u"The name would leave its folder.");
  }
  base::IgnoreFailure([&] {
    auto& fs = *app.platform.fs;
    Text folder = app.CommonFile(base::Trim(keyName));
    if (!fs.FolderExists(folder)) fs.CreateFolder(folder);
    Text path = ValueFilePath(app, keyName, kind);
    // The new file takes the old one's place, read-only or not, in one step: a full
    // disk leaves the stored password as it was instead of no password at all.
    // The trim comes after the scrambling; readers only ever see the trimmed line.
    result = platform::TextFile::WriteLines(fs, path, {base::Trim(value)}, true);
  });
  if (!result) app.LastWriteFailure = result.reason;
  return result;
}

Text ReadValueFile(frame::AppState& app, const Text& keyName, ValueKind kind) {
  Text result;
  base::IgnoreFailure([&] {
    auto& fs = *app.platform.fs;
    Text path = ValueFilePath(app, keyName, kind);
    // A name that would leave its folder has no value file; the fallback still applies.
    if (frame::StaysInItsFolder(keyName) && fs.FileExists(path)) {
      auto lines = platform::TextFile::ReadLines(fs, path);
      if (lines && !lines->empty()) result = base::Trim((*lines)[0]);
    }
    if (!base::IsBlank(result)) return;
    Text valueName;
    switch (kind) {
      case ValueKind::Password: valueName = Encrypt(app, keyName); break;
      case ValueKind::OpenFilePath: valueName = u"VSSTEMPPATH"; break;
      case ValueKind::TempPath: valueName = u"TempFolder"; break;
      case ValueKind::SystemStatePath: valueName = u"SYSSTATE"; break;
    }
    auto stored = app.platform.registry->ReadString(frame::ProfileRoot(app), u"Software\\QVWIN",
                                                    valueName, 2048);
    result = stored ? base::Trim(base::CutAtNul(*stored)) : Text();
  });
  return result;
}

Text SecureValueStore::ReadSecure(const Text& keyName) {
  Text stored = ReadValueFile(app_, keyName, ValueKind::Password);
  return stored.empty() ? stored : Decrypt(app_, stored);
}

platform::WriteResult SecureValueStore::WriteSecure(const Text& keyName, const Text& value) {
  return WriteValueFile(app_, keyName, Encrypt(app_, value), ValueKind::Password);
}

}  // namespace account
