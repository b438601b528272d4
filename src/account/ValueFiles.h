#pragma once
// The stored account password: a fixed-key letter shift, kept in a one-line value
// file in the user's folder, with a registry value to fall back on. The engine and the
// main application read the same files, so the routine and the names are fixed.
#include "base/Text.h"
#include "frame/AppState.h"

namespace account {

using base::Text;

inline constexpr char16_t kScrambleKey[] = u"KMVRXQD";

enum class ValueKind : int { Password = 1, OpenFilePath = 2, TempPath = 3, SystemStatePath = 4 };

Text Encrypt(frame::AppState& app, const Text& text);
Text Decrypt(frame::AppState& app, const Text& scrambled);

Text ValueFilePath(frame::AppState& app, const Text& keyName, ValueKind kind);
// The file is replaced whole, read-only or not; on failure it keeps its old line.
[[nodiscard]] platform::WriteResult WriteValueFile(frame::AppState& app, const Text& keyName,
                                                   const Text& value, ValueKind kind);
Text ReadValueFile(frame::AppState& app, const Text& keyName, ValueKind kind);

// What the settings routines use when their secure flag is set.
class SecureValueStore : public frame::ISecureStore {
 public:
  explicit SecureValueStore(frame::AppState& app) : app_(app) {}
  Text ReadSecure(const Text& keyName) override;
  platform::WriteResult WriteSecure(const Text& keyName, const Text& value) override;

 private:
  frame::AppState& app_;
};

}  // namespace account
