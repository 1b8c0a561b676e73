// The boxes of texts, by a font model that needs no fonts:
//  - every character is 0.6 times the height wide, times the width factor;
//    special characters written %%d, %%c, %%p, %%nnn and %%% count as one,
//    the underline and overline switches %%u, %%o, %%k as none;
//  - the box runs from the baseline up by the height (no descenders, so
//    "bottom" and "baseline" place it alike);
//  - left/baseline text hangs off the insertion point; any other alignment
//    hangs off the alignment point: centre and middle centre the width,
//    right ends it there; top puts the box below, middle centres the height;
//    aligned and fit run from the insertion point to the alignment point,
//    aligned scaling the height with the width, fit keeping it;
//  - oblique slants the box, backwards and upside down mirror it about the
//    reference point, and rotation turns it in the text's plane.
// Multiline texts: formatting codes are stripped; each paragraph (\P) is a
// line and, with a reference width, wraps into as many lines as its width
// needs. The box is as wide as the reference width, or else as the longest
// line; it is one height for the first line and 5/3 of the height times the
// line spacing factor for each further one. Height changes inside the text
// (\H) are not followed. The attachment places the box against the point.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

#include "MTextCodes.h"
#include "host/geometry/Extents.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

constexpr double kCharWidth = 0.6;
constexpr double kLinePitch = 5.0 / 3.0;

std::size_t shownLength(std::wstring_view s) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < s.size();) {
    std::size_t shown = 0;
    std::size_t length = 0;
    if (percentCode(s.substr(i), shown, length)) {
      count += shown;
      i += length;
    } else {
      ++count;
      ++i;
    }
  }
  return count;
}

// The characters each line of a multiline text shows.
std::vector<std::size_t> mtextLines(std::wstring_view s) {
  std::vector<std::size_t> lines(1, 0);
  walkMtext(
      s, [&](std::wstring_view, std::size_t width) { lines.back() += width; },
      [&] { lines.push_back(0); });
  return lines;
}

// Corners of the box [x0, x1] x [y0, y1] slanted, mirrored, turned by the
// angle about the reference point in the plane, and placed in the world.
TextBox place(double x0, double x1, double y0, double y1, double oblique, int generation,
              double angle, const Point3d& reference, const Ocs& ocs) {
  const double slant = std::tan(oblique);
  const double sx = (generation & 2) != 0 ? -1.0 : 1.0;
  const double sy = (generation & 4) != 0 ? -1.0 : 1.0;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double local[4][2] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  // Mirrors move the lower left corner; the order starts from where it went.
  static const int kOrders[4][4] = {{0, 1, 2, 3}, {1, 0, 3, 2}, {3, 2, 1, 0}, {2, 3, 0, 1}};
  const int* use = kOrders[(sx < 0 ? 1 : 0) + (sy < 0 ? 2 : 0)];
  TextBox box;
  for (int k = 0; k < 4; ++k) {
    const double x = sx * (local[use[k]][0] + local[use[k]][1] * slant);
    const double y = sy * local[use[k]][1];
    box.corners[k] =
        ocs.toWorld({reference.x + x * c - y * s, reference.y + x * s + y * c, reference.z});
  }
  return box;
}

}  // namespace

std::wstring mtextPlainText(std::wstring_view contents) {
  std::wstring text;
  walkMtext(
      contents, [&](std::wstring_view piece, std::size_t) { text += piece; },
      [&] { text += L"\r\n"; });
  return text;
}

TextBox textBox(const TextData& t) {
  const double h = t.height;
  const double width = kCharWidth * h * t.widthFactor * static_cast<double>(shownLength(t.text));
  const Ocs ocs(t.normal);
  const int horizontal = t.horizontalAlignment;
  const int vertical = t.verticalAlignment;
  if (horizontal == 3 || horizontal == 5) {
    const double dx = t.alignmentPoint.x - t.position.x;
    const double dy = t.alignmentPoint.y - t.position.y;
    const double span = std::hypot(dx, dy);
    if (span > 0.0) {
      const double height = horizontal == 3 && width > 0.0 ? h * span / width : h;
      return place(0.0, span, 0.0, height, t.oblique, t.generation, std::atan2(dy, dx), t.position,
                   ocs);
    }
  }
  double x0 = 0.0;
  if (horizontal == 1 || horizontal == 4) x0 = -width / 2;
  if (horizontal == 2) x0 = -width;
  double y0 = 0.0;
  if (horizontal == 4 || vertical == 2) y0 = -h / 2;
  if (horizontal != 4 && vertical == 3) y0 = -h;
  const bool atInsertion = (horizontal == 0 && vertical == 0) || horizontal == 3 ||
                           horizontal == 5 || horizontal < 0 || horizontal > 5;
  return place(x0, x0 + width, y0, y0 + h, t.oblique, t.generation, t.rotation,
               atInsertion ? t.position : t.alignmentPoint, ocs);
}

TextBox mtextBox(const MTextEntity& m) {
  const double h = m.height;
  const std::vector<std::size_t> lines = mtextLines(m.text);
  double width = 0.0;
  std::size_t count = 0;
  if (m.referenceWidth > 0.0) {
    width = m.referenceWidth;
    for (std::size_t chars : lines) {
      const double wraps = std::ceil(kCharWidth * h * static_cast<double>(chars) / width - 1e-9);
      count += static_cast<std::size_t>(std::max(wraps, 1.0));
    }
  } else {
    width = kCharWidth * h * static_cast<double>(*std::max_element(lines.begin(), lines.end()));
    count = lines.size();
  }
  const double spacing = m.lineSpacing > 0.0 ? m.lineSpacing : 1.0;
  const double height = h + static_cast<double>(count - 1) * kLinePitch * h * spacing;
  const int attachment = m.attachment >= 1 && m.attachment <= 9 ? m.attachment : 1;
  const int column = (attachment - 1) % 3;
  const int row = (attachment - 1) / 3;
  const double x0 = -width * column / 2.0;
  const double y0 = row == 0 ? -height : row == 1 ? -height / 2 : 0.0;

  // The direction, given in the world, wins over the rotation when it is set.
  const Ocs ocs(m.normal);
  const Point3d normal = ocs.zAxis();
  Point3d xAxis;
  const Point3d d = m.direction;
  const Point3d inPlane = minus(d, scaled(normal, dot(d, normal)));
  if (d != Point3d{1.0, 0.0, 0.0} && length(inPlane) > 1e-12) {
    xAxis = unit(inPlane);
  } else {
    xAxis = ocs.toWorld({std::cos(m.rotation), std::sin(m.rotation), 0.0});
  }
  const Point3d yAxis = unit(cross(normal, xAxis));
  TextBox box;
  const double local[4][2] = {
      {x0, y0}, {x0 + width, y0}, {x0 + width, y0 + height}, {x0, y0 + height}};
  for (int k = 0; k < 4; ++k) {
    box.corners[k] = plus(m.position, plus(scaled(xAxis, local[k][0]), scaled(yAxis, local[k][1])));
  }
  return box;
}

}  // namespace host::geometry
