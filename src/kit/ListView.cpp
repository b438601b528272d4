#include "kit/ListView.h"

#include <algorithm>
#include <stdexcept>

#include "base/Guarded.h"
#include "platform/UiProtocol.h"

namespace kit {

namespace {

// The list control compares without regard to case; ties keep their order.
int CompareNoCase(const Text& a, const Text& b) {
  Text la = base::ToLower(a);
  Text lb = base::ToLower(b);
  return la.compare(lb);
}

std::size_t Slot(int index1, std::size_t size, const char* what) {
  if (index1 < 1 || static_cast<std::size_t>(index1) > size) throw std::out_of_range(what);
  return static_cast<std::size_t>(index1 - 1);
}

}  // namespace

// ---- ListItem ----------------------------------------------------------------

ListItem::ListItem(ListView& owner, Text text, Text key)
    : owner_(&owner), text_(std::move(text)), key_(std::move(key)) {}

int ListItem::Index() const { return owner_->IndexOf(*this); }

void ListItem::SetText(const Text& v) {
  if (text_ == v) return;
  text_ = v;
  owner_->RowChanged(*this, owner_->SortKey() == 0);
}

Text ListItem::SubItem(int i) const {
  if (i < 1) throw std::out_of_range("sub-item index");
  std::size_t slot = static_cast<std::size_t>(i - 1);
  return slot < subItems_.size() ? subItems_[slot] : Text();
}

void ListItem::SetSubItem(int i, const Text& v) {
  if (i < 1) throw std::out_of_range("sub-item index");
  std::size_t slot = static_cast<std::size_t>(i - 1);
  if (slot < subItems_.size() && subItems_[slot] == v) return;
  if (slot >= subItems_.size()) subItems_.resize(slot + 1);
  subItems_[slot] = v;
  owner_->RowChanged(*this, owner_->SortKey() == i);
}

void ListItem::SetChecked(bool v) {
  if (checked_ == v) return;
  checked_ = v;
  owner_->RowChanged(*this, false);
}

void ListItem::SetSelected(bool v) {
  if (selected_ == v) return;
  if (v) {
    for (auto& row : owner_->rows_) row->selected_ = false;
  }
  selected_ = v;
  owner_->RowChanged(*this, false);
}

void ListItem::SetForeColor(Color c) {
  if (foreColor_ == c) return;
  foreColor_ = c;
  owner_->RowChanged(*this, false);
}

void ListItem::SetIconKey(const Text& key) {
  if (iconKey_ == key) return;
  iconKey_ = key;
  owner_->RowChanged(*this, false);
}

void ListItem::EnsureVisible() { owner_->EnsureVisible(Index()); }

Text ListItem::SortText(int key) const { return key == 0 ? text_ : SubItem(key); }

// ---- ListView ----------------------------------------------------------------

// What the host holds of a list of the owner's rows. The host may keep it a little
// longer than the list lives (until it destroys the window): the list lets go of it when
// it goes, and a cell is then "". The host asks while it paints, where nothing may be
// thrown: a cell that cannot be made is shown empty.
class ListView::OwnerSource : public platform::UiListSource {
 public:
  explicit OwnerSource(const ListRows* rows) : rows_(rows) {}
  void Forget() { rows_ = nullptr; }
  Text Cell(int row0, int column0) const override {
    if (rows_ == nullptr || row0 < 0 || column0 < 0 || row0 >= rows_->RowCount()) return Text();
    // Not drawn this time: the owner's own fill traced what its rows failed on.
    Text cell;
    base::IgnoreFailure([&] { cell = rows_->RowCell(row0 + 1, column0); });
    return cell;
  }

 private:
  const ListRows* rows_;
};

ListView::ListView(Parent parent, Text name, Layout layout)
    : Control(parent, ControlKind::ListView, std::move(name), -1, layout) {}

ListView::~ListView() {
  if (source_) source_->Forget();
}

void ListView::SetRowOwner(const ListRows* rows) {
  if (owner_ == rows) return;
  if (source_) source_->Forget();
  source_.reset();
  rows_.clear();
  owner_ = rows;
  ownerSelected_ = 0;
  visibleRow_ = 0;
  if (owner_ != nullptr) source_ = std::make_shared<OwnerSource>(owner_);
  ItemsChanged();
}

void ListView::RowsChanged() {
  if (owner_ == nullptr) return;
  if (ownerSelected_ > Count()) ownerSelected_ = 0;
  if (visibleRow_ > Count()) visibleRow_ = 0;
  ItemsChanged();
}

void ListView::SelectRow(int index1) {
  if (index1 != 0) Slot(index1, static_cast<std::size_t>(Count()), "row index");
  if (owner_ == nullptr) {
    if (index1 != 0) {
      Item(index1).SetSelected(true);
    } else if (ListItem* selected = SelectedItem()) {
      selected->SetSelected(false);
    }
    return;
  }
  if (ownerSelected_ == index1) return;
  ownerSelected_ = index1;
  ItemsChanged();
}

Text ListView::CellText(int index1, int sub) const {
  if (sub < 0) throw std::out_of_range("sub-item index");
  if (owner_ == nullptr) return Item(index1).SortText(sub);
  Slot(index1, static_cast<std::size_t>(Count()), "row index");
  return owner_->RowCell(index1, sub);
}

std::shared_ptr<const platform::UiListSource> ListView::RowSource() const { return source_; }

void ListView::AddColumn(const Text& caption, double width) {
  columns_.push_back({caption, width});
  ItemsChanged();
}

void ListView::ClearColumns() {
  if (columns_.empty()) return;
  columns_.clear();
  ItemsChanged();
}

const ListColumn& ListView::Column(int i) const {
  return columns_[Slot(i, columns_.size(), "column index")];
}

void ListView::SetColumnCaption(int i, const Text& caption) {
  ListColumn& c = columns_[Slot(i, columns_.size(), "column index")];
  if (c.caption == caption) return;
  c.caption = caption;
  ItemsChanged();
}

void ListView::SetColumnWidth(int i, double width) {
  ListColumn& c = columns_[Slot(i, columns_.size(), "column index")];
  if (c.width == width) return;
  c.width = width;
  ItemsChanged();
}

ListItem& ListView::AddRow(const Text& text, const Text& key) {
  if (owner_ != nullptr) throw std::logic_error("the rows are their owner's");
  if (!key.empty() && FindKey(key) != nullptr) throw std::invalid_argument("key is not unique");
  rows_.push_back(std::make_unique<ListItem>(*this, text, key));
  ListItem& item = *rows_.back();
  if (s_.sorted && batch_ == 0) Resort();
  ItemsChanged();
  return item;
}

void ListView::RemoveRow(int index1) {
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(Slot(index1, rows_.size(), "row index")));
  visibleRow_ = 0;
  ItemsChanged();
}

