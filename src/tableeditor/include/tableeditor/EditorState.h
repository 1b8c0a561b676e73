// The table editor's state that outlives its window: the table shown, the
// sort of the last click, the remembered sizes and the find's last answers.
#pragma once

#include <cstdint>
#include <string>

#include "platform/OdTypes.h"

namespace zarvel {

struct TableEditorState {
  // Empty: no table is shown.
  std::wstring currentTableName;
  // As last seen, so that a change of the table's columns can be told.
  platform::OdTableDef currentTableDefinition;
  // The last clicked column; while a sort runs, the field its comparators read.
  std::int32_t sortColumn = 0;
  std::int16_t sortDescending = 0;
  bool synchronizeEnabled = true;
  std::int32_t editorWidth = 453;
  std::int32_t editorHeight = 275;
  // The column fill's box keeps its own size.
  std::int32_t editBoxWidth = 453;
  std::int32_t editBoxHeight = 275;
  std::wstring lastFindText;
  bool lastFindWholeString = false;
};

TableEditorState& tableEditorState();

}  // namespace zarvel
