// Property-style checks over generated schedule files: reading and rewriting changes
// only what the operation means to change, down to the byte.
#include <random>
#include <set>

#include "JobStoreFixture.h"

namespace jobstore::test {
namespace {

class Generator {
 public:
  explicit Generator(unsigned seed) : rng_(seed) {}

  int Int(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
  bool Chance(int percent) { return Int(1, 100) <= percent; }

  // Field text without separators, line ends or doubled "û"; unpaired surrogates and
  // other units a codec might trip over are in on purpose.
  Text Field(int maxLen = 8) {
    // clang-format off
    static const char16_t kPool[] = {u'a', u'Z', u'0', u'9', u' ', u'/', u'-', u':', u';', u'@',
                                     u'.', u'\u00E9', u'\u00FB', u'\u4E2D', 0xD800, 0xDC00,
                                     u'\uFFFF', u'\t', u'|', u'\u0007'};
    // clang-format on
    Text t;
    int n = Int(0, maxLen);
    for (int i = 0; i < n; ++i) {
      char16_t c = kPool[Int(0, sizeof(kPool) / sizeof(kPool[0]) - 1)];
      if (c == u'\u00FB' && !t.empty() && t.back() == u'\u00FB') continue;
      t.push_back(c);
    }
    if (!t.empty() && t.back() == u'\u00FB') t.pop_back();  // next to a separator it would pair
    if (!t.empty() && t.front() == u'\u00FB') t.erase(t.begin());
    return t;
  }
  Text Date() {
    base::DateTime d{Int(1990, 2040), Int(1, 12), 1, Int(0, 23), Int(0, 59), Int(0, 59)};
    d.day = Int(1, base::DateTime::DaysInMonth(d.year, d.month));
    return base::FormatFileDate(d);
  }
  Text Days() {
    static const char16_t* kDays[] = {u"1234567", u"23456",   u"17",        u"3",
                                      u"Hourly",  u"Monthly", u"Immediate", u"135"};
    return kDays[Int(0, 7)];
  }

  // Twenty fields as the writer puts them (Password "1", EngineFlag "0"), Days set.
  std::vector<Text> CanonicalFields(const Text& no) {
    std::vector<Text> f = {
        no,       Field(),  Date(),   Date(),    Field(), Text(1, u'0' + Int(0, 7)),
        Field(2), Field(2), Field(),  Field(),   Field(), Field(),
        Field(2), Field(2), Field(2), Field(12), Field(), u"1",
        u"0",     Days()};
    if (base::IsBlank(f[1])) f[1] = u"Set" + no;
    return f;
  }

 private:
  std::mt19937 rng_;
};

using RoundTrip = JobStoreTest;

TEST_F(RoundTrip, RewritingEveryCanonicalRecordInOrderGivesTheSameBytes) {
  for (unsigned seed = 1; seed <= 150; ++seed) {
    Generator g(seed);
    std::vector<Text> lines = {Text(1, u'0' + g.Int(0, 2))};
    int n = g.Int(1, 15);
    for (int i = 0; i < n; ++i)
      lines.push_back(Join(g.CanonicalFields(base::FromNumber(i + 1)), kB));
    PutSchedule(lines);
    const std::string original = ScheduleBytes();

    Load();
    ASSERT_EQ(app.Jobs.size(), static_cast<size_t>(n));
    std::vector<ScheduleRecord> jobs = app.Jobs;
    for (auto& r : jobs) ASSERT_TRUE(DB_WriteSchdata(app, r, false));
    ASSERT_EQ(ScheduleBytes(), original) << "seed " << seed;

    // And a second load sees the same records.
    Load();
    ASSERT_EQ(app.Jobs, jobs) << "seed " << seed;
  }
}

TEST_F(RoundTrip, StateWordAndNewNumber) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    Generator g(seed);
    std::set<int> used;
    std::vector<Text> lines = {u"0"};
    int n = g.Int(0, 12);
    for (int i = 0; i < n; ++i) {
      int no = g.Int(0, 14);
      if (!used.insert(no).second) continue;
      lines.push_back(g.Chance(80) ? Join(g.CanonicalFields(base::FromNumber(no)), kB)
                                   : base::FromNumber(no) + kU + g.Field());
    }
    PutSchedule(lines);
    const std::string before = ScheduleBytes();

    long next = DB_GetNewSchRecordNo(app, n);
    EXPECT_EQ(used.count(static_cast<int>(next)), 0u) << "seed " << seed;
    for (int k = 1; k < next; ++k) EXPECT_EQ(used.count(k), 1u) << "seed " << seed << " k " << k;

    const Text word = Text(1, u'0' + g.Int(0, 2));
    static_cast<void>(SetStateWord(app, SchedulePath(), word));
    std::string after = ScheduleBytes();
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.substr(0, 2), before.substr(0, 2));
    EXPECT_EQ(after[2], static_cast<char>(word[0]));
    EXPECT_EQ(after.substr(3), before.substr(3)) << "seed " << seed;
  }
}

}  // namespace
}  // namespace jobstore::test
