// Breaking by kind. Polylines are cut at parameters that may fall inside a
// segment; a bulged segment cut short keeps its arc, its bulge scaled to the
// part of the arc that remains.
#include "host/geometry/Break.h"

#include <algorithm>
#include <cmath>

#include "CurveMath.h"
#include "Splines.h"
#include "host/geometry/Curves.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

constexpr double kEps = 1e-10;

// A copy of the curve's kind and properties, without its identity: no handle,
// no owner, no extension dictionary, no source text.
void clearIdentity(Entity& entity) {
  entity.handle = 0;
  entity.owner = ObjectId();
  entity.xdict = ObjectId();
  entity.source = {};
  entity.modified = false;
  entity.erased = false;
}

template <typename T>
std::unique_ptr<T> freshCopy(const T& source) {
  auto copy = std::make_unique<T>(source);
  clearIdentity(*copy);
  return copy;
}

BreakResult breakLine(const LineEntity& line, double a, double b) {
  const double length = geometry::length(minus(line.end, line.start));
  const Point3d dir = length > 0 ? scaled(minus(line.end, line.start), 1.0 / length) : Point3d{};
  auto at = [&](double t) { return plus(line.start, scaled(dir, t)); };
  BreakResult r;
  auto kept = std::make_unique<LineEntity>(line);
  if (a <= kEps && b >= length - kEps) {
    r.error = L"The whole line lies between the break points.";
    return r;
  }
  if (a <= kEps) {
    kept->start = at(b);
  } else if (b >= length - kEps) {
    kept->end = at(a);
  } else {
    kept->end = at(a);
    auto part = freshCopy(line);
    part->start = at(b);
    part->end = line.end;
    r.part = std::move(part);
  }
  r.source = std::move(kept);
  return r;
}

BreakResult breakArc(const ArcEntity& arc, const ParamRange& range, double a, double b) {
  BreakResult r;
  if (a <= range.start + kEps && b >= range.end - kEps) {
    r.error = L"The whole arc lies between the break points.";
    return r;
  }
  // The curve's parameters run counterclockwise from the start angle; the
  // arc's own angles are the same angles.
  auto kept = std::make_unique<ArcEntity>(arc);
  if (a <= range.start + kEps) {
    kept->startAngle = b;
  } else if (b >= range.end - kEps) {
    kept->endAngle = a;
  } else {
    kept->endAngle = a;
    auto part = freshCopy(arc);
    part->startAngle = b;
    r.part = std::move(part);
  }
  r.source = std::move(kept);
  return r;
}

BreakResult breakCircle(const CircleEntity& circle, double first, double second) {
  BreakResult r;
  if (std::fabs(first - second) < kEps || std::fabs(std::fabs(first - second) - kTwoPi) < kEps) {
    r.error = L"A circle breaks between two different points.";
    return r;
  }
  auto arc = std::make_unique<ArcEntity>();
  copyCommonProperties(circle, *arc);
  arc->center = circle.center;
  arc->radius = circle.radius;
  arc->normal = circle.normal;
  // What remains runs counterclockwise from the second point round to the first.
  arc->startAngle = second;
  arc->endAngle = first;
  r.source = std::move(arc);
  return r;
}

// An open ellipse breaks as an arc does, a whole one as a circle does; its
// parameters are angles too.
BreakResult breakEllipse(const EllipseEntity& ellipse, const ParamRange& range, double first,
                         double second) {
  BreakResult r;
  auto kept = std::make_unique<EllipseEntity>(ellipse);
  if (isClosed(ellipse)) {
    if (std::fabs(first - second) < kEps || std::fabs(std::fabs(first - second) - kTwoPi) < kEps) {
      r.error = L"An ellipse breaks between two different points.";
      return r;
    }
    kept->startParam = normalizedAngle(second);
    kept->endParam = normalizedAngle(first);
    r.source = std::move(kept);
    return r;
  }
  const double a = std::min(first, second);
  const double b = std::max(first, second);
  if (a <= range.start + kEps && b >= range.end - kEps) {
    r.error = L"The whole ellipse lies between the break points.";
    return r;
  }
  if (a <= range.start + kEps) {
    kept->startParam = normalizedAngle(b);
  } else if (b >= range.end - kEps) {
    kept->endParam = normalizedAngle(a);
  } else {
    kept->endParam = normalizedAngle(a);
    auto part = freshCopy(ellipse);
    part->startParam = normalizedAngle(b);
    r.part = std::move(part);
  }
  r.source = std::move(kept);
  return r;
}

