#include "platform/win32/Win32DialUp.h"

#include "platform/win32/Win32Text.h"
// After windows.h:
#include <mmsystem.h>
#include <ras.h>

#include <cstring>
#include <string>

#include "base/Utf16.h"

namespace platform {

namespace {

// The connection entry in its first form: size, handle, entry name, device type and
// device name (412 bytes in a 32-bit process).
struct OldRasConn {
  DWORD dwSize;
  HRASCONN hrasconn;
  CHAR szEntryName[RAS_MaxEntryName + 1];
  CHAR szDeviceType[RAS_MaxDeviceType + 1];
  CHAR szDeviceName[RAS_MaxDeviceName + 1];
};

Text Narrow(const CHAR* text, std::size_t max) {
  return base::DecodeCp1252(std::string(text, strnlen(text, max)));
}

}  // namespace

DialUpListing Win32DialUp::Connections() noexcept {
  return win32::NoThrow(DialUpListing{}, [&]() -> DialUpListing {
    DialUpListing listing;
    OldRasConn one{};
    one.dwSize = sizeof(OldRasConn);
    DWORD bytes = 0;
    DWORD count = 0;
    DWORD result = ::RasEnumConnectionsA(reinterpret_cast<LPRASCONNA>(&one), &bytes, &count);
    if (result == 0 && bytes == 0) {
      listing.none = true;
      return listing;
    }
    // The buffer the service asked for, with the entry's size at its start.
    const std::size_t entries =
        bytes > 0 ? (bytes + sizeof(OldRasConn) - 1) / sizeof(OldRasConn) : 1;
    std::vector<OldRasConn> buffer(entries);
    buffer[0].dwSize = sizeof(OldRasConn);
    if (bytes == 0) bytes = sizeof(OldRasConn);
    count = 0;
    result = ::RasEnumConnectionsA(reinterpret_cast<LPRASCONNA>(buffer.data()), &bytes, &count);
    if (result != 0) {
      listing.error = result;
      return listing;
    }
    for (DWORD i = 0; i < count && i < buffer.size(); ++i) {
      const OldRasConn& c = buffer[i];
      listing.connections.push_back({reinterpret_cast<std::uintptr_t>(c.hrasconn),
                                     Narrow(c.szEntryName, sizeof c.szEntryName),
                                     Narrow(c.szDeviceType, sizeof c.szDeviceType),
                                     Narrow(c.szDeviceName, sizeof c.szDeviceName)});
    }
    return listing;
  });
}

unsigned long Win32DialUp::HangUp(std::uintptr_t handle) noexcept {
  return ::RasHangUpA(reinterpret_cast<HRASCONN>(handle));
}

}  // namespace platform
