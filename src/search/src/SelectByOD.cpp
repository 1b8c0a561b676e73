// The value search's dialog model.
#include "search/SelectByOD.h"

#include <memory>

#include "grid/ColumnTraitEdit.h"
#include "oddata/OdAccess.h"
#include "resources/StringTable.h"
#include "search/ValueSearch.h"

namespace zarvel {
namespace {

using platform::DialogControl;
using platform::DialogRect;
using platform::DialogSize;

// What outlives the dialog while the module stays loaded.
struct Remembered {
  DialogSize size{800, 300};
  bool extended = true;
};

Remembered& remembered() {
  static Remembered values;
  return values;
}

GridStyle multiSelect() {
  GridStyle style;
  style.singleSelect = false;
  return style;
}

DialogControl checkBox(int id, std::wstring label) {
  DialogControl c;
  c.id = id;
  c.kind = platform::ControlKind::CheckBox;
  c.label = std::move(label);
  return c;
}

}  // namespace

SelectByOD::SelectByOD(std::vector<std::wstring> tables, bool showExtended)
    : platform::DialogModel(loadString(kDlgFindSpecificValuesTitle)),
      tables_(std::move(tables)),
      showExtended_(showExtended),
      tablesList_(multiSelect()) {
  tablesList_.InsertColumn(0, L"");
  valuesGrid_.InsertColumn(0, loadString(kMsgFieldHeader));
  valuesGrid_.InsertColumnTrait(1, loadString(kMsgValueHeader), Align::Left, kDefaultColumnWidth,
                                -1, std::make_unique<ColumnTraitEdit>());
  tablesList_.SetListener(this);

  addControl(DialogControl::gridOf(kIdTableList, loadString(kDlgTablesLabel), tablesList_));
  addControl(DialogControl::gridOf(kIdValuesGrid, loadString(kMsgValueHeader), valuesGrid_));
  addControl(checkBox(kIdExtended, loadString(kDlgExtendedConditions)));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
  onSize(remembered().size);
}

void SelectByOD::onInit() {
  tablesList_.DeleteAllItems();
  for (const std::wstring& table : tables_) {
    if (isUserTable(table)) tablesList_.InsertItem(tablesList_.GetItemCount(), table);
  }
  // The list keeps its lines in order, ignoring case, as a sorted list does.
  tablesList_.SortColumn(0, true);
  DialogControl& box = control(kIdExtended);
  box.visible = showExtended_;
  box.checked = remembered().extended;
}

void SelectByOD::OnSelectionChanged(DataGrid& /*grid*/) {
  valuesGrid_.DeleteAllItems();
  std::vector<std::wstring> chosen;
  for (int row : tablesList_.GetSelectedRows()) chosen.push_back(tablesList_.GetItemText(row, 0));
  for (const std::wstring& field : commonFields(chosen)) {
    const int row = valuesGrid_.InsertItem(valuesGrid_.GetItemCount(), field);
    valuesGrid_.SetItemText(row, 1, L"*");
  }
}

bool SelectByOD::onButton(int buttonId) {
  if (buttonId != platform::kIdOk) return platform::DialogModel::onButton(buttonId);
  chosenTables_.clear();
  for (int row : tablesList_.GetSelectedRows()) {
    chosenTables_.push_back(tablesList_.GetItemText(row, 0));
  }
  conditions_.clear();
  for (int row = 0; row < valuesGrid_.GetItemCount(); ++row) {
    conditions_.emplace_back(valuesGrid_.GetItemText(row, 0), valuesGrid_.GetItemText(row, 1));
  }
  remembered().extended = control(kIdExtended).checked;
  return true;
}

void SelectByOD::onSize(DialogSize size) {
  platform::DialogModel::onSize(size);
  remembered().size = size;
  placeControls();
}

void SelectByOD::placeControls() {
  const int w = size().width;
  const int h = size().height;
  control(kIdTableList).rect = DialogRect{5, 5, 200, h - 37};
  control(kIdValuesGrid).rect = DialogRect{210, 5, w - 215, h - 37};
  control(platform::kIdOk).rect = DialogRect{w / 2 - 127, h - 27, 125, 22};
  control(platform::kIdCancel).rect = DialogRect{w / 2 + 2, h - 27, 125, 22};
  control(kIdExtended).rect = DialogRect{5, h - 27, 125, 22};
  tablesList_.SetColumnWidth(0, 200);
  // The field and its condition share the grid's width.
  for (int column = 0; column < 2; ++column) valuesGrid_.SetColumnWidth(column, (w - 215) / 2);
}

bool SelectByOD::extended() {
  return remembered().extended;
}

void SelectByOD::forgetRemembered() {
  remembered() = Remembered();
}

}  // namespace zarvel
