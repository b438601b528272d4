// The tip of the monitor's icon in the notification area.
#include <gtest/gtest.h>

#include "monitor/TrayIcon.h"

namespace {

using monitor::TrayTipText;

TEST(TrayTip, TheTitleNamesTheProductOrTheBrandedMonitorAndATotalAddsThePercentage) {
  EXPECT_EQ(TrayTipText(u"Corvane for Windows", false, 0, 0), u"Corvane for Windows Monitor");
  EXPECT_EQ(TrayTipText(u"Acme Backup", false, 0, 0), u"QVMonitor");
  // A running transfer with a total adds its percentage.
  EXPECT_EQ(TrayTipText(u"Corvane for Windows", true, 1048576, 42),
            u"Corvane for Windows Monitor - 42% transferred");
  EXPECT_EQ(TrayTipText(u"Acme Backup", true, 5, 100), u"QVMonitor - 100% transferred");
  // Without a total, or before a transfer was drawn, the tip stays the title.
  EXPECT_EQ(TrayTipText(u"Corvane for Windows", true, 0, 42), u"Corvane for Windows Monitor");
  EXPECT_EQ(TrayTipText(u"Corvane for Windows", false, 1048576, 42),
            u"Corvane for Windows Monitor");
}

}  // namespace
