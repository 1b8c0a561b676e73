// Plain values that pass between the grid model and whatever renders it:
// colours, fonts, where a click landed, keys, and what an ended edit carries.
// None of them names a window system; a front end maps its own events onto
// them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zarvel {

// A colour as 0x00BBGGRR, the way the host's drawing calls take one.
using Color = std::int32_t;
inline constexpr Color kNoColor = -1;

constexpr Color rgbColor(int red, int green, int blue) {
  return static_cast<Color>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}
constexpr int redOf(Color c) {
  return c & 0xFF;
}
constexpr int greenOf(Color c) {
  return (c >> 8) & 0xFF;
}
constexpr int blueOf(Color c) {
  return (c >> 16) & 0xFF;
}

// A font as a front end creates one: the fields of a logical font.
struct FontSpec {
  std::wstring faceName;  // at most 31 characters are kept
  std::int32_t height = 0;
  std::int32_t width = 0;
  std::int32_t escapement = 0;
  std::int32_t orientation = 0;
  std::int32_t weight = 0;
  std::uint8_t italic = 0;
  std::uint8_t underline = 0;
  std::uint8_t strikeOut = 0;
  std::uint8_t charSet = 0;
  std::uint8_t outPrecision = 0;
  std::uint8_t clipPrecision = 0;
  std::uint8_t quality = 0;
  std::uint8_t pitchAndFamily = 0;

  bool operator==(const FontSpec& o) const;
  bool operator!=(const FontSpec& o) const { return !(*this == o); }
};

// The alignment of a column's header and cells.
enum class Align { Left, Right, Center };

// Which part of a cell a click hit; the front end hit-tests its own pixels.
// The keyboard (F2, Space) counts as a click on the label.
enum class CellPart { Label, Image, CheckBox };

// Keys the grid handles itself; any other key is the front end's.
enum class GridKey { Left, Right, Up, Down, Home, End, Space, F2, A, C, Add };

struct KeyModifiers {
  bool ctrl = false;
  bool shift = false;
};

// What an ended edit hands to the grid: the new text when the editor was
// changed and its text taken, and a new image when a click flipped one.
// Neither means the edit changed nothing.
struct EditResult {
  std::optional<std::wstring> text;
  std::optional<int> image;
};

// Options of a grid that a list control fixes by its window style.
struct GridStyle {
  bool singleSelect = false;
  // Rows are virtual: a count, with text found on demand, never stored.
  bool ownerData = false;
  bool checkBoxes = false;
  bool gridLines = true;
  bool columnHeader = true;  // a list of one column may go without
};

// How a front end draws one cell; kNoColor leaves the front end's default.
struct CellLook {
  Color textColor = kNoColor;
  Color backColor = kNoColor;
  std::optional<FontSpec> font;
  // Drawn as selected: a selected row, except the focus cell of the focused
  // row when the row trait sets it apart.
  bool highlighted = false;
  // The focus rectangle goes around this cell.
  bool focused = false;
};

}  // namespace zarvel
