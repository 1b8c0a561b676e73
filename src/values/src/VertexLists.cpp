// Vertex lists through the port's geometry. Curves the port makes for us (the
// pieces of an exploded polyline, an arc's spline, a spline's polyline) are
// released as soon as their points are read.
#include "values/VertexLists.h"

#include <cfloat>
#include <cmath>
#include <optional>

#include "oddata/Port.h"
#include "oddata/Precision.h"

namespace zarvel {
namespace {

using platform::EntityClass;
using platform::EntityGeometry;
using platform::ObjectId;
using platform::Point3d;

// The precision at which the arcs of a bulged polyline are sampled.
constexpr int kArcSamplingPrecision = 99;
// How near the ends of a closed polyline's list count as one point when its
// centre is taken.
constexpr double kRepeatedEndTolerance = 0.0001;

bool hasBulges(EntityGeometry& geometry, ObjectId polyline) {
  for (double bulge : geometry.bulges(polyline)) {
    if (bulge != 0.0) return true;
  }
  return false;
}

// The points of each piece in turn, or nothing when the explode gives too few
// for a path.
PointList3d explodedPoints(EntityGeometry& geometry, ObjectId polyline) {
  PointList3d points;
  for (ObjectId piece : geometry.explode(polyline)) {
    const PointList3d piecePoints = curvePoints(piece, kArcSamplingPrecision);
    points.insert(points.end(), piecePoints.begin(), piecePoints.end());
    geometry.release(piece);
  }
  if (points.size() < 2) points.clear();
  return points;
}

// A closed polyline's list ends where it began, unless it already does to the
// precision the drawing shows.
void closeList(EntityGeometry& geometry, ObjectId polyline, PointList3d& points) {
  if (!geometry.isClosed(polyline) || points.size() < 2) return;
  if (distance3d(points.front(), points.back()) > luprecTolerance()) {
    points.push_back(points.front());
  }
}

// The vertex list of an entity whose class the caller has asked already.
PointList3d listOf(EntityGeometry& geometry, ObjectId entity, EntityClass kind) {
  if (kind == EntityClass::Line || kind == EntityClass::Mline || kind == EntityClass::Spline) {
    return geometry.vertices(entity);
  }
  PointList3d points;
  if (kind == EntityClass::LwPolyline) {
    if (hasBulges(geometry, entity)) points = explodedPoints(geometry, entity);
    if (points.empty()) points = geometry.vertices(entity);
  } else if (kind == EntityClass::Polyline3d) {
    points = geometry.vertices(entity);
  } else {
    return {};
  }
  closeList(geometry, entity, points);
  return points;
}

// The points of a spline sampled as the polyline it becomes.
PointList3d splinePoints(EntityGeometry& geometry, ObjectId spline, int precision) {
  const ObjectId polyline = geometry.toPolyline(spline, precision);
  if (polyline.isNull()) return {};
  PointList3d points = vertexList(polyline);
  geometry.release(polyline);
  return points;
}

Point3d meanOf(const Point3d& a, const Point3d& b) {
  return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0, (a.z + b.z) / 2.0};
}

// The mean of a closed outline's vertices, the repeated first one left out.
Point3d outlineCenter(const PointList3d& points) {
  std::size_t count = points.size();
  if (count > 1 && distance3d(points.front(), points.back()) <= kRepeatedEndTolerance) --count;
  Point3d sum;
  for (std::size_t i = 0; i < count; ++i) {
    sum.x += points[i].x;
    sum.y += points[i].y;
  }
  return {sum.x / static_cast<double>(count), sum.y / static_cast<double>(count), 0.0};
}

// The plan point of the kinds that answer by their vertices; nothing when
// the list is empty, and the box answers instead.
std::optional<Point3d> vertexPlanPoint(ObjectId entity, EntityClass kind, PlanMode mode) {
  EntityGeometry& geometry = port().geometry();
  const PointList3d points = listOf(geometry, entity, kind);
  if (points.empty()) return std::nullopt;
  switch (mode) {
    case PlanMode::First:
      return points.front();
    case PlanMode::Last:
      return points.back();
    case PlanMode::Center:
      break;
  }
  const bool outline = kind == EntityClass::LwPolyline || kind == EntityClass::Polyline3d;
  if (outline && geometry.isClosed(entity)) return outlineCenter(points);
  return pathMidpoint(points);
}

Point3d boxPoint(const platform::Extents& box, PlanMode planMode, HeightMode heightMode) {
  Point3d p;
  switch (planMode) {
    case PlanMode::First:
      p.x = box.min.x;
      p.y = box.min.y;
      break;
    case PlanMode::Last:
      p.x = box.max.x;
      p.y = box.max.y;
      break;
    case PlanMode::Center:
      p.x = (box.min.x + box.max.x) / 2.0;
      p.y = (box.min.y + box.max.y) / 2.0;
      break;
  }
  switch (heightMode) {
    case HeightMode::Min:
      p.z = box.min.z;
      break;
    case HeightMode::Max:
      p.z = box.max.z;
      break;
    case HeightMode::Average:
      p.z = (box.min.z + box.max.z) / 2.0;
      break;
  }
  return p;
}

}  // namespace

