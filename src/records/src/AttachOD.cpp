// The "Attach/detach OD" dialog model.
#include "records/AttachOD.h"

#include <memory>

#include "grid/ColumnTraitEdit.h"
#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "platform/Text.h"
#include "resources/StringTable.h"

namespace zarvel {
namespace {

using platform::DialogControl;
using platform::DialogRect;
using platform::DialogSize;
using platform::OdType;

// What outlives the dialog while the module stays loaded.
struct Remembered {
  std::wstring lastODTableName;
  DialogSize size{400, 300};
};

Remembered& remembered() {
  static Remembered values;
  return values;
}

GridStyle singleSelect() {
  GridStyle style;
  style.singleSelect = true;
  return style;
}

// A default as the dialog shows it: reals with the six decimals of "%lf",
// not in the text form of the other commands.
std::wstring defaultText(const platform::OdValue& value) {
  switch (value.type()) {
    case OdType::Integer:
      return platform::format(L"%i", value.asInt());
    case OdType::Real:
      return platform::format(L"%lf", value.asReal());
    case OdType::Character:
      return value.asText();
    case OdType::Point: {
      const platform::Point3d p = value.asPoint();
      return platform::format(L"%lf,%lf,%lf", p.x, p.y, p.z);
    }
    case OdType::Unknown:
      break;
  }
  return std::wstring();
}

// What a cell gives through the dialog's buffer of 256 characters.
std::wstring cellText(const DataGrid& grid, int row, int column) {
  constexpr std::size_t kBufferLength = 255;
  return grid.GetItemText(row, column).substr(0, kBufferLength);
}

}  // namespace

std::vector<platform::OdValue> defaultValuesOfTable(platform::OdContainer& container,
                                                    const std::wstring& tableName) {
  platform::Drawing& drawing = port().drawing();
  const ObjectId point = drawing.addPoint(platform::Point3d{});
  attachDefaultRecord(container, tableName, point);
  std::vector<platform::OdValue> values;
  for (const platform::OdRecord& record : recordsOfEntity(container, point)) {
    values.insert(values.end(), record.values().begin(), record.values().end());
  }
  // Nothing is to be done about a scratch point that stays: it is erased on
  // the way that made it, and a host that made none has nothing to erase.
  platform::ignoreStatus(drawing.eraseEntity(point));
  return values;
}

AttachOD::AttachOD()
    : platform::DialogModel(loadString(kDlgAttachDetachTitle)), grid(singleSelect()) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), false, false));
  addControl(DialogControl::gridOf(kIdGrid, loadString(kMsgValueHeader), grid));
  addControl(DialogControl::button(kIdAttach, loadString(kDlgAttach), true, true));
  addControl(DialogControl::button(kIdDetach, loadString(kDlgDetach), true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
  grid.InsertColumn(0, loadString(kMsgFieldHeader));
  grid.InsertColumnTrait(1, loadString(kMsgValueHeader), Align::Left, kDefaultColumnWidth, -1,
                         std::make_unique<ColumnTraitEdit>());
  onSize(remembered().size);
}

void AttachOD::onInit() {
  DialogControl& list = control(kIdTableList);
  std::vector<std::wstring> names;
  // In the platform's order, as the list box takes them unsorted.
  for (std::wstring& name : port().project().tableNames(platform::kAllTableKinds)) {
    if (isUserTable(name)) names.push_back(std::move(name));
  }
  list.setItems(std::move(names));
  std::wstring& last = remembered().lastODTableName;
  for (std::size_t i = 0; i < list.items.size(); ++i) {
    if (list.items[i] == last) {
      list.selected[i] = true;
      break;
    }
  }
  if (list.items.empty()) return;
  // A drawing without tables keeps the name chosen in another, so that the
  // next run there comes up with it.
  if (list.selectedCount() == 0) {
    list.selected[0] = true;
    last = list.items[0];
  }
  refillGrid();
}

void AttachOD::onChange(int controlId) {
  if (controlId == kIdTableList) refillGrid();
}

void AttachOD::refillGrid() {
  const DialogControl& list = control(kIdTableList);
  std::wstring& last = remembered().lastODTableName;
  int chosen = -1;
  for (std::size_t i = 0; i < list.selected.size() && chosen < 0; ++i) {
    if (list.selected[i]) chosen = static_cast<int>(i);
  }
  if (chosen < 0) {
    last.clear();
    return;
  }
  last = list.items[static_cast<std::size_t>(chosen)];
  platform::OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdTable> table = container.getTable(last);
  const platform::OdTableDef definition = table ? table->definition() : platform::OdTableDef();
  grid.DeleteAllItems();
  const std::vector<platform::OdValue> defaults = defaultValuesOfTable(container, last);
  for (int i = 0; i < definition.count(); ++i) {
    const int row = grid.InsertItem(i, definition.column(i).name);
    const std::size_t index = static_cast<std::size_t>(i);
    grid.SetItemText(row, 1, index < defaults.size() ? defaultText(defaults[index]) : L"");
  }
}

void AttachOD::readRows() {
  fieldNames.clear();
  fieldValues.clear();
  for (int row = 0; row < grid.GetItemCount(); ++row) {
    fieldNames.push_back(cellText(grid, row, 0));
    fieldValues.push_back(cellText(grid, row, 1));
  }
}

bool AttachOD::onButton(int buttonId) {
  if (buttonId == kIdAttach) mode = kModeAttach;
  if (buttonId == kIdDetach) mode = kModeDetach;
  const bool closes = platform::DialogModel::onButton(buttonId);
  if (closes) readRows();
  return closes;
}

void AttachOD::onSize(DialogSize size) {
  platform::DialogModel::onSize(size);
  remembered().size = size;
  placeControls();
}

void AttachOD::placeControls() {
  const int w = size().width;
  const int h = size().height;
  control(kIdTableList).rect = DialogRect{5, 5, 200, h - 37};
  control(kIdGrid).rect = DialogRect{210, 5, w - 215, h - 37};
  control(kIdAttach).rect = DialogRect{w / 2 - 192, h - 27, 125, 22};
  control(kIdDetach).rect = DialogRect{w / 2 - 62, h - 27, 125, 22};
  control(platform::kIdCancel).rect = DialogRect{w / 2 + 67, h - 27, 125, 22};
  for (int column = 0; column < 2; ++column) grid.SetColumnWidth(column, (w - 215) / 2 - 4);
}

const std::wstring& AttachOD::lastODTableName() {
  return remembered().lastODTableName;
}

void AttachOD::forgetRemembered() {
  remembered() = Remembered();
}

}  // namespace zarvel
