// Matching texts to targets: the tests themselves, and the grid that finds
// the texts a test can say yes to.
#include "values/TextMatching.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "values/VertexLists.h"

namespace zarvel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// Ends are measured directly rather than through the projection, so that a
// segment is never further than its own end points.
double distanceToSegment(const Point3d& p, const Point3d& a, const Point3d& b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double dz = b.z - a.z;
  const double lengthSquared = dx * dx + dy * dy + dz * dz;
  if (lengthSquared == 0.0) return distance3d(p, a);
  const double t = ((p.x - a.x) * dx + (p.y - a.y) * dy + (p.z - a.z) * dz) / lengthSquared;
  if (t <= 0.0) return distance3d(p, a);
  if (t >= 1.0) return distance3d(p, b);
  return distance3d(p, Point3d{a.x + t * dx, a.y + t * dy, a.z + t * dz});
}

// Whether the point lies left of the line from `from` through `to`; a point on
// the line counts with those on the right.
bool leftOf(const Point3d& from, const Point3d& to, const Point3d& point) {
  return (to.x - from.x) * (point.y - from.y) - (to.y - from.y) * (point.x - from.x) > 0.0;
}

bool samePoint(const Point3d& a, const Point3d& b) {
  return platform::Point2d{a.x, a.y}.isEqualTo(platform::Point2d{b.x, b.y});
}

bool isFinite(const Point3d& p) {
  return std::isfinite(p.x) && std::isfinite(p.y);
}

// The bounds of the shape, or nothing when a coordinate is not a number, which
// no comparison of the plain walk would ever accept.
bool boundsOf(const TargetShape& points, Box2d& box) {
  if (points.empty()) return false;
  box = Box2d{kLargest, kLargest, -kLargest, -kLargest};
  for (const Point3d& p : points) {
    if (std::isnan(p.x) || std::isnan(p.y)) return false;
    box.minX = std::min(box.minX, p.x);
    box.minY = std::min(box.minY, p.y);
    box.maxX = std::max(box.maxX, p.x);
    box.maxY = std::max(box.maxY, p.y);
  }
  return true;
}

// The box grown by the margin and by a little more than the rounding of the
// distances computed near it, so that no text the exact test accepts lies
// outside it.
Box2d grown(const Box2d& box, double margin) {
  const double magnitude = std::max(std::max(std::fabs(box.minX), std::fabs(box.maxX)),
                                    std::max(std::fabs(box.minY), std::fabs(box.maxY)));
  const double m = margin * (1.0 + 1e-9) + 1e-9 * (1.0 + magnitude);
  return Box2d{box.minX - m, box.minY - m, box.maxX + m, box.maxY + m};
}

bool contains(const Box2d& box, const Point3d& p) {
  return p.x >= box.minX && p.x <= box.maxX && p.y >= box.minY && p.y <= box.maxY;
}

}  // namespace

Point3d outsidePointOf(const TargetShape& polygon) {
  double minX = kLargest;
  double minY = kLargest;
  double maxX = 2.2250738585072014e-308;
  double maxY = 2.2250738585072014e-308;
  for (const Point3d& p : polygon) {
    if (p.x < minX) {
      minX = p.x;
    } else if (p.x > maxX) {
      maxX = p.x;
    }
    if (p.y < minY) {
      minY = p.y;
    } else if (p.y > maxY) {
      maxY = p.y;
    }
  }
  return Point3d{minX + 2.0 * (maxX - minX), minY + 2.0 * (maxY - minY), 0.0};
}

bool isInside(const Point3d& point, const TargetShape& polygon, const Point3d& outsidePoint) {
  if (polygon.size() < 2) return false;
  int crossings = 0;
  for (std::size_t i = 0; i + 1 < polygon.size(); ++i) {
    const Point3d& a = polygon[i];
    const Point3d& b = polygon[i + 1];
    if (leftOf(a, b, point) == leftOf(a, b, outsidePoint)) continue;
    if (leftOf(outsidePoint, point, a) == leftOf(outsidePoint, point, b)) continue;
    if (samePoint(point, a) || samePoint(point, b)) continue;
    ++crossings;
  }
  return crossings % 2 == 1;
}

