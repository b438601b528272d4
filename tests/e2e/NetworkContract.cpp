// The WinHTTP objects against the loopback account service (tests/e2e/network-
// contract.sh starts it and says where it is). The objects alone first, then the
// account check, the password update and the feedback report on a fake disk with the
// real network underneath.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "frame/Settings.h"
#include "frame/MessageTable.h"
#include "kit/ScriptedUi.h"
#include "platform/portable/HttpRules.h"
#include "platform/win32/Win32Network.h"
#include "account/AccountService.h"
#include "account/FeedbackReport.h"
#include "testkit/FrameFixture.h"
#include "account/UpdatePasswordRules.h"
#include "account/ValueFiles.h"

using base::Text;

namespace {

std::string Env(const char* name) {
  const char* v = std::getenv(name);
  if (v == nullptr || *v == 0) ADD_FAILURE() << name << " is not set: run network-contract.sh";
  return v ? v : "";
}

Text Url(const char* name) { return base::FromUtf8(Env(name)); }

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

std::string Requests() { return ReadFile(Env("QV_SPOOL") + "\\requests.log"); }

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class NetworkContract : public ::testing::Test {
 protected:
  platform::Win32NetworkObjects net;
  platform::ServiceEndpoints Trusted() { return {Url("QV_TRUSTED_URL"), Url("QV_TRUSTED_URL")}; }
};

TEST_F(NetworkContract, LoginProvesOnlyTheRightPassword) {
  auto login = net.CreateLoginObject(Trusted());
  ASSERT_TRUE(login);
  EXPECT_TRUE(login->Login(u"goodone", u"Right#Pass123456", 0));
  EXPECT_FALSE(login->Login(u"goodone", u"Right#Pass12345", 0));
  EXPECT_FALSE(login->Login(u"gone", u"anything", 0));
  EXPECT_TRUE(Contains(Requests(), "trusted POST /cgi-bin/login user=goodone"));
}

TEST_F(NetworkContract, StatusRequestGivesReplyAndStatusText) {
  auto http = net.CreateHttpObject(Trusted());
  ASSERT_TRUE(http);
  platform::IHttpObject::RequestState state;
  Text status;
  const Text query = u"user=" + http->EncodeQueryValue(u"behindproxy", 0) + u"&password=x";
  EXPECT_EQ(http->Request(Url("QV_TRUSTED_URL"), platform::kStatusPath, query, 3, status, 0, state),
            u"");
  EXPECT_EQ(status, u"Cache Access Denied.");
  EXPECT_EQ(state.statusCode, 403);
  EXPECT_EQ(http->Request(Url("QV_TRUSTED_URL"), platform::kStatusPath, query, 3, status, 0, state),
            u"Expired on 01-02-2013");
  EXPECT_EQ(status, u"OK");
}

TEST_F(NetworkContract, UntrustedCertificateFailsBeforeAnythingIsSent) {
  platform::ServiceEndpoints untrusted{Url("QV_UNTRUSTED_URL"), Url("QV_UNTRUSTED_URL")};
  EXPECT_FALSE(net.CreateLoginObject(untrusted)->Login(u"goodone", u"Right#Pass123456", 0));
  auto http = net.CreateHttpObject(untrusted);
  platform::IHttpObject::RequestState state;
  Text status;
  EXPECT_EQ(http->Request(untrusted.accountServer, platform::kStatusPath, u"user=lapsed&password=x",
                          3, status, 0, state),
            u"");
  EXPECT_NE(status.find(u"certificate"), Text::npos) << base::ToUtf8(status);
  Text failure;
  http->SendMail(u"s@x.y", u"s", u"secret report", u"a@b.c", true,
                 {{}, [&](const Text& r) { failure = r; }, {}});
  EXPECT_FALSE(failure.empty());
  EXPECT_FALSE(Contains(Requests(), "untrusted "));
}

TEST_F(NetworkContract, PlainHttpIsRefusedWithoutAConnection) {
  platform::ServiceEndpoints plain{Url("QV_PLAIN_URL"), Url("QV_PLAIN_URL")};
  EXPECT_FALSE(net.CreateLoginObject(plain)->Login(u"goodone", u"Right#Pass123456", 0));
  auto http = net.CreateHttpObject(plain);
  platform::IHttpObject::RequestState state;
  Text status;
  EXPECT_EQ(http->Request(plain.accountServer, platform::kStatusPath, u"user=lapsed&password=x", 3,
                          status, 0, state),
            u"");
  EXPECT_NE(status.find(u"https://"), Text::npos);
  bool sent = false;
  Text failure;
  http->SendMail(u"s@x.y", u"s", u"report", u"a@b.c", true,
                 {{}, [&](const Text& r) { failure = r; }, [&] { sent = true; }});
  EXPECT_FALSE(sent);
  EXPECT_FALSE(failure.empty());
  EXPECT_FALSE(Contains(Requests(), "plain "));
}

TEST_F(NetworkContract, UploadIsChunkedWithRealProgressAndArrivesWhole) {
  auto http = net.CreateHttpObject(Trusted());
  Text body;
  for (int i = 0; i < 3000; ++i)
    body += u"Zeile " + base::FromNumber(i) + u" \u00e9\u20ac &=%+\r\n";
  std::vector<long> progress;
  bool sent = false;
  http->SendMail(u"support@corvane.com", u"Subject \u00fc", body, u"me@example.com", true,
                 {[&](long p) { progress.push_back(p); },
                  [&](const Text& r) { ADD_FAILURE() << base::ToUtf8(r); }, [&] { sent = true; }});
  EXPECT_TRUE(sent);
  ASSERT_GT(progress.size(), 10u);
  EXPECT_EQ(progress.back(), 100);
  EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
  const std::string spool = Env("QV_SPOOL");
  int n = 1;
  while (!ReadFile(spool + "\\report-" + std::to_string(n + 1) + "\\body.txt").empty()) ++n;
  const std::string dir = spool + "\\report-" + std::to_string(n);
  EXPECT_EQ(ReadFile(dir + "\\body.txt"), base::ToUtf8(body));
  EXPECT_EQ(ReadFile(dir + "\\subject.txt"), base::ToUtf8(u"Subject \u00fc"));
  EXPECT_EQ(ReadFile(dir + "\\to.txt"), "support@corvane.com");
}

// The rules of the screens over the real objects, on a fake disk.
class AccountOverTls : public ::testing::Test, public testkit::FrameFixture {
 protected:
  AccountOverTls() : secure(app) {
    fake.fs.AddFolders(app.CommonFolder());
    app.secureStore = &secure;
    app.BacksetFilePath = Common(u"BacksetData.txt");
    fake.Get().network = &net;
    frame::WriteSetting(app, u"AccountServer", Url("QV_TRUSTED_URL"));
    frame::WriteSetting(app, u"FeedbackServer", Url("QV_TRUSTED_URL"));
    platform::TextFile::WriteLines(fake.fs, app.BacksetFilePath,
                                   {u"Docs\u0008C:\\docs", u"Mail\u0008C:\\mail"});
  }
  platform::Win32NetworkObjects net;
  account::SecureValueStore secure;
  kit::ScriptedUi ui;
};

TEST_F(AccountOverTls, GoodAccountStoresTheCutPasswordAndRefusalsSayWhy) {
  ui.Queue({kit::ScriptedUi::Answer::Yes(), kit::ScriptedUi::Answer::Ok()});
  EXPECT_EQ(account::ApplyPassword(app, ui, u"goodone", u"Right#Pass1234567", {}),
            account::ApplyOutcome::Updated);
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"goodone");
  EXPECT_TRUE(fake.fs.FileExists(Common(u"goodone\\goodone.txt")));
  EXPECT_EQ(frame::ReadSetting(app, u"goodone", true), u"Right#Pass123456");

