#include <gtest/gtest.h>

#include "AccountFixture.h"
#include "frame/MessageTable.h"
#include "platform/portable/HttpRules.h"
#include "account/FeedbackReport.h"

using account::ReportFields;
using base::Text;
using kit::ScriptedUi;

namespace {

class FeedbackReportTest : public ::testing::Test, public testkit::AccountFixture {
 protected:
  FeedbackReportTest() {
    http = fake.network.CreateHttpObject({});
    hooks.progressText = [this](const Text& t) { progress.push_back(t); };
    hooks.setBusy = [this](bool on) { busy.push_back(on); };
    hooks.focusFrom = [this] { focus.push_back("from"); };
    hooks.focusMessage = [this] { focus.push_back("message"); };
  }
  void UnicodeLog(const Text& name, int lines, const Text& prefix = u"line ") {
    std::vector<Text> all;
    for (int i = 1; i <= lines; ++i) all.push_back(prefix + base::FromNumber(i));
    platform::TextFile::WriteLines(fake.fs, Common(name), all);
  }
  Text Bundle(const Text& name, bool plain) {
    return account::BundleLogFile(app, *http, name, false, plain, [this] { ++rounds; });
  }
  ReportFields Fields() { return {u"mary", u"mary@example.com", u"555-0100", u" Subj ", u"Hello"}; }

