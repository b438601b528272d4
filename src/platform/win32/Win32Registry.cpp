#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Registry.h"

#include "platform/win32/Win32Handles.h"

#include <vector>

namespace platform {
namespace {

using win32::FromWide;
using win32::NoThrow;
using win32::UniqueKey;
using win32::Wide;

HKEY RootKey(RegRoot root) {
  return root == RegRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

}  // namespace

std::optional<Text> Win32Registry::ReadString(RegRoot root, const Text& key, const Text& name,
                                              std::size_t maxBytes) noexcept {
  return NoThrow(std::optional<Text>(), [&]() -> std::optional<Text> {
    UniqueKey k;
    if (::RegOpenKeyExW(RootKey(root), Wide(key), 0, KEY_READ, k.Out()) != ERROR_SUCCESS)
      return std::nullopt;
    std::vector<BYTE> buffer(maxBytes + 2, 0);
    DWORD type = 0;
    DWORD size = static_cast<DWORD>(maxBytes);
    // A value longer than the caller's buffer fails, as it did for the caller's own call.
    if (::RegQueryValueExW(k.Get(), Wide(name), nullptr, &type, buffer.data(), &size) !=
        ERROR_SUCCESS)
      return std::nullopt;
    if (type != REG_SZ && type != REG_EXPAND_SZ && type != REG_MULTI_SZ) return std::nullopt;
    Text value = FromWide(reinterpret_cast<const wchar_t*>(buffer.data()), size / 2);
    // The terminator the writer stored is not part of the value; anything else is
    // left for the caller, who cuts at the first NUL.
    if (!value.empty() && value.back() == u'\0') value.pop_back();
    return value;
  });
}

bool Win32Registry::WriteString(RegRoot root, const Text& key, const Text& name, const Text& value,
                                unsigned long access) noexcept {
  UniqueKey k;
  if (::RegCreateKeyExW(RootKey(root), Wide(key), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        static_cast<REGSAM>(access), nullptr, k.Out(), nullptr) != ERROR_SUCCESS)
    return false;
  DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return ::RegSetValueExW(k.Get(), Wide(name), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(value.c_str()), bytes) == ERROR_SUCCESS;
}

bool Win32Registry::DeleteValue(RegRoot root, const Text& key, const Text& name) noexcept {
  UniqueKey k;
  if (::RegOpenKeyExW(RootKey(root), Wide(key), 0, KEY_WRITE, k.Out()) != ERROR_SUCCESS)
    return false;
  return ::RegDeleteValueW(k.Get(), Wide(name)) == ERROR_SUCCESS;
}

}  // namespace platform
