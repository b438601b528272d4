#pragma once
// Profile (ini) files read and written the way the platform's own profile functions
// do it, over any file system: the real disk natively, the fake one in tests. What
// "the way the platform does it" means in the odd corners (which duplicate section
// wins, how a rewritten file looks, how a cut value with quotes ends) was taken from
// the platform itself and is pinned by the contract tests, which run this class and
// the real functions side by side under Wine.
#include "platform/FileSystem.h"
#include "platform/Profile.h"

namespace platform {

class PortableProfile : public IProfile {
 public:
  explicit PortableProfile(IFileSystem& fs) : fs_(fs) {}

  Text GetString(const Text& section, const Text& key, const Text& defaultValue,
                 std::size_t bufferChars, const Text& file) override;
  bool WriteString(const Text& section, const std::optional<Text>& key,
                   const std::optional<Text>& value, const Text& file) override;
  unsigned long LastError() override { return lastError_; }

 private:
  IFileSystem& fs_;
  unsigned long lastError_ = 0;
};

}  // namespace platform
