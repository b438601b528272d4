// Arbitrary bytes as BacksetData.txt (or, in Relative Path mode, as scheduleData.txt)
// through the fill of the Backup Now list. Beyond "no crash, no hang": the sets file is
// only read, the screen shows exactly when there are rows, and every row is a set the
// file names, once, never one of the sets Backup Now keeps to itself.
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "frame/Settings.h"
#include "jobstore/BackupSets.h"
#include "jobstore/DBaction.h"
#include "platform/TextFile.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;

Text Same(const Text& t) { return base::ToUpper(base::Trim(t)); }

bool Hidden(const Text& name) {
  const Text upper = base::ToUpper(name);
  return upper == u"AUTOEXCHANGE01" || upper == u"RESTORE ITEMSET" || upper == u"AUTOBKUPQVWIN";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t flags = data[0];
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const bool relative = (flags & 1) != 0;

  testkit::FrameFixture fx;
  fx.fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  const Text user = (flags & 2) ? Text(u" Alice ") : Text(u"alice");
  frame::WriteSetting(fx.app, u"UserName", user);
  frame::WriteSetting(fx.app, u"MIRROR", relative ? u"0" : ((flags & 4) ? u" 1 " : u""));
  fx.app.UserName = user;
  fx.app.BacksetFilePath = fx.Common(u"BacksetData.txt");
  int messages = 0;
  fx.app.Store.ShowMessage = [&](const Text&, int, int) {
    ++messages;
    return 1;
  };
  const Text file = relative ? fx.app.ScheduleFilePath : fx.app.BacksetFilePath;
  fx.fake.fs.PutFile(file, bytes);

  const jobstore::BackupNowOutcome outcome = jobstore::FillBackupNowList(fx.app);
  const auto& rows = fx.app.Store.LstBackupSet.Rows;
  FUZZ_CHECK((outcome == jobstore::BackupNowOutcome::Show) == !rows.empty());
  FUZZ_CHECK(outcome == jobstore::BackupNowOutcome::Show || messages == 1);

  if (!relative) {
    FUZZ_CHECK(fx.fake.fs.Bytes(file) == bytes);
    const std::vector<Text> lines =
        platform::TextFile::ReadLines(fx.fake.fs, file).value_or(std::vector<Text>{});
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const jobstore::BackupNowRow& row = rows[i];
      FUZZ_CHECK(!Hidden(row.Name));
      FUZZ_CHECK(row.Destination == jobstore::kDefaultDestination && row.RecordNo == u"-1");
      FUZZ_CHECK(row.UserName == frame::ReadSetting(fx.app, u"UserName"));
      for (std::size_t j = 0; j < i; ++j) FUZZ_CHECK(!base::EqualsNoCase(rows[j].Name, row.Name));
      bool named = false;
      for (const Text& line : lines) {
        const std::size_t at = line.find(u'\u0008');
        named = named || (at == Text::npos ? row.Name.empty() : line.substr(0, at) == row.Name);
      }
      FUZZ_CHECK(named);
    }
  } else {
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const jobstore::BackupNowRow& row = rows[i];
      FUZZ_CHECK(!base::IsBlank(row.Name) && Same(row.Name) != u"RESTORE ITEMSET");
      FUZZ_CHECK(Same(row.UserName) == Same(user));
      for (std::size_t j = 0; j < i; ++j)
        FUZZ_CHECK(!(Same(rows[j].Name) == Same(row.Name) &&
                     Same(rows[j].Destination) == Same(row.Destination)));
    }
  }
  return 0;
}
