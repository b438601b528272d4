// The Windows UI host: what a list view and a combo box show (columns, rows, their
// check marks, selection and small pictures; the entries of a combo box).
#include "platform/win32/Win32UiRecords.h"

#include <algorithm>
#include <cmath>

namespace platform {

using win32::Bitmap;
using win32::Pictures;
using win32::Wide;

namespace {

wchar_t* Mutable(const Text& text) { return const_cast<wchar_t*>(Wide(text)); }

}  // namespace

void Win32UiHost::ApplyComboItems(ControlRec& c) {
  if (c.shownItems == c.state.items) return;
  HWND hwnd = c.hwnd.Get();
  SendMessageW(hwnd, CB_RESETCONTENT, 0, 0);
  for (const Text& item : c.state.items)
    SendMessageW(hwnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item)));
  c.shownItems = c.state.items;
}

int Win32UiHost::RowImage(ControlRec& c, const Text& key) {
  if (key.empty()) return I_IMAGENONE;
  auto known = std::find(c.rowImageKeys.begin(), c.rowImageKeys.end(), key);
  if (known != c.rowImageKeys.end()) return static_cast<int>(known - c.rowImageKeys.begin());
  const int side = win32::MetricForDpi(SM_CXSMICON, DpiOf(c));
  if (!c.rowImages) {
    c.rowImages.Reset(ImageList_Create(side, side, ILC_COLOR32, 4, 4));
    if (!c.rowImages) return I_IMAGENONE;
    ListView_SetImageList(c.hwnd.Get(), c.rowImages.Get(), LVSIL_SMALL);
  }
  const Bitmap* picture = pictures_->Find(key, side);
  // The image list takes straight alpha: the picture is made so, at the list's size;
  // a missing one shows as missing pictures do everywhere.
  auto straight = picture != nullptr ? Pictures::Straight(*picture, side, side)
                                     : Pictures::Placeholder(side, side);
  if (!straight) return I_IMAGENONE;
  const int index = ImageList_Add(c.rowImages.Get(), straight.Get(), nullptr);
  if (index < 0) return I_IMAGENONE;
  c.rowImageKeys.push_back(key);
  return index;
}

void Win32UiHost::FillDisplayInfo(ControlRec& c, LVITEMW& item) {
  const UiControl& s = c.state;
  const int count = s.rowSource ? s.rowCount : static_cast<int>(s.rows.size());
  if (item.iItem < 0 || item.iItem >= count) return;
  const UiListRow* row = s.rowSource ? nullptr : &s.rows[static_cast<std::size_t>(item.iItem)];
  if ((item.mask & LVIF_TEXT) != 0 && item.pszText != nullptr && item.cchTextMax > 0) {
    const int column = item.iSubItem < 0 ? 0 : item.iSubItem;
    // A list whose rows stay with the program is asked for the one cell it draws.
    Text asked;
    const std::size_t sub = static_cast<std::size_t>(column);
    const Text* text = nullptr;
    if (row == nullptr) {
      asked = s.rowSource->Cell(item.iItem, column);
      text = &asked;
    } else {
      text = sub == 0                         ? &row->text
             : sub - 1 < row->subItems.size() ? &row->subItems[sub - 1]
                                              : nullptr;
    }
    const std::size_t n =
        text == nullptr ? 0 : std::min(text->size(), static_cast<std::size_t>(item.cchTextMax - 1));
    if (n > 0) std::copy_n(Wide(*text), n, item.pszText);
    item.pszText[n] = L'\0';
  }
  if ((item.mask & LVIF_IMAGE) != 0 && item.iSubItem == 0)
    item.iImage = row == nullptr ? I_IMAGENONE : RowImage(c, row->image);
}

