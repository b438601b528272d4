#include "platform/win32/Win32Sound.h"

#include "platform/win32/Win32Text.h"
// Win32Text.h brings <windows.h> first.
#include <mmsystem.h>

namespace platform {

bool Win32Sound::PlayAlias(const Text& alias) noexcept {
  return PlaySoundW(win32::Wide(alias), nullptr, SND_ALIAS | SND_ASYNC | SND_NODEFAULT) != FALSE;
}

}  // namespace platform
