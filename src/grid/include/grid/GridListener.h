// What a grid tells whoever holds it, the role the parent window plays for a
// list control: edits that begin and end, selection changes, requests to
// scroll, the clipboard, links to open. Every answer has a default, so a
// holder overrides only what it cares for.
#pragma once

#include <string>

#include "grid/GridTypes.h"

namespace zarvel {

class DataGrid;

// A link a hyperlink cell asks to open: the verb, the target (a file or an
// address) and parameters for it, and how a window it opens should show.
struct LinkRequest {
  std::wstring verb;
  std::wstring target;
  std::wstring parameters;
  int showCommand = 1;
};

class GridListener {
 public:
  virtual ~GridListener() = default;

  // An in-place edit is about to open on the cell; true refuses it.
  virtual bool OnBeginLabelEdit(DataGrid& /*grid*/, int /*row*/, int /*column*/) { return false; }
  // An edit ended; true lets the cell take the result. An owner-data grid
  // stores nothing itself, so its holder keeps the value here.
  virtual bool OnEndLabelEdit(DataGrid& /*grid*/, int /*row*/, int /*column*/,
                              const EditResult& /*result*/) {
    return true;
  }
  virtual void OnSelectionChanged(DataGrid& /*grid*/) {}
  // The row's check box changed.
  virtual void OnCheckChanged(DataGrid& /*grid*/, int /*row*/) {}
  // The cell (or the row, with column -1) should be scrolled into view.
  virtual void OnEnsureVisible(DataGrid& /*grid*/, int /*row*/, int /*column*/) {}
  // The whole grid, or one row, should be drawn again.
  virtual void OnInvalidate(DataGrid& /*grid*/) {}
  virtual void OnRedrawRow(DataGrid& /*grid*/, int /*row*/) {}
  // Puts Unicode text on the clipboard; false when that failed.
  virtual bool OnSetClipboardText(DataGrid& /*grid*/, const std::wstring& /*text*/) {
    return false;
  }
  virtual void OnOpenLink(DataGrid& /*grid*/, const LinkRequest& /*link*/) {}
  // A derived grid hands its header menu to the holder for this column.
  virtual void OnHeaderColumnMenu(DataGrid& /*grid*/, int /*column*/) {}
};

}  // namespace zarvel
