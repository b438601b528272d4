// How a control is told to the host: what it shows and how it behaves, as the host
// draws it. Kept apart from the host's bookkeeping of windows and events.
#include <functional>

#include "kit/Controls.h"
#include "kit/FormHost.h"
#include "kit/ListView.h"

namespace kit {

platform::UiRect ToRect(const Layout& l) { return {l.left, l.top, l.width, l.height}; }

bool FormHost::Rendered(ControlKind kind) {
  switch (kind) {
    case ControlKind::Label:
    case ControlKind::Picture:
    case ControlKind::PictureButton:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::TextBox:
    case ControlKind::ListView:
    case ControlKind::ProgressBar:
    case ControlKind::DatePicker:
    case ControlKind::ComboBox: return true;
    default: return false;
  }
}

platform::UiControl FormHost::Describe(const Control& c) { return Describe(c, {}); }

platform::UiControl FormHost::Describe(const Control& c, const std::function<void()>& meanwhile) {
  platform::UiControl d;
  d.name = c.FullName();
  d.role = static_cast<platform::UiRole>(static_cast<int>(c.Role()));
  d.tabStop = c.TabStop();
  d.rect = ToRect(c.GetLayout());
  d.visible = c.Visible();
  d.enabled = c.Enabled();
  d.caption = c.Caption();
  d.toolTip = c.ToolTipText();
  d.pointer = static_cast<platform::UiPointer>(static_cast<int>(c.ControlPointer()));
  d.foreColor = c.ForeColor();
  d.backColor = c.BackColor();
  d.font = {c.FontSize(), c.FontBold()};
  switch (c.Kind()) {
    case ControlKind::Label: {
      const auto& l = static_cast<const Label&>(c);
      d.kind = platform::UiKind::Label;
      d.align = static_cast<platform::UiAlign>(static_cast<int>(l.TextAlignment()));
      d.wordWrap = l.WordWrap();
      break;
    }
    case ControlKind::Picture:
      d.kind = platform::UiKind::Picture;
      d.pictureKey = static_cast<const Picture&>(c).PictureKey();
      break;
    case ControlKind::PictureButton: {
      const auto& b = static_cast<const PictureButton&>(c);
      d.kind = platform::UiKind::PictureButton;
      d.pictureKey = b.PictureKey();
      d.skinState = b.SkinState();
      // The button reads as its label: that is its text for a screen reader.
      d.caption = b.Lbl().Caption();
      break;
    }
    case ControlKind::CheckBox:
      d.kind = platform::UiKind::CheckBox;
      d.check = static_cast<const CheckBox&>(c).Value();
      break;
    case ControlKind::OptionButton:
      d.kind = platform::UiKind::OptionButton;
      d.check = static_cast<const OptionButton&>(c).Value() ? 1 : 0;
      break;
    case ControlKind::TextBox: {
      const auto& t = static_cast<const TextBox&>(c);
      d.kind = platform::UiKind::TextBox;
      d.maxLength = t.MaxLength();
      d.passwordChar = t.PasswordChar();
      d.locked = t.Locked();
      d.multiLine = t.MultiLine();
      break;
    }
    case ControlKind::ListView: {
      const auto& lv = static_cast<const ListView&>(c);
      d.kind = platform::UiKind::ListView;
      for (const ListColumn& col : lv.Columns()) d.columns.push_back({col.caption, col.width});
      if (lv.OwnerRows()) {
        // The rows stay with their owner; the host asks for a cell as it draws it.
        d.rowSource = lv.RowSource();
        d.rowCount = lv.Count();
        d.selectedRow = lv.SelectedIndex();
      } else {
        d.rows.reserve(static_cast<std::size_t>(lv.Count()));
      }
      for (int i = 1; !lv.OwnerRows() && i <= lv.Count(); ++i) {
        if (meanwhile && i % 4096 == 0) meanwhile();
        const ListItem& item = lv.Item(i);
        platform::UiListRow row;
        row.text = item.GetText();
        for (int s = 1; s <= item.SubItemCount(); ++s) row.subItems.push_back(item.SubItem(s));
        row.checked = item.Checked();
        row.selected = item.Selected();
        row.foreColor = item.ForeColor();
        row.image = item.IconKey();
        d.rows.push_back(std::move(row));
      }
      d.checkboxes = lv.Checkboxes() && !lv.OwnerRows();
      d.fullRowSelect = lv.FullRowSelect();
      d.hideSelection = lv.HideSelection();
      d.visibleRow = lv.VisibleRow();
      break;
    }
    case ControlKind::ProgressBar: {
      const auto& p = static_cast<const ProgressBar&>(c);
      d.kind = platform::UiKind::ProgressBar;
      d.min = p.Min();
      d.max = p.Max();
      d.value = p.Value();
      d.barColor = p.BarColor();
      break;
    }
    case ControlKind::DatePicker: {
      const auto& p = static_cast<const DatePicker&>(c);
      d.kind = platform::UiKind::DatePicker;
      d.date = p.Value();
      d.dateFormat = static_cast<platform::UiDateFormat>(static_cast<int>(p.Format()));
      d.customFormat = p.CustomFormat();
      d.upDown = p.UpDown();
      break;
    }
    case ControlKind::ComboBox: {
      const auto& cb = static_cast<const ComboBox&>(c);
      d.kind = platform::UiKind::ComboBox;
      d.items = cb.Items();
      d.listIndex = cb.ListIndex();
      break;
    }
    default: break;
  }
  return d;
}

}  // namespace kit
