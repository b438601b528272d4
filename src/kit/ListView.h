#pragma once
// The report-style list of the design's screens: columns, rows with sub-items, check
// marks, one selected row, and the control's own sort by a key column.
//
// Rows count from 1 as the design's texts do ("row SelectedRow", "mark row 1");
// sub-items count from 1 too, and a sort key of 0 means the row's text. An index
// outside the list throws std::out_of_range, which the handler's guard reports (the
// design relies on such a failure in places: "the fill fails to select it").
#include <memory>
#include <vector>

#include "kit/Control.h"

namespace platform {
class UiListSource;
}

namespace kit {

// The rows of a list that stay with their owner, for a list of very many rows (the
// screen's own model has them already): the list holds no items and asks for a cell only
// when the host draws it or a caller reads it.
class ListRows {
 public:
  virtual ~ListRows() = default;
  virtual int RowCount() const = 0;
  // The text of row `row1` (1-based) in sort-key terms: `sub` 0 the row's text, n
  // sub-item n. Asked only for rows from 1 to RowCount().
  virtual Text RowCell(int row1, int sub) const = 0;
};

class ListView;

class ListItem {
 public:
  ListItem(ListView& owner, Text text, Text key);

  // 1-based position in the list as it stands (after sorting).
  int Index() const;
  const Text& GetText() const { return text_; }
  void SetText(const Text& v);
  const Text& Key() const { return key_; }
  // Sub-item `i` (1-based); "" when it was never set.
  Text SubItem(int i) const;
  void SetSubItem(int i, const Text& v);
  int SubItemCount() const { return static_cast<int>(subItems_.size()); }
  bool Checked() const { return checked_; }
  void SetChecked(bool v);
  bool Selected() const { return selected_; }
  // Selecting a row deselects the others (one selection at a time).
  void SetSelected(bool v);
  // The row's text colour (0x00BBGGRR); kDefaultColor for the list's own.
  Color ForeColor() const { return foreColor_; }
  void SetForeColor(Color c);
  // The small picture before the row's text, by image key ("" for none): the
  // status icons of a job or session list.
  const Text& IconKey() const { return iconKey_; }
  void SetIconKey(const Text& key);
  // Scrolls the list so that the row shows (ListView::EnsureVisible).
  void EnsureVisible();
  // The text of sort key `key`: 0 the row's text, n sub-item n.
  Text SortText(int key) const;

 private:
  friend class ListView;
  ListView* owner_;
  Text text_;
  Text key_;
  std::vector<Text> subItems_;
  bool checked_ = false;
  bool selected_ = false;
  Color foreColor_ = kDefaultColor;
  Text iconKey_;
};

struct ListColumn {
  Text caption;
  double width = 0;  // twips; 0 hides the column
  bool operator==(const ListColumn&) const = default;
};

enum class SortOrder : int { Ascending = 0, Descending = 1 };

class ListView : public Control {
 public:
  ListView(Parent parent, Text name, Layout layout);

  // Columns, 1-based as the design counts them.
  void AddColumn(const Text& caption, double width);
  void ClearColumns();
  int ColumnCount() const { return static_cast<int>(columns_.size()); }
  const ListColumn& Column(int i) const;
  void SetColumnCaption(int i, const Text& caption);
  void SetColumnWidth(int i, double width);
  const std::vector<ListColumn>& Columns() const { return columns_; }

  // Rows. AddRow places the row at the end, or where the sort puts it when the list
  // is sorted. A non-empty key must be unique (std::invalid_argument otherwise).
  ListItem& AddRow(const Text& text, const Text& key = {});
  void RemoveRow(int index1);
  void ClearRows();
  int Count() const {
    return owner_ != nullptr ? owner_->RowCount() : static_cast<int>(rows_.size());
  }
  ListItem& Item(int index1);
  const ListItem& Item(int index1) const;
  ListItem* FindKey(TextView key);
  // Asks the list to scroll, as little as needed, so that row `index1` shows: the
  // design asks for it where a row must be seen, apart from selecting it.
  void EnsureVisible(int index1);
  // The row last asked to be made visible; 0 for none, or once rows were removed.
  int VisibleRow() const { return visibleRow_; }
  // The selected row, or null.
  ListItem* SelectedItem() const;
  int SelectedIndex() const;  // 0 when none

  bool Checkboxes() const { return s_.checkboxes; }
  void SetCheckboxes(bool v);
  bool FullRowSelect() const { return s_.fullRowSelect; }
  void SetFullRowSelect(bool v);
  bool HideSelection() const { return s_.hideSelection; }
  void SetHideSelection(bool v);

  // The control's sort: while Sorted, rows stand ordered by the text of SortKey
  // (without regard to case, rows of equal text in their former order) in SortOrder.
  // Setting any of the three re-sorts at once.
  bool Sorted() const { return s_.sorted; }
  void SetSorted(bool v);
  int SortKey() const { return s_.sortKey; }
  void SetSortKey(int key);
  SortOrder Order() const { return s_.sortOrder; }
  void SetSortOrder(SortOrder order);

  // Input a renderer reports: a row clicked (selects it, then ItemClick), a check
  // mark toggled by the user (then ItemCheck), a column header clicked.
  void UserClickRow(int index1);
  void UserCheckRow(int index1, bool checked);
  void UserClickColumn(int column1);

  // Many changes to the rows as one: while a batch is open the list tells its renderer
  // nothing and does not sort; when the outermost batch closes it sorts once (when
  // sorted) and tells once. A fill of many rows so costs the renderer one update, not
  // one per cell. Batches nest.
  class Batch {
   public:
    explicit Batch(ListView& list) : list_(list) { ++list_.batch_; }
    ~Batch() { list_.EndBatch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

   private:
    ListView& list_;
  };

  // Rows kept by their owner instead of items (null: back to items). While set, Count()
  // is the owner's, there are no ListItems (Item() throws, SelectedItem() is null), the
  // selection is a row number, a click on a row raises RowClick instead of ItemClick,
  // and the control's sort and check marks do not apply. The owner calls RowsChanged()
  // when its rows changed, as it would change items; it must outlive the setting.
  void SetRowOwner(const ListRows* rows);
  bool OwnerRows() const { return owner_ != nullptr; }
  void RowsChanged();
  // Selects row `index1` (0: none): an item list selects the item, a list of the owner's
  // rows keeps the number. A number outside the list throws std::out_of_range.
  void SelectRow(int index1);
  // The text of a cell in either kind of list (`sub` as a sort key); a row outside the
  // list throws std::out_of_range.
  Text CellText(int index1, int sub) const;
  // What the host asks for the cells of a list of the owner's rows; null for an item list.
  std::shared_ptr<const platform::UiListSource> RowSource() const;

  ~ListView() override;
  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  class OwnerSource;
  friend class ListItem;
  void RowChanged(ListItem& item, bool affectsSort);
  void ItemsChanged();
  void EndBatch() noexcept;
  void Resort();
  int IndexOf(const ListItem& item) const;

  struct State {
    bool checkboxes = false;
    bool fullRowSelect = true;
    bool hideSelection = false;
    bool sorted = false;
    int sortKey = 0;
    SortOrder sortOrder = SortOrder::Ascending;
  } s_, design_;
  std::vector<ListColumn> columns_;
  std::vector<ListColumn> designColumns_;
  std::vector<std::unique_ptr<ListItem>> rows_;
  int visibleRow_ = 0;
  const ListRows* owner_ = nullptr;
  int ownerSelected_ = 0;
  std::shared_ptr<OwnerSource> source_;
  int batch_ = 0;
  bool batchChanged_ = false;
};

}  // namespace kit