  std::unique_ptr<platform::IHttpObject> http;
  account::SendHooks hooks;
  std::vector<Text> progress;
  std::vector<bool> busy;
  std::vector<std::string> focus;
  int rounds = 0;
};

TEST(FeedbackRules, MailAddressNeedsAnAtNoDotRightBehindItAndADotLater) {
  EXPECT_TRUE(account::ValidateMailid(u"a@b.c"));
  EXPECT_TRUE(account::ValidateMailid(u"@bc.d"));
  EXPECT_FALSE(account::ValidateMailid(u"a.b.c"));
  EXPECT_FALSE(account::ValidateMailid(u"a@.bc"));
  EXPECT_FALSE(account::ValidateMailid(u"a@bc"));
  EXPECT_TRUE(account::ValidateMailid(u"a@b."));  // the dot is the second character behind
  EXPECT_FALSE(account::ValidateMailid(u"a@"));
}

TEST(FeedbackRules, SubjectFollowsTheTrimmedTicket) {
  EXPECT_EQ(account::TicketSubject(u" 1234 "), u"Corvane for Windows Ticket : 1234");
  EXPECT_EQ(account::TicketSubject(u"   "), u"Corvane for Windows user feedback");
}

TEST_F(FeedbackReportTest, MessageLinesAreEncodedAndOnlySeveralLinesGetLineFeeds) {
  EXPECT_EQ(account::EncodeMessage(*http, u"one line"), u"one%20line");
  EXPECT_EQ(account::EncodeMessage(*http, u"a\r\nb"), u"a\nb\n");
  EXPECT_EQ(account::EncodeMessage(*http, u"    "), u"");
}

TEST_F(FeedbackReportTest, HeadIsWordForWord) {
  const Text nt = u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\";
  fake.registry.WriteString(platform::RegRoot::LocalMachine, nt, u"ProductName", u"Windows 10 Pro",
                            0);
  fake.registry.WriteString(platform::RegRoot::LocalMachine, nt, u"CurrentVersion", u"6.3", 0);
  fake.registry.WriteString(platform::RegRoot::LocalMachine,
                            u"SOFTWARE\\Microsoft\\Internet Explorer\\", u"Version", u"11.0", 0);
  frame::WriteSetting(app, u"TotalSpace", u"10 GB");
  frame::WriteSetting(app, u"UsedSpace", u"2 GB");
  EXPECT_EQ(account::GetSystemSettings(app, Fields()),
            u"<<< USER FEEDBACK FROM CORVANE FOR WINDOWS version >>>9.5.5\r\n"
            u"User's Operating System:  Windows 10 Pro\r\n"
            u"OS Version: 6.3\r\n"
            u"User's Browser: Internet Explorer version  11.0\r\n"
            u"Does the user connect through a proxy server? \r\n"
            u"Corvane Username: mary\r\n"
            u"User's Quota: 10 GB\r\n"
            u"User's Used Space: 2 GB\r\n"
            u"User's e-mail address: mary@example.com\r\n"
            u"User's Contact Phone Number:555-0100\r\n"
            u"User 's technical issues/comments/suggestions:\r\n\r\n");
}

TEST_F(FeedbackReportTest, ShortLogComesWholeInItsOrderAndTheTemporaryFileGoes) {
  UnicodeLog(u"QVWLogFile.txt", 5);
  EXPECT_EQ(Bundle(u"QVWLogFile.txt", false), u"line 1\nline 2\nline 3\nline 4\nline 5\n");
  EXPECT_FALSE(fake.fs.FileExists(Common(u"TmpLogAttach.txt")));
  // Events twice before each piece of the split, the empty one behind the last CR LF too.
  EXPECT_EQ(rounds, 12);
  EXPECT_EQ(Bundle(u"Missing.txt", false), u"");
}

TEST_F(FeedbackReportTest, LongLogGivesItsEndNeverItsStartWithinTheLimit) {
  for (bool plain : {false, true}) {
    SCOPED_TRACE(plain);
    UnicodeLog(u"TraceLdb.txt", 50000, u"entry ");
    if (plain) {
      std::string bytes;
      for (const Text& l : Lines(Common(u"TraceLdb.txt"))) bytes += base::ToUtf8(l) + "\r\n";
      fake.fs.WriteAll(Common(u"TraceLdb.txt"), bytes);
    }
    const Text tail = Bundle(u"TraceLdb.txt", plain);
    EXPECT_LT(tail.size(), 21000u);
    EXPECT_GT(tail.size(), 5000u);
    // The newest lines, whole and in file order.
    Text expected;
    for (auto i = 50001 - std::count(tail.begin(), tail.end(), u'\n'); i <= 50000; ++i)
      expected += u"entry " + base::FromNumber(i) + u"\n";
    EXPECT_EQ(tail, expected);
    EXPECT_FALSE(fake.fs.FileExists(Common(u"TmpLogAttach.txt")));
  }
}

TEST_F(FeedbackReportTest, LogLinesPassTheFilter) {
  platform::TextFile::WriteLines(fake.fs, Common(u"SerTraceFile.txt"),
                                 {u"login user=mary&password=Secret1 ok", u"Password: hunter2"});
  EXPECT_EQ(Bundle(u"SerTraceFile.txt", false),
            u"login user=mary&password=******** ok\nPassword: ********\n");
}

TEST_F(FeedbackReportTest, RegionalDetailsInTheirSevenLines) {
  fake.localeInfo.userItems = {{1, u"0409"},
                               {6, u"United States"},
                               {7, u"USA"},
                               {2, u"English"},
                               {14, u"."},
                               {15, u","},
                               {4099, u"h:mm:ss tt"},
                               {31, Text(u"M/d/yyyy\0x", 10)}};
  EXPECT_EQ(account::GetLocaleDetails(app, u"Regional"),
            u"Locale ID: 0409\r\nCountry: United States  (USA)\r\nLanguage: English\r\n"
            u"Decimal: .\r\nThousands: ,\r\nTime Format: h:mm:ss tt\r\nShort Date: M/d/yyyy");
}

TEST_F(FeedbackReportTest, ValidationAsksForAddressThenMessageThenAValidAddress) {
  ReportFields f = Fields();
  f.from.clear();
  f.message.clear();
  EXPECT_FALSE(account::ValidateLogMail(app, ui, f, hooks));
  f.from = u"mary@example";
  EXPECT_FALSE(account::ValidateLogMail(app, ui, f, hooks));
  f.message = u"   ";  // blanks pass: the report goes with an empty message part
  EXPECT_FALSE(account::ValidateLogMail(app, ui, f, hooks));
  f.from = u"mary@example.com";
  EXPECT_TRUE(account::ValidateLogMail(app, ui, f, hooks));
  EXPECT_EQ(Texts(), (std::vector<Text>{Msg(12), Msg(14), Msg(52)}));
  EXPECT_EQ(focus, (std::vector<std::string>{"from", "message", "from"}));
  EXPECT_TRUE(Has(Units(Common(u"SerTraceFile.txt")), u"Exit ValidateLogMail"));
}

TEST_F(FeedbackReportTest, ReportWithoutLogsIsHeadMessageLanguageAndDate) {
  ASSERT_TRUE(account::SendReport(app, ui, Fields(), hooks) == account::SendOutcome::Sent);
  ASSERT_EQ(fake.network.mails.size(), 1u);
  const auto& mail = fake.network.mails[0];
  EXPECT_EQ(mail.to, u"support@corvane.com");
  EXPECT_EQ(mail.subject, u"Subj");
  EXPECT_EQ(mail.from, u"mary@example.com");
  const Text head = account::GetSystemSettings(app, Fields());
  EXPECT_EQ(mail.body.substr(0, head.size() + 7), head + u"\r\nHello");
  EXPECT_TRUE(Has(mail.body, account::GetLocaleDetails(app, u"Regional")));
  // The trace is the only log here; it appears with its banner.
  EXPECT_TRUE(Has(mail.body, u"----------ServiceTraceFile--------------\r\n"));
  EXPECT_FALSE(Has(mail.body, u"CorvaneServiceLog"));
  EXPECT_EQ(progress[1], u"25% complete");
  EXPECT_EQ(progress.back(), u"Feedback report has been sent successfully.");
  EXPECT_EQ(busy, (std::vector<bool>{true, false}));
}

TEST_F(FeedbackReportTest, LogsInTableOrderAndNoPasswordAnywhere) {
  frame::WriteSetting(app, u"UserName", u"mary");
  frame::WriteSetting(app, u"mary", u"Zq7#Secret", true);
  UnicodeLog(u"QVWServiceLog.txt", 3, u"service ");
  UnicodeLog(u"TraceFile.txt", 2, u"trace Zq7#Secret ");
  fake.fs.AddFolders(Common(u"QVOracle"));
  fake.fs.AddFolders(Common(u"QVOracle\\LOGS"));
  fake.fs.WriteAll(Common(u"QVOracle\\LOGS\\QVOracleBackup.txt"), "oracle 1\r\noracle 2\r\n");
  ReportFields f = Fields();
  f.message = u"my password is Zq7#Secret";
  ASSERT_TRUE(account::SendReport(app, ui, f, hooks) == account::SendOutcome::Sent);
  const Text body = fake.network.mails.at(0).body;
  EXPECT_FALSE(Has(body, u"Zq7#Secret"));
  EXPECT_FALSE(Has(body, account::Encrypt(app, u"Zq7#Secret")));
  EXPECT_FALSE(Has(body, u"Zq7%23Secret"));
  const auto service =
      body.find(u"----------CorvaneServiceLog-------------\r\nservice 1\nservice 2\n");
  const auto trace = body.find(u"----------CorvaneTraceFile--------------\r\ntrace");
  const auto oracle =
      body.find(u"----------Oracle Server Backup Trace----------\r\noracle 1\noracle 2\n");
  ASSERT_NE(service, Text::npos);
  ASSERT_NE(trace, Text::npos);
  ASSERT_NE(oracle, Text::npos);
  EXPECT_LT(service, trace);
  EXPECT_LT(trace, oracle);
}

TEST_F(FeedbackReportTest, FailedSendTellsTheReasonAndSaysSo) {
  fake.network.mailFailure = u"the server refused the report";
  ui.Queue(ScriptedUi::Answer::Ok());
  EXPECT_TRUE(account::SendReport(app, ui, Fields(), hooks) == account::SendOutcome::Failed);
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_TRUE(Has(ui.Questions()[0].text, u"the server refused the report"));
  EXPECT_TRUE(Has(ui.Questions()[0].text, Msg(101)));
  EXPECT_EQ(progress.back(), u"Failed to send the feedback report.");
  EXPECT_EQ(progress[progress.size() - 2], u"");
  EXPECT_TRUE(fake.network.mails.empty());
}

TEST(HttpRules, OnlyHttpsAddressesAreAccepted) {
  auto a = platform::ParseHttpsAddress(u"HTTPS://127.0.0.1:8443/base/");
  ASSERT_TRUE(a);
  EXPECT_EQ(a->host, u"127.0.0.1");
  EXPECT_EQ(a->port, 8443);
  EXPECT_EQ(a->basePath, u"/base");
  EXPECT_EQ(platform::ParseHttpsAddress(u"https://account.corvane.com")->port, 443);
  for (Text bad : {u"http://127.0.0.1:8443", u"127.0.0.1", u"https://", u"https://h:0",
                   u"https://h:99999", u"https://h:8x", u"ftp://h", u"https://u@h"})
    EXPECT_FALSE(platform::ParseHttpsAddress(bad)) << testkit::U8(bad);
  EXPECT_EQ(platform::FormBody({{u"to", u"a b"}, {u"body", u"é&"}}), "to=a%20b&body=%C3%A9%26");
}

}  // namespace