void ListView::ClearRows() {
  if (rows_.empty()) return;
  rows_.clear();
  visibleRow_ = 0;
  ItemsChanged();
}

void ListView::EnsureVisible(int index1) {
  Slot(index1, static_cast<std::size_t>(Count()), "row index");
  visibleRow_ = index1;
  Touch(Aspect::Scroll);
}

ListItem& ListView::Item(int index1) { return *rows_[Slot(index1, rows_.size(), "row index")]; }

const ListItem& ListView::Item(int index1) const {
  return *rows_[Slot(index1, rows_.size(), "row index")];
}

ListItem* ListView::FindKey(TextView key) {
  for (auto& row : rows_) {
    if (row->key_ == key) return row.get();
  }
  return nullptr;
}

ListItem* ListView::SelectedItem() const {
  for (const auto& row : rows_) {
    if (row->selected_) return row.get();
  }
  return nullptr;
}

int ListView::SelectedIndex() const {
  if (owner_ != nullptr) return ownerSelected_;
  ListItem* item = SelectedItem();
  return item == nullptr ? 0 : IndexOf(*item);
}

int ListView::IndexOf(const ListItem& item) const {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].get() == &item) return static_cast<int>(i + 1);
  }
  return 0;
}

void ListView::SetCheckboxes(bool v) {
  if (s_.checkboxes == v) return;
  s_.checkboxes = v;
  Touch(Aspect::Style);
}

void ListView::SetFullRowSelect(bool v) {
  if (s_.fullRowSelect == v) return;
  s_.fullRowSelect = v;
  Touch(Aspect::Style);
}

void ListView::SetHideSelection(bool v) {
  if (s_.hideSelection == v) return;
  s_.hideSelection = v;
  Touch(Aspect::Style);
}

void ListView::SetSorted(bool v) {
  s_.sorted = v;
  if (v) Resort();
  ItemsChanged();
}

void ListView::SetSortKey(int key) {
  if (key < 0) throw std::out_of_range("sort key");
  s_.sortKey = key;
  if (s_.sorted) Resort();
  ItemsChanged();
}

void ListView::SetSortOrder(SortOrder order) {
  s_.sortOrder = order;
  if (s_.sorted) Resort();
  ItemsChanged();
}

void ListView::Resort() {
  const int key = s_.sortKey;
  const bool descending = s_.sortOrder == SortOrder::Descending;
  std::stable_sort(rows_.begin(), rows_.end(), [&](const auto& a, const auto& b) {
    int c = CompareNoCase(a->SortText(key), b->SortText(key));
    return descending ? c > 0 : c < 0;
  });
}

void ListView::RowChanged(ListItem& item, bool affectsSort) {
  if (affectsSort && s_.sorted && batch_ == 0) Resort();
  ItemsChanged();
}

void ListView::ItemsChanged() {
  if (batch_ > 0) {
    batchChanged_ = true;
    return;
  }
  Touch(Aspect::Items);
}

void ListView::EndBatch() noexcept {
  if (--batch_ > 0 || !batchChanged_) return;
  batchChanged_ = false;
  // A sort that cannot get memory sorts in place, and the form catches what its
  // listener throws: nothing leaves here.
  if (s_.sorted) Resort();
  Touch(Aspect::Items);
}

void ListView::UserClickRow(int index1) {
  if (!AcceptsInput() || index1 < 1 || index1 > Count()) return;
  if (owner_ != nullptr) {
    SelectRow(index1);
    Invoke(on.RowClick, index1);
    return;
  }
  ListItem& item = Item(index1);
  item.SetSelected(true);
  Invoke(on.ItemClick, item);
}

void ListView::UserCheckRow(int index1, bool checked) {
  if (!AcceptsInput() || owner_ != nullptr || index1 < 1 || index1 > Count()) return;
  ListItem& item = Item(index1);
  item.SetChecked(checked);
  Invoke(on.ItemCheck, item);
}

void ListView::UserClickColumn(int column1) {
  if (!AcceptsInput() || column1 < 1 || column1 > ColumnCount()) return;
  Invoke(on.ColumnClick, column1);
}

void ListView::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
  designColumns_ = columns_;
}

void ListView::RestoreDesign() {
  Control::RestoreDesign();
  s_ = design_;
  columns_ = designColumns_;
  rows_.clear();
  visibleRow_ = 0;
  ownerSelected_ = 0;
}

}  // namespace kit
