// The table editor's writes: a typed cell, a column fill, a paste and a
// deletion of rows. Each runs in one document lock, which is one step of the
// host's undo, and leaves the rows in memory as its own rule says.
#include <algorithm>
#include <map>
#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/RecordWrites.h"
#include "tableeditor/Zarvel.h"
#include "tableeditor/ZarvelEdit.h"

namespace zarvel {

using platform::ObjectId;
using platform::OdValue;

namespace {

constexpr std::size_t kMaxHeadingLength = 255;

// The span of one write: the document locked for it and unlocked on every way
// out, so that each write is one undo step of the host.
class DocumentLock {
 public:
  DocumentLock() { lockDoc(); }
  ~DocumentLock() {
    // Nothing is left to do when the unlock fails: the writes are made.
    platform::ignoreStatus(unlockDoc());
  }
  DocumentLock(const DocumentLock&) = delete;
  DocumentLock& operator=(const DocumentLock&) = delete;
};

// Text cut at each line feed; a last line without one loses its last
// character, as the clipboard's text is taken to end in a terminator.
std::vector<std::wstring> pastedLines(const std::wstring& text) {
  std::vector<std::wstring> lines;
  std::size_t pos = 0;
  while (pos < text.size()) {
    const std::size_t feed = text.find(L'\n', pos);
    if (feed == std::wstring::npos) {
      lines.push_back(text.substr(pos, text.size() - 1 - pos));
      break;
    }
    lines.push_back(text.substr(pos, feed - pos));
    pos = feed + 1;
  }
  return lines;
}

// A line's cells at each tab, empty cells kept in their places.
std::vector<std::wstring> pastedCells(const std::wstring& line) {
  std::vector<std::wstring> cells;
  std::size_t pos = 0;
  for (;;) {
    const std::size_t tab = line.find(L'\t', pos);
    cells.push_back(line.substr(pos, tab == std::wstring::npos ? std::wstring::npos : tab - pos));
    if (tab == std::wstring::npos) return cells;
    pos = tab + 1;
  }
}

}  // namespace

bool Zarvel::OnEndLabelEdit(DataGrid& /*grid*/, int row, int column, const EditResult& result) {
  // An edit cancelled, or one in which nothing was typed, carries no text.
  if (!result.text) return true;
  objectEventsEnabled = false;
  if (column >= 1 && row >= 0 && static_cast<std::size_t>(row) < rows.size()) {
    writeTypedCell(row, column, *result.text);
  }
  objectEventsEnabled = true;
  return true;
}

void Zarvel::writeTypedCell(int row, int column, const std::wstring& text) {
  EditorRow& r = rows[static_cast<std::size_t>(row)];
  const std::size_t field = static_cast<std::size_t>(column - 1);
  if (field >= r.values.size()) return;
  OdValue value = r.values[field].value();
  if (text == valueToText(value)) return;
  const RowKey key = makeRowKey(columnNames, r.values);
  // The row changes before the drawing does, and keeps the typed value even
  // when its record is no longer found.
  cellTextToValue(value, text);
  r.values[field] = CellValue(value);
  {
    DocumentLock lock;
    writeField(getODContainer(), r.entityId, tableEditorState().currentTableName,
               static_cast<int>(field), value, key);
  }
  setPickFirst({r.entityId});
  invalidate();
}

void Zarvel::fillColumn(int column) {
  if (column <= 0 || rows.empty() || column > static_cast<int>(rows.front().values.size())) {
    return;
  }
  const std::size_t field = static_cast<std::size_t>(column - 1);
  // Row 0's value is the template: its kind rules the typed text for all.
  OdValue value = rows.front().values[field].value();
  ZarvelEdit box(grid.GetColumnHeading(column).substr(0, kMaxHeadingLength), typeName(value));
  if (port().ui().runModal(box) != platform::kIdOk) return;
  cellTextToValue(value, box.text());
  const std::wstring& table = tableEditorState().currentTableName;
  platform::OdContainer& container = getODContainer();
  std::vector<ObjectId> ids;
  {
    DocumentLock lock;
    selectedIds(ids);
    if (ids.empty()) {
      // Every row, so that an entity with n records gets n passes alike.
      if (std::unique_ptr<platform::OdTable> t = container.getTable(table)) {
        for (const EditorRow& row : rows) {
          setFieldOnAllRecords(row.entityId, *t, static_cast<int>(field), value);
        }
      }
    } else {
      RowKey key = makeRowKey(columnNames, rows.front().values);
      for (int index : grid.GetSelectedRows()) {
        const EditorRow& row = rows[static_cast<std::size_t>(index)];
        for (std::size_t k = 0; k < key.size() && k < row.values.size(); ++k) {
          key[k].value = row.values[k].value();
        }
        writeField(container, row.entityId, table, static_cast<int>(field), value, key);
      }
    }
  }
  if (ids.empty()) {
    loadTable(false);
  } else {
    refreshRowsOfIds(container, ids);
  }
  invalidate();
}

void Zarvel::refreshRowsOfIds(platform::OdContainer& container, const std::vector<ObjectId>& ids) {
  const std::wstring& table = tableEditorState().currentTableName;
  std::map<ObjectId, std::vector<std::vector<OdValue>>> fresh;
  for (ObjectId id : ids) {
    if (fresh.count(id) == 0) fresh.emplace(id, recordsOfEntityTable(container, table, id));
  }
  // Records go back to rows by position: the first record to the entity's
  // first row, and so on; rows for which records ran out keep their values.
  std::map<ObjectId, std::size_t> taken;
  for (EditorRow& row : rows) {
    auto found = fresh.find(row.entityId);
    if (found == fresh.end()) continue;
    std::size_t& next = taken[row.entityId];
    if (next < found->second.size()) row.values = toCells(found->second[next++]);
  }
}

void Zarvel::paste(const std::optional<std::wstring>& clipboardText) {
  DocumentLock lock;
  std::vector<ObjectId> ids;
  selectedIds(ids);
  if (ids.empty()) {
    messageBox(kMsgNoObjectsSelectedBox, kMsgErrorCaption,
               platform::kMbOk | platform::kMbIconError);
    return;
  }
  if (!clipboardText || clipboardText->empty()) return;
  // The whole text is checked before anything is written.
  const std::size_t fields = static_cast<std::size_t>(std::max(grid.GetColumnCount() - 1, 0));
  std::vector<std::vector<std::wstring>> lines;
  bool shaped = true;
  for (const std::wstring& line : pastedLines(*clipboardText)) {
    lines.push_back(pastedCells(line));
    shaped = shaped && lines.back().size() == fields;
  }
  if (!shaped || lines.size() > ids.size()) {
    messageBox(kMsgDataDoesNotMatch, kMsgErrorCaption, platform::kMbOk | platform::kMbIconError);
    return;
  }
  platform::OdContainer& container = getODContainer();
  const std::wstring& table = tableEditorState().currentTableName;
  // The first entity's values of the table, all its records flattened: with
  // two records there it is twice too long, and no line is written.
  std::vector<OdValue> values = valuesOfEntityTable(container, table, ids.front());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t j = 0; j < lines[i].size() && j < values.size(); ++j) {
      if (lines[i][j].empty()) {
        values[j] = std::wstring();
      } else {
        textToValue(values[j], lines[i][j]);
      }
    }
    writeRecord(container, ids[i], table, values);
  }
}

