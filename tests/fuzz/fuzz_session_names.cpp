// Any session file names (split at U+000A) through the listing, the pages, view and delete.

#include "FuzzInput.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "sessions/SessionFiles.h"
#include "sessions/SessionPager.h"
#include "testkit/SessionInsertion.h"

namespace {

using base::Text;

const Text kFolder = u"C:\\QV\\QVCOMMON\\Session";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  Text units;
  for (std::size_t i = 0; i + 1 < size; i += 2)
    units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));

  fuzz::Monitor fx;
  frame::AppState& app = fx.app;
  auto& fake = fx.fake;
  fake.fs.AddFolders(kFolder);
  std::vector<Text> names;
  for (const Text& name : base::Split(units, u"\n")) {
    // What a folder can hold: a name, once, without a separator of paths in it.
    if (name.empty() || name.find(u'\\') != Text::npos || name.find(u'/') != Text::npos) continue;
    if (fake.fs.FileExists(kFolder + u"\\" + name)) continue;
    fake.fs.PutFile(kFolder + u"\\" + name, "x");
    names.push_back(name);
  }

  std::vector<sessions::SessionEntry> walked = sessions::WalkSessionFolder(app, {});
  const std::vector<Text> listed = sessions::NewestFirst(walked);
  FUZZ_CHECK(listed == testkit::InsertionNewestFirst(walked));
  FUZZ_CHECK(listed.size() <= names.size());

  kit::Form holder(u"frmSessionLog");
  kit::ListView list(holder, u"LstSessionLogView", {});
  sessions::SetUpSessionList(list);
  sessions::SessionPager pager;
  const int count = static_cast<int>(listed.size());
  sessions::ShowPage(app, list, listed, pager.Load(count));
  FUZZ_CHECK(list.Count() <= sessions::SessionPager::kPageSize);
  for (int i = 1; i <= list.Count(); ++i) sessions::GetSessionFileSelected_View(app, list, i);
  // Delete every row: each file that goes is the one its row's name gives back.
  for (int i = list.Count(); i >= 1; --i) {
    const Text target = sessions::SessionFileNameOf(
        list.Item(i).SubItem(2), list.Item(i).SubItem(1), sessions::NameFor::Delete);
    std::vector<Text> before;
    for (const Text& n : names)
      if (fake.fs.FileExists(kFolder + u"\\" + n)) before.push_back(n);
    list.Item(i).SetChecked(true);
    FUZZ_CHECK(sessions::GetSessionFileSelected_Delete(app, list, i));
    for (const Text& n : before) {
      if (!fake.fs.FileExists(kFolder + u"\\" + n)) FUZZ_CHECK(base::EqualsNoCase(n, target));
    }
  }
  FUZZ_CHECK(list.Count() == 0);
  while (pager.NextStart < count + sessions::SessionPager::kPageSize)
    sessions::ShowPage(app, list, listed, pager.Next(count));
  return 0;
}
