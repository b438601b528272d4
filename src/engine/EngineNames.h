#pragma once
// The names by which the monitor finds the engine. "_955" is part of the program
// names as the engine is installed, not a version to be filled in.
namespace engine {

inline constexpr char16_t kServiceName[] = u"QVWin Service";
inline constexpr char16_t kServiceProgram[] = u"QVWin Service_955.exe";
inline constexpr char16_t kBackgroundTitle[] = u"QVBackground";
inline constexpr char16_t kBackgroundProgram[] = u"QVBackground_955.exe";
inline constexpr char16_t kServicesDatabase[] = u"ServicesActive";

inline constexpr char16_t kGuideText[] =
    u"The transfer progress will reflect here once the scheduled job commences.\r\n\r\n"
    u"Click the 'Details' tab to view the Session logs for the recent scheduled jobs.";

}  // namespace engine
