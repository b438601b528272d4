#pragma once
// The Session Log screen: every past session, newest first, 50 to a page, each opened
// with the system's viewer; those that bear a check mark deleted. The pager and the
// list's rules are in SessionPager, the files in SessionFiles; see docs/sessions.md.
#include <vector>

#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Ui.h"
#include "sessions/SessionFiles.h"
#include "sessions/SessionPager.h"

namespace sessions {

inline constexpr char16_t kSessionLogTopic[] = u"QVWINHelp.chm::/Main_Window/Menu_Bar/Log.htm";
inline constexpr char16_t kNothingToView[] = u"There is no item to view.";
inline constexpr char16_t kSelectToView[] = u"Select an item to view its details.";
inline constexpr char16_t kSelectToDelete[] = u"Select the item(s) that you want to delete.";

// Shows the Session Log, not modally: the one screen of the program, loaded at its
// first page when it was not up, brought up as it stands when it was.
void ShowSessionLog(frame::AppState& app, kit::Ui& ui);

class frmSessionLog : public kit::Form {
 public:
  frmSessionLog(frame::AppState& app, kit::Ui& ui, SessionFilter filter = {});

  // The design's public operations.
  void ListSessionFiles();
  void FindSessionFiles(int nStartIdx, int nEndIdx);

  // The handlers, under the design's names; the constructor binds them once.
  void cmdView_Click();
  void cmdDelete_Click();
  void LstSessionLogView_ColumnClick(int column);
  void LstSessionLogView_DblClick();
  void LstSessionLogView_ItemCheck(kit::ListItem& item);
  void chkSelectAll_Click();
  void cmdCloseSessionLog_Click();
  void lblNext_Click();
  void lblBack_Click();
  void lblHelp_Click();

  // The model of the pages: every listed name, in display order.
  std::vector<Text> EnumSessionFileList;
  SessionPager pager;
  bool bSelectAllActive = true;

  // The layout, in twips on the 675 x 520 pixel background "bg_auto".
  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 10125, 510}};
  kit::Label lblTitle{*this, u"lblTitle", {240, 120, 6000, 300}, u"Session Log"};
  kit::Picture lblHelp{*this, u"lblHelp", {9420, 135, 240, 240}, u"qv_small_help"};
  kit::Picture lblClose{*this, u"lblClose", {9720, 135, 240, 240}, u"qv_small_close"};
  kit::Picture picTitleinfo{*this, u"picTitleinfo", {0, 510, 10125, 870}};
  kit::Picture imgTitleinfo{picTitleinfo, u"imgTitleinfo", {240, 195, 480, 480}, u"qv_logs"};
  kit::Label lblTitleInfo{
      picTitleinfo,
      u"lblTitleInfo",
      {900, 180, 9000, 510},
      u"The logs of your backup and restore sessions, newest first. Check the ones to delete."};
  kit::CheckBox chkSelectAll{*this, u"chkSelectAll", {240, 1530, 2400, 300}, u"&Select All"};
  kit::Label lblDispItems{*this, u"lblDispItems", {5040, 1575, 3900, 255}};
  kit::Picture lblBack{*this, u"lblBack", {9060, 1530, 300, 300}, u"back_dis"};
  kit::Picture lblNext{*this, u"lblNext", {9540, 1530, 300, 300}, u"next_reg"};
  kit::ListView LstSessionLogView{*this, u"LstSessionLogView", {240, 1920, 9645, 4980}};
  kit::CheckBox chkCancelCheckChange{*this, u"chkCancelCheckChange", {240, 7020, 200, 200}};
  kit::PictureButton cmdView{*this, u"cmdView", {5340, 7140, 1350, 345}, u"&View Details"};
  kit::PictureButton cmdDelete{*this, u"cmdDelete", {6930, 7140, 1350, 345}, u"&Delete Log"};
  kit::PictureButton cmdCloseSessionLog{
      *this, u"cmdCloseSessionLog", {8520, 7140, 1350, 345}, u"&Close"};

 protected:
  void Form_Load() override;
  void Form_Unload(int& cancel) override;

 private:
  // Steps 1 to 6 of the first page.
  void LoadFirstPage();
  // Step 7: the buttons' skin by the count (and on the delete path their state too).
  void SetButtonsFor(bool afterDelete);
  void Apply(const PageStep& step);
  int Count() const { return static_cast<int>(EnumSessionFileList.size()); }

  frame::AppState& app_;
  kit::Ui& ui_;
  SessionFilter filter_;
};

}  // namespace sessions
