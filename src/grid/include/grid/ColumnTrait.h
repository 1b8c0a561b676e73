// Column traits: the object bound to one grid column that decides how its
// cells are edited, sorted and coloured. The grid asks the trait of a column;
// a trait sees its grid only through the grid argument of each operation.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "grid/GridTypes.h"

namespace zarvel {

class DataGrid;
class CellEditor;

// One row's side of a comparison while a grid sorts: its text in the sorted
// column, that cell's image and the row's item data.
struct SortRow {
  std::wstring_view text;
  // The text's first characters lower-cased, packed so that rows whose
  // prefixes differ compare as their texts do ignoring case: most of a large
  // sort is decided without reading the texts from afar.
  std::uint64_t prefixHigh = 0;
  std::uint64_t prefixLow = 0;
  int image = -1;
  std::uintptr_t data = 0;
};

// Answers of OnClickEditStart.
inline constexpr int kClickNoEdit = 0;
inline constexpr int kClickEditAfter = 1;  // after the list has moved focus and selection
inline constexpr int kClickEditNow = 2;

class ColumnTrait {
 public:
  struct ColumnState {
    bool visible = true;
    int originalWidth = 0;      // width before hiding
    int originalPosition = -1;  // display position before hiding
    bool alwaysHidden = false;
    bool alwaysVisible = false;
    bool sortable = true;
    bool editable = true;
    bool resizable = true;
  };

  ColumnTrait() = default;
  virtual ~ColumnTrait() = default;
  ColumnTrait(const ColumnTrait&) = delete;
  ColumnTrait& operator=(const ColumnTrait&) = delete;

  ColumnState& GetColumnState() { return state_; }
  const ColumnState& GetColumnState() const { return state_; }

  virtual void OnInsertToList(DataGrid& grid, int column);
  // Whether a click on the cell opens an editor: kClickNoEdit, kClickEditAfter
  // or kClickEditNow.
  virtual int OnClickEditStart(DataGrid& grid, int row, int column, CellPart part,
                               bool doubleClick);
  // Begins an edit at a part of the cell; the base forwards to the cell form.
  virtual std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column,
                                                  CellPart part);
  virtual std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column);
  virtual void OnEditEnd() {}
  // Negative, 0 or positive as left sorts before, with or after right.
  virtual int OnSortRows(std::wstring_view left, std::wstring_view right, bool ascending) const;
  virtual int OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const;
  virtual bool IsCellReadOnly(const DataGrid& grid, int row, int column, CellPart part) const;
  // Whether the trait opens an editor that takes typed text.
  virtual bool HasEditor() const { return false; }

 private:
  ColumnState state_;
};

// A column of text: its own colours and font, and a numeric sort. Texts
// compare ignoring case; a derived trait that sorts its own way overrides the
// comparison of rows.
class ColumnTraitText : public ColumnTrait {
 public:
  int OnSortRows(std::wstring_view left, std::wstring_view right, bool ascending) const final;
  int OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const override;

  virtual bool UpdateTextFont(int row, FontSpec& font) const;
  // False when the trait sets no colour.
  virtual bool UpdateTextColor(int row, Color& color) const;
  virtual bool UpdateBackColor(int row, Color& color) const;

  void SetTextColor(Color color) { textColor_ = color; }
  void SetBackColor(Color color) { backColor_ = color; }
  void SetFont(std::optional<FontSpec> font) { font_ = std::move(font); }
  // Sorts by the integers the texts begin with instead of by the texts.
  void SetSortNumeric(bool numeric) { sortNumeric_ = numeric; }
  bool GetSortNumeric() const { return sortNumeric_; }

 private:
  Color textColor_ = kNoColor;
  Color backColor_ = kNoColor;
  std::optional<FontSpec> font_;
  bool sortNumeric_ = false;
};

// A column whose cells may carry an image from a small set, each with a text
// and whether a cell showing it may be edited; a click on the image flips it
// to the next one.
class ColumnTraitImage : public ColumnTraitText {
 public:
  struct Image {
    int index = 0;
    std::wstring text;
    bool editable = true;
  };

  void AddImageIndex(int index, const std::wstring& text = L"", bool editable = true);
  const std::vector<Image>& GetImages() const { return images_; }
  // Sorts by the image shown instead of by the text.
  void SetSortImageIndex(bool on) { sortImageIndex_ = on; }
  void SetImageClickEnabled(bool on) { imageClickEnabled_ = on; }
  void SetSingleClickEdit(bool on) { singleClickEdit_ = on; }

  int OnClickEditStart(DataGrid& grid, int row, int column, CellPart part,
                       bool doubleClick) override;
  using ColumnTrait::OnEditBegin;
  std::unique_ptr<CellEditor> OnEditBegin(DataGrid& grid, int row, int column,
                                          CellPart part) override;
  using ColumnTraitText::OnSortRows;
  int OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const override;
  bool IsCellReadOnly(const DataGrid& grid, int row, int column, CellPart part) const override;

  // The image after the cell's own in the set, round to the first.
  virtual int GetNextImageIndex(const DataGrid& grid, int row, int column) const;
  // Ends an edit of the cell that changes only its image.
  virtual void FlipImageIndex(DataGrid& grid, int row, int column);
  // A click on a row's check box: the row's check flips, and with it every
  // selected row's when the row is selected.
  virtual void OnClickCheckAll(DataGrid& grid, int row);

 private:
  std::vector<Image> images_;
  bool sortImageIndex_ = false;
  bool imageClickEnabled_ = false;
  bool singleClickEdit_ = false;
};

}  // namespace zarvel
