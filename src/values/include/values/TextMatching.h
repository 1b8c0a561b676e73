// The geometry by which texts are matched to the entities they label: the
// containment test of closed outlines, distances to open ones, and an index
// over the texts' points that narrows each search to the texts near a target
// while the answer stays that of looking at every text in order.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace zarvel {

using platform::Point3d;

struct TextItem {
  Point3d point;
  std::wstring text;
};

// The points of one target entity.
using TargetShape = std::vector<Point3d>;

// A point beyond the polygon at which the test ray ends. The bounds are
// gathered in one pass in which a value that lowers the minimum is never
// also tried against the maximum, and the maximum starts at the smallest
// positive double: for some outlines the point falls inside them, and the
// containment test then answers accordingly.
Point3d outsidePointOf(const TargetShape& polygon);

// Whether the segment from the point to the outside point crosses the edges
// between consecutive points an odd number of times. A point on a vertex
// (within the global tolerance) does not cross the edges that meet there.
bool isInside(const Point3d& point, const TargetShape& polygon, const Point3d& outsidePoint);

// No points: the largest finite double; one: the distance to it; more: the
// distance to the nearest segment between consecutive points.
double distanceToPoints(const Point3d& point, const TargetShape& points);

struct NearestText {
  double distance;
  int index;  // -1 for none
};

// The text nearest to the vertices, and then the one nearest to the segments
// if that is strictly nearer; ties go to the earlier text.
NearestText nearestText(const std::vector<TextItem>& texts, const TargetShape& points);

// An axis-aligned rectangle in the XY plane.
struct Box2d {
  double minX = 0.0;
  double minY = 0.0;
  double maxX = 0.0;
  double maxY = 0.0;
};

// The texts' points in a uniform grid of about one point per cell.
class TextIndex {
 public:
  explicit TextIndex(const std::vector<TextItem>& texts);

  // The indices, ascending, of the texts whose point lies in the box.
  std::vector<int> within(const Box2d& box) const;

 private:
  std::size_t cellOf(double value, double origin, std::size_t count) const;

  const std::vector<TextItem>& texts_;
  Box2d bounds_;
  double cellSize_ = 1.0;
  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
  // Texts by cell: cellStart_[c] to cellStart_[c + 1] in cellTexts_, ascending.
  std::vector<std::size_t> cellStart_;
  std::vector<int> cellTexts_;
};

// The texts of the drawing matched to targets as the plain walk over every
// text would match them, looking only at those the index finds near each.
class TextMatcher {
 public:
  explicit TextMatcher(const std::vector<TextItem>& texts) : texts_(texts), index_(texts) {}

  // The texts inside a closed outline, in text order, up to `atMost`.
  std::vector<int> textsInside(const TargetShape& polygon, const Point3d& outsidePoint,
                               std::size_t atMost) const;
  // The texts nearer than the tolerance to an open shape, in text order.
  std::vector<int> textsWithin(const TargetShape& points, double tolerance) const;
  // As nearestText over all texts, when its distance is within the tolerance;
  // otherwise a distance above the tolerance or index -1.
  NearestText nearestWithin(const TargetShape& points, double tolerance) const;

 private:
  std::vector<int> candidatesNear(const TargetShape& points, double margin) const;

  const std::vector<TextItem>& texts_;
  TextIndex index_;
};

// The closed test of an outline: at least three points, the last within the
// given step of the first.
bool isClosedShape(const TargetShape& shape, double closingTolerance);

}  // namespace zarvel
