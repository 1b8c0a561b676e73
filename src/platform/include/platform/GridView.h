// A grid as a front end sees it, whatever keeps its rows: columns with
// headings, rows as a virtual list whose cells give their text on demand, a
// selection of rows, and cells that take typed text. The module's grid model
// implements it; a host renders it, as a list view in a window or as prompts
// on a command line.
#pragma once

#include <string>

namespace platform {

class GridView {
 public:
  virtual ~GridView() = default;

  virtual int columnCount() const = 0;
  virtual std::wstring columnHeading(int column) const = 0;
  // Hidden columns stay in the model but are neither shown nor asked for.
  virtual bool isColumnVisible(int column) const = 0;

  virtual int rowCount() const = 0;
  virtual std::wstring cellText(int row, int column) const = 0;

  // Whether the cell takes typed text: its column has an editor and the cell
  // is not read-only.
  virtual bool isCellEditable(int row, int column) const = 0;
  // Ends an in-place edit of the cell with the typed text, as the editor does
  // on Enter; false when the grid refused the text and the cell kept its own.
  virtual bool commitCellEdit(int row, int column, const std::wstring& text) = 0;

  virtual bool isMultiSelect() const = 0;
  virtual bool isRowSelected(int row) const = 0;
  // Selects or clears one row; a single-selection grid clears the others.
  virtual void setRowSelected(int row, bool selected) = 0;
};

}  // namespace platform