// A spline keeps the pieces outside the stretch, each a spline of its own; a
// closed one becomes one open spline from the second point round to the first.
BreakResult breakSpline(const SplineEntity& spline, const ParamRange& range, double first,
                        double second) {
  BreakResult r;
  auto piece = [&](double from, double to) {
    return splinePiece(spline, std::clamp(from, range.start, range.end),
                       std::clamp(to, range.start, range.end));
  };
  auto keep = [&](std::unique_ptr<SplineEntity> kept) {
    if (!kept) {
      r.error = L"The spline cannot be broken there.";
      return;
    }
    r.source = std::move(kept);
  };
  if (isClosed(spline)) {
    if (std::fabs(first - second) < kEps) {
      r.error = L"A closed spline breaks between two different points.";
    } else if (second < first) {
      keep(piece(second, first));
    } else if (second >= range.end - kEps) {
      keep(piece(range.start, first));
    } else if (first <= range.start + kEps) {
      keep(piece(second, range.end));
    } else {
      const std::unique_ptr<SplineEntity> tail = piece(second, range.end);
      const std::unique_ptr<SplineEntity> head = piece(range.start, first);
      keep(tail && head ? joinedSplines(*tail, *head) : nullptr);
    }
    return r;
  }
  const double a = std::min(first, second);
  const double b = std::max(first, second);
  if (a <= range.start + kEps && b >= range.end - kEps) {
    r.error = L"The whole spline lies between the break points.";
  } else if (a <= range.start + kEps) {
    keep(piece(b, range.end));
  } else if (b >= range.end - kEps) {
    keep(piece(range.start, a));
  } else {
    keep(piece(range.start, a));
    std::unique_ptr<SplineEntity> part = piece(b, range.end);
    if (part) clearIdentity(*part);
    r.part = std::move(part);
  }
  return r;
}

// Points of a polyline between two parameters (the second may pass its end on
// a closed one, going round), as world points with the bulge each carries.
struct PathPoint {
  Point3d point;
  double bulge = 0.0;
};

std::vector<PathPoint> stretch(const Entity& curve, const std::vector<double>& bulges,
                               std::size_t segments, bool closed, double from, double to) {
  std::vector<PathPoint> points;
  // Going round a closed polyline, parameters past its end start again at 0.
  auto wrap = [&](double t) {
    return closed && t > static_cast<double>(segments) ? t - static_cast<double>(segments) : t;
  };
  auto bulgeOf = [&](std::size_t segment, double portion) {
    const double b = bulges.empty() ? 0.0 : bulges[segment % bulges.size()];
    if (b == 0.0 || portion >= 1.0 - kEps) return b;
    return std::tan(std::atan(b) * portion);
  };
  double t = from;
  while (t < to - kEps) {
    const auto segment = static_cast<std::size_t>(std::floor(t + kEps));
    const double segmentEnd = std::min(static_cast<double>(segment + 1), to);
    const double portion = segmentEnd - t;
    points.push_back({*pointAtParam(curve, wrap(t)), bulgeOf(segment, portion)});
    t = segmentEnd;
  }
  points.push_back({*pointAtParam(curve, wrap(to)), 0.0});
  return points;
}

template <typename Polyline, typename Assign>
BreakResult breakPolyline(const Polyline& polyline, const Entity& curve, bool closed,
                          std::size_t segments, const std::vector<double>& bulges, double first,
                          double second, Assign assign) {
  BreakResult r;
  const double n = static_cast<double>(segments);
  auto kept = std::make_unique<Polyline>(polyline);
  if (closed) {
    // One open polyline remains, from the second point round to the first.
    double from = second;
    double to = first;
    if (to <= from) to += n;
    if (to - from < kEps) {
      r.error = L"A closed polyline breaks between two different points.";
      return r;
    }
    assign(*kept, stretch(curve, bulges, segments, closed, from, to));
    r.source = std::move(kept);
    return r;
  }
  const double a = std::min(first, second);
  const double b = std::max(first, second);
  if (a <= kEps && b >= n - kEps) {
    r.error = L"The whole polyline lies between the break points.";
    return r;
  }
  if (a <= kEps) {
    assign(*kept, stretch(curve, bulges, segments, closed, b, n));
  } else if (b >= n - kEps) {
    assign(*kept, stretch(curve, bulges, segments, closed, 0.0, a));
  } else {
    assign(*kept, stretch(curve, bulges, segments, closed, 0.0, a));
    auto part = freshCopy(polyline);
    assign(*part, stretch(curve, bulges, segments, closed, b, n));
    r.part = std::move(part);
  }
  r.source = std::move(kept);
  return r;
}

