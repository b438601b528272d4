#include "platform/win32/Win32Sound.h"

#include <string>

#include "base/Utf16.h"
#include "platform/win32/Win32Text.h"
// Win32Text.h brings <windows.h> first.
#include <mmsystem.h>

namespace platform {

bool Win32Sound::PlayAlias(const Text& alias) noexcept {
  const std::string name = base::EncodeCp1252(alias);
  return ::PlaySoundA(name.c_str(), nullptr, SND_ALIAS | SND_ASYNC) != FALSE;
}

}  // namespace platform