Point3d undeterminedPoint() {
  return {DBL_MAX, DBL_MAX, DBL_MAX};
}

PointList3d vertexList(ObjectId entity) {
  EntityGeometry& geometry = port().geometry();
  return listOf(geometry, entity, geometry.entityClass(entity));
}

PointList3d curvePoints(ObjectId curve, int precision) {
  EntityGeometry& geometry = port().geometry();
  const EntityClass kind = geometry.entityClass(curve);
  if (kind == EntityClass::Spline) return splinePoints(geometry, curve, precision);
  if (kind != EntityClass::Arc && kind != EntityClass::Circle) return vertexList(curve);
  const ObjectId spline = geometry.spline(curve);
  if (spline.isNull()) return {};
  PointList3d points = splinePoints(geometry, spline, precision);
  geometry.release(spline);
  return points;
}

Point3d pathMidpoint(const PointList3d& points) {
  if (points.size() < 2) return undeterminedPoint();
  if (points.size() == 2) return meanOf(points[0], points[1]);
  double total = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) total += distance3d(points[i - 1], points[i]);
  const double half = total / 2.0;
  double walked = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double segment = distance3d(points[i - 1], points[i]);
    walked += segment;
    if (walked == half) return points[i];
    if (walked > half) {
      // Back from the segment's end towards its start by what was overshot.
      const double t = (walked - half) / segment;
      const Point3d& from = points[i];
      const Point3d& to = points[i - 1];
      return {from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t,
              from.z + (to.z - from.z) * t};
    }
  }
  // Rounding in the sums can leave the half a hair beyond the last vertex.
  return points.back();
}

// An entity that won't open has neither class nor box, which the port says
// without a separate test of opening.
Point3d coordinatePoint(ObjectId entity, PlanMode planMode, HeightMode heightMode) {
  EntityGeometry& geometry = port().geometry();
  const EntityClass kind = geometry.entityClass(entity);
  if (kind == EntityClass::BlockReference || kind == EntityClass::Text) {
    const std::optional<Point3d> position = geometry.position(entity);
    return position ? *position : undeterminedPoint();
  }
  const std::optional<platform::Extents> box = geometry.extents(entity);
  if (!box) return undeterminedPoint();
  Point3d p = boxPoint(*box, planMode, heightMode);
  const bool listed = kind == EntityClass::Line || kind == EntityClass::LwPolyline ||
                      kind == EntityClass::Polyline3d || kind == EntityClass::Mline;
  if (listed) {
    if (const std::optional<Point3d> plan = vertexPlanPoint(entity, kind, planMode)) {
      p.x = plan->x;
      p.y = plan->y;
    }
  }
  return p;
}

}  // namespace zarvel
