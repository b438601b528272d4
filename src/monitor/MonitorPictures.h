#pragma once
// The monitor window's pictures by key (docs/artwork.md): the tab image list (1 to 4),
// the status image list (5 to 7), the waiting picture, and the tray image list (1, 2).

namespace monitor {

inline constexpr char16_t kTabStatusSelected[] = u"tab_status_sel";    // 1
inline constexpr char16_t kTabStatus[] = u"tab_status";                // 2
inline constexpr char16_t kTabDetailsSelected[] = u"tab_details_sel";  // 3
inline constexpr char16_t kTabDetails[] = u"tab_details";              // 4
inline constexpr char16_t kLightRunning[] = u"light_green";            // 5
inline constexpr char16_t kLightChanging[] = u"light_amber";           // 6
inline constexpr char16_t kLightStopped[] = u"light_red";              // 7
inline constexpr char16_t kLightWaiting[] = u"light_off";
inline constexpr char16_t kTrayRunning[] = u"tray_running";     // 1
inline constexpr char16_t kTrayNotRunning[] = u"tray_stopped";  // 2

}  // namespace monitor
