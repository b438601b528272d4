#pragma once
// The monitor's settings: qvwin.ini (by key, into the section the key belongs to),
// the account files, the engine type, and the start-at-logon value.
#include "base/Text.h"
#include "frame/AppState.h"

namespace frame {

inline constexpr std::size_t kProfileBufferChars = 1024;

// "Corvane", "DateFormat", "LDPI" or "NDPI" for a key, as the reader chooses it.
Text SettingSectionForRead(AppState& app, const Text& key);
// The writer's choice: the same, except DateFormat goes to the general section.
Text SettingSectionForWrite(AppState& app, const Text& key);
// "LDPI" at 96 dots per inch or fewer, "NDPI" above.
Text ResolutionSection(AppState& app);
bool IsResolutionKey(const Text& key);

Text ReadSetting(AppState& app, const Text& key, bool secure = false);
// False with the reason (traced as well) when the value could not be stored; the file
// then keeps its previous content.
platform::WriteResult WriteSetting(AppState& app, const Text& key, const Text& value,
                                   bool secure = false);
// Whether a user name, trimmed, names a folder right under QVCOMMON: one without "\",
// "/", ":" or "..", which would lead out of it. A user's files are read and written
// only under such a name.
bool StaysInItsFolder(const Text& userName);

// QVDetails.ini, or the per-user qvwinserver.ini of `user` (UserName when empty).
// A user name that would leave its folder reads as nothing and writes nothing.
Text ReadAccountKey(AppState& app, const Text& section, const Text& key, bool perUser,
                    const Text& user = Text());
// Writes a key of the per-user qvwinserver.ini (section "Corvane" unless given).
void WriteAccountKey(AppState& app, const Text& section, const Text& key, const Text& value,
                     const Text& user = Text());

// The registry root of the product's profile values and of the Run value:
// the machine below Windows major version 6, else the user.
platform::RegRoot ProfileRoot(AppState& app);

// 1 when the installed engine is a service: Type in QVDetails.ini, else the registry.
int EngineIsService(AppState& app);

inline constexpr char16_t kRunKey[] = u"Software\\Microsoft\\Windows\\Currentversion\\run";
inline constexpr char16_t kRunValue[] = u"QVWin Monitor";
void AddToRun(AppState& app);
void RemoveFromRun(AppState& app);
int IsInRun(AppState& app);

}  // namespace frame
