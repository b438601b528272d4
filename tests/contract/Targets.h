#pragma once
// The implementations each contract runs against. A target makes a fresh world for
// one test: a file system with an empty folder of its own, and for profiles the
// profile implementation over it. Natively: the portable and fake ones; under Wine
// (QV_HAVE_WIN32) the Windows ones as well.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/FileSystem.h"
#include "platform/Mutex.h"
#include "platform/Profile.h"
#include "platform/Registry.h"

namespace contract {

using base::Text;

class FsWorld {
 public:
  virtual ~FsWorld() = default;
  virtual platform::IFileSystem& Fs() = 0;
  // An existing, empty folder that belongs to this world alone.
  virtual Text Root() const = 0;
  // Sets the platform's read-only mark; false when it could not be set.
  virtual bool MakeReadOnly(const Text& path) = 0;
  // Whether writes set the modification time (the fake leaves it to the test).
  virtual bool StampsTimes() const { return true; }
  Text Path(base::TextView name) const { return Root() + u"\\" + Text(name); }
};

class ProfileWorld {
 public:
  virtual ~ProfileWorld() = default;
  virtual FsWorld& Files() = 0;
  virtual platform::IProfile& Profile() = 0;
};

// `make` takes what a test chooses of the world, if anything.
template <class World, class... Args>
struct Target {
  std::string name;
  std::function<std::unique_ptr<World>(Args...)> make;
};

template <class World, class... Args>
std::ostream& operator<<(std::ostream& out, const Target<World, Args...>& target) {
  return out << target.name;
}

// A target that makes a fresh `Impl` for the interface `I`.
template <class I, class Impl>
Target<I> TargetOf(std::string name) {
  return {std::move(name), [] { return std::unique_ptr<I>(new Impl()); }};
}

struct TargetName {
  template <class Info>
  std::string operator()(const Info& info) const {
    return info.param.name;
  }
};

using FsTarget = Target<FsWorld>;
using ProfileTarget = Target<ProfileWorld>;
using RegistryTarget = Target<platform::IRegistry>;
using MutexTarget = Target<platform::IMutexService>;

std::vector<FsTarget> FileSystemTargets();

// The fixture of the contracts over a file system: a fresh world for each test.
class FsContract : public ::testing::TestWithParam<FsTarget> {
 protected:
  void SetUp() override { world_ = GetParam().make(); }
  platform::IFileSystem& fs() { return world_->Fs(); }
  Text Path(base::TextView name) { return world_->Path(name); }
  // The names in the world's folder that match `pattern`, sorted.
  std::vector<Text> Names(const Text& pattern = u"*") {
    std::vector<Text> names;
    for (const auto& e : fs().List(world_->Root(), pattern)) names.push_back(e.name);
    std::sort(names.begin(), names.end());
    return names;
  }

  std::unique_ptr<FsWorld> world_;
};
std::vector<ProfileTarget> ProfileTargets();
std::vector<RegistryTarget> RegistryTargets();
std::vector<MutexTarget> MutexTargets();

// A number of this moment, for names that runs side by side must not share.
Text Stamp();

// Readable bytes for failure messages: printable ASCII as is, the rest as <XX>.
std::string ShowBytes(std::string_view bytes);

}  // namespace contract
