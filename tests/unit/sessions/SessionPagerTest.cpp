// The pager and the list's rules without the form.
#include <gtest/gtest.h>

#include "kit/Form.h"
#include "kit/ListView.h"
#include "sessions/SessionPager.h"

namespace sessions {
namespace {

// A step as one line: range, the rows asked for, Next and Back ("+" enabled, "-"
// disabled, "=" enabled state left as it was), then NextStart.
std::string Say(const PageStep& s, const SessionPager& p) {
  auto button = [](const std::optional<PagerButton>& b) -> std::string {
    if (!b) return "none";
    const char* state = !b->enabled ? "=" : *b->enabled ? "+" : "-";
    return base::ToUtf8(b->picture) + state;
  };
  std::string rows = s.find ? std::to_string(s.from) + ".." + std::to_string(s.to) : "no rows";
  return "[" + base::ToUtf8(s.range) + "] " + rows + " " + button(s.next) + " " + button(s.back) +
         " @" + std::to_string(p.NextStart);
}

TEST(SessionPagerTest, NoFilesOnePageAndOneMore) {
  SessionPager p;
  EXPECT_EQ(Say(p.Load(0), p), "[] no rows next_dis- back_dis- @0");
  EXPECT_EQ(Say(p.Load(50), p), "[1 to 50 of 50] 1..50 next_dis- back_dis- @0");
  EXPECT_EQ(p.PageSize, 50);
  EXPECT_EQ(Say(p.Load(51), p), "[1 to 50 of 51] 1..50 next_reg+ back_dis- @50");
  EXPECT_EQ(Say(p.Next(51), p), "[51 to 51 of 51] 51..51 next_dis- back_reg+ @100");
  EXPECT_EQ(Say(p.Back(51), p), "[1 to 50 of 51] 1..50 next_reg+ back_dis- @50");
}

TEST(SessionPagerTest, ACountOnAPageEndShowsTheEmptyPageAfterIt) {
  SessionPager p;
  EXPECT_EQ(Say(p.Load(100), p), "[1 to 50 of 100] 1..50 next_reg+ back_dis- @50");
  EXPECT_EQ(Say(p.Next(100), p), "[51 to 100 of 100] 51..100 next_reg= back_reg+ @100");
  EXPECT_EQ(Say(p.Next(100), p), "[101 to 100 of 100] 101..100 next_dis- back_reg+ @150");
  EXPECT_EQ(Say(p.Back(100), p), "[51 to 100 of 100] 51..100 next_reg+ back_reg+ @100");
  // A load starts over whatever came before.
  EXPECT_EQ(Say(p.Load(120), p), "[1 to 50 of 120] 1..50 next_reg+ back_dis- @50");
}

class SessionListTest : public ::testing::Test {
 protected:
  SessionListTest() {
    SetUpSessionList(list);
    // Start times and keys that disagree, so that each sort shows which key it used.
    Row(u" 01-01-2026  10-00-00", u"Schedule ", u"202601011000");
    Row(u" 12-31-2025  09-00-00", u"Interactive Backup ", u"202612310900");
    Row(u" 06-15-2026  08-00-00", u"Sync", u"202606150800");
  }
  void Row(const Text& start, const Text& description, const Text& key) {
    kit::ListItem& item = list.AddRow(Text());
    item.SetSubItem(1, start);
    item.SetSubItem(2, description);
    item.SetSubItem(3, key);
  }
  std::string Order() {
    std::string out;
    for (int i = 1; i <= list.Count(); ++i)
      out += base::ToUtf8(list.Item(i).SubItem(2)).substr(0, 2);
    return out;
  }
  kit::Form holder{u"frmSessionLog"};
  kit::ListView list{holder, u"LstSessionLogView", {}};
};

TEST_F(SessionListTest, TheDefaultSortIsByTheHiddenKey) {
  SortListview(list);
  EXPECT_EQ(Order(), "InSySc");
}

TEST_F(SessionListTest, AColumnClickFlipsTheOrderAndNeverSortsByTheDescription) {
  SortListview(list);
  ColumnClickSort(list, 3);  // Description: by the key, now ascending
  EXPECT_EQ(list.SortKey(), 3);
  EXPECT_EQ(Order(), "ScSyIn");
  ColumnClickSort(list, 2);  // Start Time: by the key, descending again
  EXPECT_EQ(list.SortKey(), 3);
  EXPECT_EQ(Order(), "InSySc");
  ColumnClickSort(list, 1);  // Type: by the start time's text, ascending
  EXPECT_EQ(list.SortKey(), 1);
  EXPECT_EQ(Order(), "ScSyIn");
  // A rebuilt page sorts descending by the key again.
  SortListview(list);
  EXPECT_EQ(Order(), "InSySc");
}

}  // namespace
}  // namespace sessions