// The bulges of the vertices the drawn path runs through, frame vertices left out.
std::vector<double> bulges2d(const Polyline2dEntity& polyline) {
  constexpr std::int16_t kFrameVertex = 16;
  std::vector<double> bulges;
  for (const PolylineVertex& v : polyline.vertices) {
    if ((v.flags & kFrameVertex) == 0) bulges.push_back(v.bulge);
  }
  return bulges;
}

}  // namespace

BreakResult breakCurve(const Entity& curve, double first, double second) {
  const std::optional<ParamRange> range = paramRange(curve);
  if (!range) return {nullptr, nullptr, L"The object is no curve."};
  const double a = std::min(first, second);
  const double b = std::max(first, second);
  switch (*curveKindOf(curve.kind())) {  // a curve, having a parameter range
    case CurveKind::Line: return breakLine(static_cast<const LineEntity&>(curve), a, b);
    case CurveKind::Arc:
      return breakArc(static_cast<const ArcEntity&>(curve), *range, a, b);
    case CurveKind::Circle:
      return breakCircle(static_cast<const CircleEntity&>(curve), first, second);
    case CurveKind::LwPolyline: {
      const auto& p = static_cast<const LwPolylineEntity&>(curve);
      std::vector<double> bulges;
      for (const LwVertex& v : p.vertices) bulges.push_back(v.bulge);
      const Ocs ocs(p.normal);
      auto assign = [&ocs](LwPolylineEntity& target, const std::vector<PathPoint>& points) {
        target.vertices.clear();
        target.widths.clear();
        target.closed = false;
        for (const PathPoint& pp : points) {
          const Point3d local = ocs.fromWorld(pp.point);
          target.vertices.push_back({local.x, local.y, pp.bulge});
        }
      };
      return breakPolyline(p, curve, p.closed, static_cast<std::size_t>(range->end), bulges,
                           first, second, assign);
    }
    case CurveKind::Polyline3d: {
      const auto& p = static_cast<const Polyline3dEntity&>(curve);
      auto assign = [](Polyline3dEntity& target, const std::vector<PathPoint>& points) {
        target.vertices.clear();
        target.flags = static_cast<std::int16_t>(target.flags & ~1);
        for (const PathPoint& pp : points) target.vertices.push_back({pp.point});
      };
      return breakPolyline(p, curve, p.closed(), static_cast<std::size_t>(range->end), {}, first,
                           second, assign);
    }
    case CurveKind::Polyline2d: {
      const auto& p = static_cast<const Polyline2dEntity&>(curve);
      const Ocs ocs(p.normal);
      // The pieces are plain polylines: the vertices that framed a fitted
      // curve, and the fitting, go.
      auto assign = [&ocs](Polyline2dEntity& target, const std::vector<PathPoint>& points) {
        target.vertices.clear();
        target.flags = static_cast<std::int16_t>(target.flags & ~(1 | 2 | 4));
        for (const PathPoint& pp : points) {
          const Point3d local = ocs.fromWorld(pp.point);
          PolylineVertex v;
          v.position = {local.x, local.y, 0.0};
          v.bulge = pp.bulge;
          target.vertices.push_back(v);
        }
      };
      return breakPolyline(p, curve, p.closed(), static_cast<std::size_t>(range->end), bulges2d(p),
                           first, second, assign);
    }
    case CurveKind::Ellipse:
      return breakEllipse(static_cast<const EllipseEntity&>(curve), *range, first, second);
    case CurveKind::Spline:
      return breakSpline(static_cast<const SplineEntity&>(curve), *range, first, second);
    case CurveKind::Mline:
      break;
  }
  return {nullptr, nullptr, L"Mlines cannot be broken."};
}

}  // namespace host::geometry
