// Any BacksetData.txt (or, in Relative Path mode, scheduleData.txt) through the Backup Now fill.

#include "FuzzInput.h"
#include "frame/Settings.h"
#include "jobstore/BackupSets.h"

namespace {

using base::Text;

Text Same(const Text& t) { return base::ToUpper(base::Trim(t)); }

bool Hidden(const Text& upper) {
  return upper == u"AUTOEXCHANGE01" || upper == u"RESTORE ITEMSET" || upper == u"AUTOBKUPQVWIN";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t flags = data[0];
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const bool relative = (flags & 1) != 0;

  fuzz::Monitor fx;
  fx.AddCommon();
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

  if (!relative) FUZZ_CHECK(fx.fake.fs.Bytes(file) == bytes);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    FUZZ_CHECK(relative ? Same(rows[i].Name) != u"RESTORE ITEMSET"
                        : !Hidden(base::ToUpper(rows[i].Name)));
    for (std::size_t j = 0; j < i; ++j)
      FUZZ_CHECK(relative || !base::EqualsNoCase(rows[j].Name, rows[i].Name));
  }
  return 0;
}