void Zarvel::deleteSelectedRows() {
  const std::vector<ObjectId> ids = selectedUniqueIds();
  {
    ResourceScope resources;
    const int answer = port().ui().messageBox(loadString(kMsgDetachSelectedQuestion), L"",
                                              platform::kMbOkCancel | platform::kMbIconQuestion);
    if (answer != platform::kIdOk || ids.empty()) return;
  }
  {
    DocumentLock lock;
    const std::vector<int> indices = grid.GetSelectedRows();
    const std::wstring& table = tableEditorState().currentTableName;
    // Each selected row's key is tried on every selected entity.
    for (int index : indices) {
      const EditorRow& row = rows[static_cast<std::size_t>(index)];
      removeMatchingRecords(table, ids, makeRowKey(columnNames, row.values));
    }
    removeRows(indices);
  }
  if (!pickFirstEnabled) setPickFirst({});
  pickFirstEnabled = true;
}

void Zarvel::removeRows(std::vector<int> indices) {
  std::sort(indices.begin(), indices.end());
  // Ascending and unique, the rows go in one pass that keeps the others' order.
  indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
  std::size_t kept = 0;
  std::size_t next = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (next < indices.size() && static_cast<std::size_t>(indices[next]) == i) {
      ++next;
      continue;
    }
    if (kept != i) rows[kept] = std::move(rows[i]);
    ++kept;
  }
  rows.resize(kept);
  grid.SetItemCount(static_cast<int>(rows.size()));
  grid.ClearSelection();
  invalidate();
}

}  // namespace zarvel