  ui.Queue({kit::ScriptedUi::Answer::Yes(), kit::ScriptedUi::Answer::Ok(),
            kit::ScriptedUi::Answer::Yes(), kit::ScriptedUi::Answer::Ok()});
  EXPECT_EQ(account::ApplyPassword(app, ui, u"gone", u"pw", {}), account::ApplyOutcome::Refused);
  EXPECT_EQ(account::ApplyPassword(app, ui, u"lapsed", u"pw", {}), account::ApplyOutcome::Refused);
  ASSERT_EQ(ui.Questions().size(), 6u);
  EXPECT_EQ(ui.Questions()[3].text,
            u"Unable to connect to Corvane. Reason : account 'gone' has been canceled.");
  EXPECT_EQ(ui.Questions()[5].text,
            u"Unable to connect to Corvane. Reason : account 'lapsed' has expired.");
}

TEST_F(AccountOverTls, FeedbackReportArrivesWithTheTailsInOrderAndNoPassword) {
  frame::WriteSetting(app, u"UserName", u"goodone");
  frame::WriteSetting(app, u"goodone", u"Right#Pass123456", true);
  std::vector<Text> lines;
  for (int i = 1; i <= 3000; ++i) lines.push_back(u"service line " + base::FromNumber(i));
  lines.push_back(u"typed Right#Pass123456 into the wrong box");
  platform::TextFile::WriteLines(fake.fs, Common(u"QVWServiceLog.txt"), lines);
  platform::TextFile::WriteLines(fake.fs, Common(u"TraceFile.txt"), {u"trace a", u"trace b"});
  account::ReportFields fields{u"goodone", u"me@example.com", u"",
                               u"Corvane for Windows user feedback", u"first line\r\nsecond line"};
  EXPECT_EQ(account::SendReport(app, ui, fields, {}), account::SendOutcome::Sent);
  const std::string spool = Env("QV_SPOOL");
  int n = 1;
  while (!ReadFile(spool + "\\report-" + std::to_string(n + 1) + "\\body.txt").empty()) ++n;
  const std::string body = ReadFile(spool + "\\report-" + std::to_string(n) + "\\body.txt");
  EXPECT_FALSE(Contains(body, "Right#Pass123456"));
  EXPECT_FALSE(Contains(body, "Right%23Pass123456"));
  EXPECT_TRUE(Contains(body, "first%20line\nsecond%20line\n"));
  const auto service = body.find("----------CorvaneServiceLog-------------");
  const auto last = body.find("service line 3000\n");
  const auto trace = body.find("----------CorvaneTraceFile--------------\r\ntrace a\ntrace b\n");
  ASSERT_NE(service, std::string::npos);
  ASSERT_NE(last, std::string::npos);
  ASSERT_NE(trace, std::string::npos);
  EXPECT_LT(service, last);
  EXPECT_LT(last, trace);
  EXPECT_FALSE(Contains(body, "service line 1\n"));
  EXPECT_TRUE(Contains(body, "Release date : 02/08/2013"));
}

}  // namespace
