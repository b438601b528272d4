#include "Targets.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <type_traits>

#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeServices.h"
#include "platform/portable/PortableFileSystem.h"
#include "platform/portable/PortableProfile.h"
#include "testkit/TempDir.h"

#if QV_HAVE_WIN32
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32MutexService.h"
#include "platform/win32/Win32Profile.h"
#include "platform/win32/Win32Registry.h"
#endif

namespace contract {
namespace {

namespace fs = std::filesystem;

// A real folder on the disk, through whichever file system class is given.
template <class FileSystem>
class DiskWorld : public FsWorld {
 public:
  platform::IFileSystem& Fs() override { return fs_; }
  Text Root() const override { return dir_.TextPath(); }
  bool MakeReadOnly(const Text& path) override {
    // On Windows the C++ library turns "no write permission" into the read-only attribute.
    std::error_code ec;
    fs::path p(std::u16string(path.begin(), path.end()));
#ifndef _WIN32
    p = platform::PortableFileSystem::ToNative(path);
#endif
    fs::permissions(p, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove, ec);
    return !ec && (fs::status(p, ec).permissions() & fs::perms::owner_write) == fs::perms::none;
  }

 private:
  testkit::TempDir dir_;
  FileSystem fs_;
};

class FakeWorld : public FsWorld {
 public:
  FakeWorld() { fs_.AddFolders(kRoot); }
  platform::IFileSystem& Fs() override { return fs_; }
  Text Root() const override { return kRoot; }
  bool MakeReadOnly(const Text& path) override {
    if (!fs_.FileExists(path)) return false;
    fs_.SetReadOnly(path, true);
    return true;
  }
  bool StampsTimes() const override { return false; }

 private:
  static constexpr const char16_t* kRoot = u"C:\\Contract\\Work";
  platform::FakeFileSystem fs_;
};

template <class FilesT, class ProfileT>
class ProfileOver : public ProfileWorld {
 public:
  ProfileOver() : profile_(MakeProfile()) {}
  FsWorld& Files() override { return files_; }
  platform::IProfile& Profile() override { return profile_; }

 private:
  ProfileT MakeProfile() {
    if constexpr (std::is_constructible_v<ProfileT, platform::IFileSystem&>) {
      return ProfileT(files_.Fs());
    } else {
      return ProfileT();
    }
  }
  FilesT files_;
  ProfileT profile_;
};

template <class FilesT, class ProfileT>
ProfileTarget ProfileTargetOf(std::string name) {
  return {std::move(name),
          [] { return std::unique_ptr<ProfileWorld>(new ProfileOver<FilesT, ProfileT>()); }};
}

}  // namespace

std::vector<FsTarget> FileSystemTargets() {
  std::vector<FsTarget> targets{
      TargetOf<FsWorld, DiskWorld<platform::PortableFileSystem>>("Portable"),
      TargetOf<FsWorld, FakeWorld>("Fake"),
  };
#if QV_HAVE_WIN32
  targets.push_back(TargetOf<FsWorld, DiskWorld<platform::Win32FileSystem>>("Win32"));
#endif
  return targets;
}

std::vector<ProfileTarget> ProfileTargets() {
  std::vector<ProfileTarget> targets{
      ProfileTargetOf<DiskWorld<platform::PortableFileSystem>, platform::PortableProfile>(
          "PortableOnDisk"),
      ProfileTargetOf<FakeWorld, platform::PortableProfile>("PortableOnFake"),
  };
#if QV_HAVE_WIN32
  targets.push_back(
      ProfileTargetOf<DiskWorld<platform::Win32FileSystem>, platform::Win32Profile>("Win32"));
  targets.push_back(
      ProfileTargetOf<DiskWorld<platform::Win32FileSystem>, platform::PortableProfile>(
          "PortableOnWin32"));
#endif
  return targets;
}

std::vector<RegistryTarget> RegistryTargets() {
  std::vector targets{TargetOf<platform::IRegistry, platform::FakeRegistry>("Fake")};
#if QV_HAVE_WIN32
  targets.push_back(TargetOf<platform::IRegistry, platform::Win32Registry>("Win32"));
#endif
  return targets;
}

std::vector<MutexTarget> MutexTargets() {
  std::vector targets{TargetOf<platform::IMutexService, platform::FakeMutexService>("Fake")};
#if QV_HAVE_WIN32
  targets.push_back(TargetOf<platform::IMutexService, platform::Win32MutexService>("Win32"));
#endif
  return targets;
}

Text Stamp() {
  return base::FromNumber(std::chrono::steady_clock::now().time_since_epoch().count() % 100000000);
}

std::string ShowBytes(std::string_view bytes) {
  std::string out;
  for (unsigned char c : bytes) {
    if (c == '\r') {
      out += "\\r";
    } else if (c == '\n') {
      out += "\\n";
    } else if (c >= 0x20 && c < 0x7F) {
      out.push_back(static_cast<char>(c));
    } else {
      char hex[8];
      std::snprintf(hex, sizeof hex, "<%02X>", c);
      out += hex;
    }
  }
  return out;
}

}  // namespace contract
