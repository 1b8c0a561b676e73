// Row traits: the object bound to a grid's rows that gives their colours,
// with alternate colours for odd rows, and sets the focus cell apart.
#pragma once

#include "grid/GridTypes.h"

namespace zarvel {

class RowTrait {
 public:
  RowTrait() = default;
  virtual ~RowTrait() = default;
  RowTrait(const RowTrait&) = delete;
  RowTrait& operator=(const RowTrait&) = delete;

  // False when the trait sets no colour for the row.
  virtual bool UpdateTextColor(int /*row*/, Color& /*color*/) const { return false; }
  virtual bool UpdateBackColor(int /*row*/, Color& /*color*/) const { return false; }
  // Whether the focus cell of a selected focused row is drawn unselected.
  virtual bool InvertsCellSelection() const { return false; }
};

class RowTraitText : public RowTrait {
 public:
  bool UpdateTextColor(int row, Color& color) const override;
  bool UpdateBackColor(int row, Color& color) const override;
  bool InvertsCellSelection() const override { return invertCellSelection_; }

  void SetRowColor(Color text, Color back) {
    textColor_ = text;
    backColor_ = back;
  }
  // Colours of the odd rows; kNoColor keeps the row colours there.
  void SetAltRowColor(Color text, Color back) {
    altTextColor_ = text;
    altBackColor_ = back;
  }
  void SetInvertCellSelection(bool on) { invertCellSelection_ = on; }

 private:
  Color textColor_ = kNoColor;
  Color altTextColor_ = kNoColor;
  Color backColor_ = kNoColor;
  Color altBackColor_ = kNoColor;
  bool invertCellSelection_ = true;
};

}  // namespace zarvel
