// The row trait of text rows: colours, alternating on odd rows.
#include "grid/RowTrait.h"

namespace zarvel {
namespace {

bool pickColor(int row, Color normal, Color alternate, Color& color) {
  const Color chosen = row % 2 == 1 && alternate != kNoColor ? alternate : normal;
  if (chosen == kNoColor) return false;
  color = chosen;
  return true;
}

}  // namespace

bool RowTraitText::UpdateTextColor(int row, Color& color) const {
  return pickColor(row, textColor_, altTextColor_, color);
}

bool RowTraitText::UpdateBackColor(int row, Color& color) const {
  return pickColor(row, backColor_, altBackColor_, color);
}

}  // namespace zarvel
