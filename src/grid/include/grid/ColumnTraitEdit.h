// The column traits that edit a cell in place: an edit box, a multi-line edit
// box, a combo box and a date and time control; and the hyperlink column,
// whose click opens a link instead.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "grid/CellEditor.h"
#include "grid/ColumnTrait.h"
#include "grid/GridListener.h"

namespace zarvel {

// An edit box over the cell.
class ColumnTraitEdit : public ColumnTraitImage {
 public:
  using ColumnTraitImage::OnEditBegin;
  std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column) override;
  bool HasEditor() const override { return true; }

  // At most this many characters are typed; -1 for no limit.
  void SetMaxEditLength(int limit) { editLimit_ = limit; }
  int GetMaxEditLength() const { return editLimit_; }

 protected:
  virtual std::unique_ptr<CellEditor> CreateEdit(DataGrid& grid, int row, int column);

 private:
  int editLimit_ = -1;
};

class ColumnTraitMultilineEdit : public ColumnTraitEdit {
 public:
  void SetMaxLines(int lines) { maxLines_ = lines; }
  int GetMaxLines() const { return maxLines_; }

 protected:
  std::unique_ptr<CellEditor> CreateEdit(DataGrid& grid, int row, int column) override;

 private:
  int maxLines_ = 5;
};

// A combo box of fixed items; the cell's text selects its item.
class ColumnTraitCombo : public ColumnTraitImage {
 public:
  void AddItem(std::uintptr_t data, const std::wstring& text);
  void ClearItems() { items_.clear(); }
  const std::vector<CellEditorCombo::Item>& GetItems() const { return items_; }
  void SetStyle(CellEditorCombo::Style style) { style_ = style; }
  void SetMaxItems(int rows) { maxItems_ = rows; }
  int GetMaxItems() const { return maxItems_; }
  void SetMaxWidth(int width) { maxWidth_ = width; }
  int GetMaxWidth() const { return maxWidth_; }
  void SetMaxEditLength(int limit) { editLimit_ = limit; }

  using ColumnTraitImage::OnEditBegin;
  std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column) override;
  bool HasEditor() const override { return true; }

 private:
  std::vector<CellEditorCombo::Item> items_;
  CellEditorCombo::Style style_ = CellEditorCombo::Style::DropDownList;
  int maxItems_ = 7;
  int maxWidth_ = 200;
  int editLimit_ = -1;
};

// A date and time control; the column sorts by time, not by text.
class ColumnTraitDateTime : public ColumnTraitImage {
 public:
  void SetFormat(std::wstring format) { format_ = std::move(format); }
  const std::wstring& GetFormat() const { return format_; }

  using ColumnTraitImage::OnEditBegin;
  std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column) override;
  bool HasEditor() const override { return true; }
  using ColumnTraitImage::OnSortRows;
  // A text that reads as no time sorts before every time.
  int OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const override;

 private:
  std::wstring format_ = kDefaultDateTimeFormat;
};

// A text that opens a link: the prefix, the cell's text and the suffix joined,
// or a fixed file given the cell's text as its parameter. A click opens it
// and ends as an edit that changes nothing.
class ColumnTraitHyperLink : public ColumnTraitImage {
 public:
  ColumnTraitHyperLink();
  void SetShellFilePrefix(std::wstring prefix) { prefix_ = std::move(prefix); }
  void SetShellFileSuffix(std::wstring suffix) { suffix_ = std::move(suffix); }
  // A fixed file to open with the cell's text as its parameter, instead of
  // the joined address; empty for none.
  void SetShellApplication(std::wstring file) { application_ = std::move(file); }
  void SetShellOperation(std::wstring verb) { verb_ = std::move(verb); }
  void SetShellShowCommand(int show) { showCommand_ = show; }
  void SetLinkColor(Color color) { linkColor_ = color; }
  void SetLinkColorHot(Color color) { linkColorHot_ = color; }
  Color GetLinkColorHot() const { return linkColorHot_; }

  // The link a click on the cell opens.
  LinkRequest GetLink(const DataGrid& grid, int row, int column) const;

  using ColumnTraitImage::OnEditBegin;
  std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column) override;
  bool UpdateTextColor(int row, Color& color) const override;
  bool UpdateTextFont(int row, FontSpec& font) const override;

 private:
  std::wstring prefix_;
  std::wstring suffix_;
  std::wstring application_;
  std::wstring verb_ = L"open";
  int showCommand_ = 1;
  Color linkColor_ = rgbColor(0, 0, 255);
  Color linkColorHot_ = rgbColor(255, 0, 0);
};

}  // namespace zarvel