// A list of the rows' owner: the count, a repaint of what shows, and the selection.
void Win32UiHost::ApplyOwnedRows(ControlRec& c) {
  const UiControl& s = c.state;
  HWND hwnd = c.hwnd.Get();
  const int count = s.rowSource ? s.rowCount : static_cast<int>(s.rows.size());
  if (!c.listBuilt || ListView_GetItemCount(hwnd) != count) {
    ListView_SetItemCountEx(hwnd, count, LVSICF_NOSCROLL);
    c.shownSelected = -1;
    c.listBuilt = true;
  }
  int selected = s.rowSource ? s.selectedRow - 1 : -1;
  for (int i = 0; !s.rowSource && i < count && selected < 0; ++i)
    if (s.rows[static_cast<std::size_t>(i)].selected) selected = i;
  if (selected >= count) selected = -1;
  if (selected != c.shownSelected) {
    ListView_SetItemState(hwnd, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (selected >= 0) {
      ListView_SetItemState(hwnd, selected, LVIS_SELECTED | LVIS_FOCUSED,
                            LVIS_SELECTED | LVIS_FOCUSED);
      ListView_EnsureVisible(hwnd, selected, FALSE);
    }
    c.shownSelected = selected;
  }
  InvalidateRect(hwnd, nullptr, FALSE);
}

void Win32UiHost::ApplyList(ControlRec& c, bool force) {
  const UiControl& s = c.state;
  HWND hwnd = c.hwnd.Get();
  ++c.updating;
  if (force || s.columns != c.shownColumns) {
    ListView_DeleteAllItems(hwnd);
    while (ListView_DeleteColumn(hwnd, 0)) {
    }
    for (std::size_t i = 0; i < s.columns.size(); ++i) {
      LVCOLUMNW col{};
      col.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
      col.pszText = Mutable(s.columns[i].caption);
      col.cx = static_cast<int>(std::lround(s.columns[i].width * DpiOf(c) / 1440.0));
      col.iSubItem = static_cast<int>(i);
      ListView_InsertColumn(hwnd, static_cast<int>(i), &col);
    }
    c.shownColumns = s.columns;
    c.shownRows.clear();
    c.listBuilt = false;
  }
  if ((c.createdStyle & LVS_OWNERDATA) != 0) {
    ApplyOwnedRows(c);
    --c.updating;
    return;
  }
  const int columns = static_cast<int>(s.columns.size());
  auto setCells = [&](int i, const UiListRow& row, const UiListRow* before) {
    if (before == nullptr || before->text != row.text) {
      ListView_SetItemText(hwnd, i, 0, Mutable(row.text));
    }
    if (before == nullptr || before->image != row.image) {
      LVITEMW image{};
      image.mask = LVIF_IMAGE;
      image.iItem = i;
      image.iImage = RowImage(c, row.image);
      ListView_SetItem(hwnd, &image);
    }
    for (int sub = 1; sub < columns; ++sub) {
      const Text& now = static_cast<std::size_t>(sub - 1) < row.subItems.size()
                            ? row.subItems[static_cast<std::size_t>(sub - 1)]
                            : Text();
      const Text* was =
          before != nullptr && static_cast<std::size_t>(sub - 1) < before->subItems.size()
              ? &before->subItems[static_cast<std::size_t>(sub - 1)]
              : nullptr;
      if (before == nullptr || was == nullptr || *was != now) {
        ListView_SetItemText(hwnd, i, sub, Mutable(now));
      }
    }
    if (s.checkboxes && (before == nullptr || before->checked != row.checked)) {
      ListView_SetCheckState(hwnd, i, row.checked ? TRUE : FALSE);
    }
    if (before == nullptr || before->selected != row.selected) {
      ListView_SetItemState(hwnd, i, row.selected ? LVIS_SELECTED | LVIS_FOCUSED : 0,
                            LVIS_SELECTED | LVIS_FOCUSED);
      if (row.selected) ListView_EnsureVisible(hwnd, i, FALSE);
    }
  };
  if (!c.listBuilt || s.rows.size() != c.shownRows.size()) {
    SendMessageW(hwnd, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(hwnd);
    for (std::size_t i = 0; i < s.rows.size(); ++i) {
      LVITEMW item{};
      item.mask = LVIF_TEXT | LVIF_IMAGE;
      item.iItem = static_cast<int>(i);
      item.pszText = Mutable(s.rows[i].text);
      item.iImage = RowImage(c, s.rows[i].image);
      ListView_InsertItem(hwnd, &item);
      setCells(static_cast<int>(i), s.rows[i], nullptr);
    }
    SendMessageW(hwnd, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(hwnd, nullptr, TRUE);
    c.listBuilt = true;
  } else {
    for (std::size_t i = 0; i < s.rows.size(); ++i) {
      if (s.rows[i] != c.shownRows[i]) setCells(static_cast<int>(i), s.rows[i], &c.shownRows[i]);
    }
  }
  c.shownRows = s.rows;
  --c.updating;
}

}  // namespace platform