double distanceToPoints(const Point3d& point, const TargetShape& points) {
  if (points.empty()) return kLargest;
  if (points.size() == 1) return distance3d(point, points.front());
  double nearest = kLargest;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    nearest = std::min(nearest, distanceToSegment(point, points[i], points[i + 1]));
  }
  return nearest;
}

NearestText nearestText(const std::vector<TextItem>& texts, const TargetShape& points) {
  NearestText best{kLargest, -1};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (const Point3d& p : points) {
      const double d = distance3d(texts[i].point, p);
      if (d < best.distance) best = {d, static_cast<int>(i)};
    }
  }
  if (points.size() == 1) return best;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const double d = distanceToPoints(texts[i].point, points);
    if (d < best.distance) best = {d, static_cast<int>(i)};
  }
  return best;
}

bool isClosedShape(const TargetShape& shape, double closingTolerance) {
  return shape.size() >= 3 && distance3d(shape.front(), shape.back()) <= closingTolerance;
}

// --- The index ---------------------------------------------------------------

TextIndex::TextIndex(const std::vector<TextItem>& texts) : texts_(texts) {
  bounds_ = Box2d{kLargest, kLargest, -kLargest, -kLargest};
  std::size_t indexed = 0;
  for (const TextItem& t : texts) {
    if (!isFinite(t.point)) continue;
    ++indexed;
    bounds_.minX = std::min(bounds_.minX, t.point.x);
    bounds_.minY = std::min(bounds_.minY, t.point.y);
    bounds_.maxX = std::max(bounds_.maxX, t.point.x);
    bounds_.maxY = std::max(bounds_.maxY, t.point.y);
  }
  if (indexed == 0) return;
  const double width = bounds_.maxX - bounds_.minX;
  const double height = bounds_.maxY - bounds_.minY;
  const double n = static_cast<double>(indexed);
  if (width > 0.0 && height > 0.0) {
    cellSize_ = std::sqrt(width * height / n);
  } else if (width > 0.0 || height > 0.0) {
    cellSize_ = std::max(width, height) / n;
  }
  columns_ = 1;
  rows_ = 1;
  if (std::isfinite(width) && std::isfinite(height) && std::isfinite(cellSize_) &&
      cellSize_ > 0.0) {
    // Far-flung texts would ask for more cells than texts; the grid then coarsens.
    const double limit = 4.0 * n + 16.0;
    while ((std::floor(width / cellSize_) + 1.0) * (std::floor(height / cellSize_) + 1.0) > limit) {
      cellSize_ *= 2.0;
    }
    columns_ = static_cast<std::size_t>(std::floor(width / cellSize_)) + 1;
    rows_ = static_cast<std::size_t>(std::floor(height / cellSize_)) + 1;
  } else {
    cellSize_ = kLargest;
  }

  std::vector<std::size_t> cellOfText(texts.size(), 0);
  cellStart_.assign(columns_ * rows_ + 1, 0);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!isFinite(texts[i].point)) continue;
    const std::size_t c = cellOf(texts[i].point.y, bounds_.minY, rows_) * columns_ +
                          cellOf(texts[i].point.x, bounds_.minX, columns_);
    cellOfText[i] = c;
    ++cellStart_[c + 1];
  }
  for (std::size_t c = 1; c < cellStart_.size(); ++c) cellStart_[c] += cellStart_[c - 1];
  cellTexts_.resize(indexed);
  std::vector<std::size_t> filled(cellStart_.begin(), cellStart_.end() - 1);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (isFinite(texts[i].point)) cellTexts_[filled[cellOfText[i]]++] = static_cast<int>(i);
  }
}

std::size_t TextIndex::cellOf(double value, double origin, std::size_t count) const {
  const double cell = std::floor((value - origin) / cellSize_);
  if (!(cell > 0.0)) return 0;
  if (cell >= static_cast<double>(count - 1)) return count - 1;
  return static_cast<std::size_t>(cell);
}

