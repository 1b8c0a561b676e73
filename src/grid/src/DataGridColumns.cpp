// Showing, hiding and sizing columns, and their state kept in a view
// configuration: which show, in what order, at what width.
#include <algorithm>

#include "grid/DataGrid.h"
#include "grid/ViewConfigSection.h"
#include "platform/Text.h"

namespace zarvel {
namespace {

std::wstring dataKey(int position) {
  return platform::format(L"ColumnData_%d", position);
}
std::wstring widthKey(int position) {
  return platform::format(L"ColumnWidth_%d", position);
}

}  // namespace

bool DataGrid::ShowColumn(int column, bool show) {
  if (!ValidColumn(column)) return false;
  ColumnTrait::ColumnState& state = columns_[column].trait->GetColumnState();
  if (show == state.visible) return true;
  if (show ? state.alwaysHidden : state.alwaysVisible) return false;
  EndEditing(true);
  const int position = GetColumnPosition(column);
  order_.erase(order_.begin() + position);
  if (show) {
    const int width = state.originalWidth > 0 ? state.originalWidth : kDefaultColumnWidth;
    const int at = state.originalPosition < 0
                       ? static_cast<int>(order_.size())
                       : std::min<int>(state.originalPosition, order_.size());
    order_.insert(order_.begin() + at, column);
    columns_[column].width = width;
  } else {
    state.originalPosition = position;
    state.originalWidth = columns_[column].width;
    order_.insert(order_.begin(), column);
    columns_[column].width = 0;
    if (focusCell_ == column) focusCell_ = -1;
  }
  state.visible = show;
  if (columnConfig_) SaveColumnState(*columnConfig_);
  return true;
}

int DataGrid::MeasureText(const std::wstring& text) const {
  // Without a font at hand: an average character width and a cell's margins.
  constexpr int kCharWidth = 7;
  constexpr int kMargins = 12;
  return static_cast<int>(text.size()) * kCharWidth + kMargins;
}

bool DataGrid::SetColumnWidthAuto(int column, bool includeHeader) {
  if (column < 0) {
    bool all = true;
    for (int c : GetVisibleColumns()) all = SetColumnWidthAuto(c, includeHeader) && all;
    return all;
  }
  if (!ValidColumn(column) || !IsColumnVisible(column) || !IsColumnResizable(column)) {
    return false;
  }
  int width = includeHeader ? MeasureText(columns_[column].heading) : 0;
  for (int row = 0; row < rowCount_; ++row) {
    width = std::max(width, MeasureText(GetItemText(row, column)));
  }
  columns_[column].width = width;
  if (columnConfig_) SaveColumnState(*columnConfig_);
  return true;
}

// --- Column state ------------------------------------------------------------

void DataGrid::SetupColumnConfig(ViewConfigSection* section, bool owned) {
  if (columnConfigOwned_ && columnConfig_ != section) delete columnConfig_;
  columnConfig_ = section;
  columnConfigOwned_ = owned;
  if (!section) return;
  auto* withDefaults = dynamic_cast<ViewConfigSectionDefault*>(section);
  if (withDefaults && !withDefaults->HasDefaultConfig()) {
    SaveColumnState(withDefaults->GetDefaultConfig());
  }
  LoadColumnState(*section);
}

void DataGrid::SaveColumnWidth(ViewConfigSection& section, int position, int column) {
  section.SetIntSetting(widthKey(position), GetColumnWidth(column));
}

void DataGrid::LoadColumnWidth(ViewConfigSection& section, int position, int column) {
  const ColumnTrait::ColumnState& state = columns_[column].trait->GetColumnState();
  int width = columns_[column].width;
  if (width == 0) width = state.originalWidth > 0 ? state.originalWidth : kDefaultColumnWidth;
  columns_[column].width = section.GetIntSetting(widthKey(position), width) & 0xFFFF;
}

void DataGrid::SaveColumnState(ViewConfigSection& section) {
  section.RemoveCurrentConfig();
  int position = 0;
  for (int column : order_) {
    if (!IsColumnVisible(column)) continue;
    section.SetIntSetting(dataKey(position), columns_[column].subItem);
    SaveColumnWidth(section, position, column);
    ++position;
  }
  section.SetIntSetting(L"ColumnCount", position);
  // A store that cannot write has told its holder so; the columns on screen
  // are right either way.
  platform::ignoreStatus(section.Flush());
}

// Places the saved columns at the end of the order, from the last position
// back; columns that must show go in front of them, and all others in front
// again, hidden. A section that holds no state at all leaves the columns.
void DataGrid::LoadColumnState(ViewConfigSection& section) {
  const int count = section.GetIntSetting(L"ColumnCount", -1);
  if (count < 0) return;
  EndEditing(true);
  // Nothing saves while the state is half loaded.
  ViewConfigSection* const config = columnConfig_;
  columnConfig_ = nullptr;

  const int columns = GetColumnCount();
  std::vector<int> order(static_cast<std::size_t>(columns), -1);
  std::vector<bool> placed(static_cast<std::size_t>(columns), false);
  int next = columns - 1;
  for (int position = count - 1; position >= 0 && next >= 0; --position) {
    const int subItem = section.GetIntSetting(dataKey(position), -1);
    int column = 0;
    while (column < columns && (placed[column] || columns_[column].subItem != subItem)) ++column;
    if (column == columns || IsColumnAlwaysHidden(column)) continue;
    columns_[column].trait->GetColumnState().visible = true;
    if (IsColumnResizable(column)) {
      LoadColumnWidth(section, position, column);
    } else if (columns_[column].width == 0) {
      columns_[column].width = columns_[column].trait->GetColumnState().originalWidth;
    }
    placed[column] = true;
    order[next--] = column;
  }
  for (auto it = order_.rbegin(); it != order_.rend(); ++it) {
    if (placed[*it] || !IsColumnAlwaysVisible(*it)) continue;
    ColumnTrait::ColumnState& state = columns_[*it].trait->GetColumnState();
    state.visible = true;
    if (columns_[*it].width == 0) {
      columns_[*it].width = state.originalWidth > 0 ? state.originalWidth : kDefaultColumnWidth;
    }
    placed[*it] = true;
    order[next--] = *it;
  }
  for (auto it = order_.rbegin(); it != order_.rend(); ++it) {
    if (placed[*it]) continue;
    ColumnTrait::ColumnState& state = columns_[*it].trait->GetColumnState();
    state.originalPosition = -1;
    if (columns_[*it].width > 0) state.originalWidth = columns_[*it].width;
    columns_[*it].width = 0;
    state.visible = false;
    order[next--] = *it;
  }
  order_ = std::move(order);
  if (!IsColumnVisible(focusCell_)) focusCell_ = -1;
  columnConfig_ = config;
  if (listener_) listener_->OnInvalidate(*this);
}

}  // namespace zarvel