std::vector<int> TextIndex::within(const Box2d& box) const {
  std::vector<int> found;
  if (cellTexts_.empty() || std::isnan(box.minX) || std::isnan(box.minY) || std::isnan(box.maxX) ||
      std::isnan(box.maxY)) {
    return found;
  }
  if (box.maxX < bounds_.minX || box.minX > bounds_.maxX || box.maxY < bounds_.minY ||
      box.minY > bounds_.maxY) {
    return found;
  }
  const std::size_t x0 = cellOf(box.minX, bounds_.minX, columns_);
  const std::size_t x1 = cellOf(box.maxX, bounds_.minX, columns_);
  const std::size_t y0 = cellOf(box.minY, bounds_.minY, rows_);
  const std::size_t y1 = cellOf(box.maxY, bounds_.minY, rows_);
  for (std::size_t y = y0; y <= y1; ++y) {
    for (std::size_t x = x0; x <= x1; ++x) {
      const std::size_t c = y * columns_ + x;
      for (std::size_t k = cellStart_[c]; k < cellStart_[c + 1]; ++k) {
        const int i = cellTexts_[k];
        if (contains(box, texts_[static_cast<std::size_t>(i)].point)) found.push_back(i);
      }
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

// --- Matching through the index ------------------------------------------------

std::vector<int> TextMatcher::candidatesNear(const TargetShape& points, double margin) const {
  Box2d box;
  if (!boundsOf(points, box)) return {};
  return index_.within(grown(box, margin));
}

std::vector<int> TextMatcher::textsInside(const TargetShape& polygon, const Point3d& outsidePoint,
                                          std::size_t atMost) const {
  std::vector<int> inside;
  Box2d box;
  const bool bounded = boundsOf(polygon, box) && polygon.front().x == polygon.back().x &&
                       polygon.front().y == polygon.back().y && isFinite(outsidePoint) &&
                       !contains(grown(box, 0.0), outsidePoint);
  // From a point beyond the outline's box to a ray's end beyond it too, the
  // way crosses an outline that ends where it starts an even number of times.
  // Otherwise every text is tried: an end inside the box (the bounds that
  // outsidePointOf gathers can fall short) or out of range, or a gap, however
  // small, between the last point and the first, through which a way from
  // afar may pass.
  std::vector<int> candidates;
  if (bounded) {
    candidates = index_.within(grown(box, 0.0));
  } else {
    candidates.resize(texts_.size());
    for (std::size_t i = 0; i < texts_.size(); ++i) candidates[i] = static_cast<int>(i);
  }
  for (int i : candidates) {
    if (inside.size() >= atMost) break;
    if (isInside(texts_[static_cast<std::size_t>(i)].point, polygon, outsidePoint)) {
      inside.push_back(i);
    }
  }
  return inside;
}

std::vector<int> TextMatcher::textsWithin(const TargetShape& points, double tolerance) const {
  std::vector<int> near;
  for (int i : candidatesNear(points, tolerance)) {
    if (distanceToPoints(texts_[static_cast<std::size_t>(i)].point, points) < tolerance) {
      near.push_back(i);
    }
  }
  return near;
}

// A text beyond the tolerance from every point and segment can neither be the
// answer within it nor displace one that is, as only a strictly nearer text
// takes the place; so the walk over the texts near the shape gives the same
// answer as the walk over all.
NearestText TextMatcher::nearestWithin(const TargetShape& points, double tolerance) const {
  const std::vector<int> candidates = candidatesNear(points, tolerance);
  NearestText best{kLargest, -1};
  for (int i : candidates) {
    for (const Point3d& p : points) {
      const double d = distance3d(texts_[static_cast<std::size_t>(i)].point, p);
      if (d < best.distance) best = {d, i};
    }
  }
  if (points.size() == 1) return best;
  for (int i : candidates) {
    const double d = distanceToPoints(texts_[static_cast<std::size_t>(i)].point, points);
    if (d < best.distance) best = {d, i};
  }
  return best;
}

}  // namespace zarvel
