// Makers of entities and checks of points and boxes, shared by the geometry
// tests.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "KeptText.h"
#include "host/db/Database.h"

namespace host::geometry::test {

using platform::Extents;

constexpr double kPi = 3.14159265358979323846;

inline std::string text(const Point3d& p) {
  std::ostringstream out;
  out.precision(17);
  out << "(" << p.x << ", " << p.y << ", " << p.z << ")";
  return out.str();
}

inline double distance(const Point3d& a, const Point3d& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                   (a.z - b.z) * (a.z - b.z));
}

inline bool close(const Point3d& a, const Point3d& b, double tolerance) {
  return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance &&
         std::fabs(a.z - b.z) <= tolerance;
}

inline ::testing::AssertionResult near(const std::optional<Point3d>& actual,
                                       const Point3d& expected, double tolerance = 1e-9) {
  if (!actual) return ::testing::AssertionFailure() << "no point, expected " << text(expected);
  if (close(*actual, expected, tolerance)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << text(*actual) << " is not " << text(expected);
}

// The points in the order given.
inline ::testing::AssertionResult near(const std::vector<Point3d>& actual,
                                       const std::vector<Point3d>& expected,
                                       double tolerance = 1e-9) {
  bool same = actual.size() == expected.size();
  for (std::size_t i = 0; same && i < actual.size(); ++i) {
    same = close(actual[i], expected[i], tolerance);
  }
  if (same) return ::testing::AssertionSuccess();
  auto list = [](const std::vector<Point3d>& points) {
    std::string s = "{";
    for (const Point3d& p : points) s += " " + text(p);
    return s + " }";
  };
  return ::testing::AssertionFailure() << list(actual) << " is not " << list(expected);
}

inline ::testing::AssertionResult box(const Extents& e, const Point3d& lo, const Point3d& hi,
                                      double tolerance = 1e-9) {
  if (e.isEmpty()) return ::testing::AssertionFailure() << "empty extents";
  if (close(e.min, lo, tolerance) && close(e.max, hi, tolerance)) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
         << text(e.min) << "-" << text(e.max) << " is not " << text(lo) << "-" << text(hi);
}

inline bool contains(const Extents& e, const Point3d& p, double tolerance) {
  return p.x >= e.min.x - tolerance && p.x <= e.max.x + tolerance && p.y >= e.min.y - tolerance &&
         p.y <= e.max.y + tolerance && p.z >= e.min.z - tolerance && p.z <= e.max.z + tolerance;
}

inline LineEntity line(const Point3d& a, const Point3d& b) {
  LineEntity e;
  e.start = a;
  e.end = b;
  return e;
}

inline ArcEntity arc(const Point3d& center, double radius, double start, double end,
                     const Point3d& normal = kUnitZ) {
  ArcEntity e;
  e.center = center;
  e.radius = radius;
  e.startAngle = start;
  e.endAngle = end;
  e.normal = normal;
  return e;
}

inline CircleEntity circle(const Point3d& center, double radius, const Point3d& normal = kUnitZ) {
  CircleEntity e;
  e.center = center;
  e.radius = radius;
  e.normal = normal;
  return e;
}

inline EllipseEntity ellipse(const Point3d& center, const Point3d& major, double ratio,
                             double start = 0.0, double end = 2.0 * kPi,
                             const Point3d& normal = kUnitZ) {
  EllipseEntity e;
  e.center = center;
  e.majorAxis = major;
  e.ratio = ratio;
  e.startParam = start;
  e.endParam = end;
  e.normal = normal;
  return e;
}

inline LwPolylineEntity lw(std::vector<LwVertex> vertices, bool closed = false,
                           double elevation = 0.0, const Point3d& normal = kUnitZ) {
  LwPolylineEntity e;
  e.vertices = std::move(vertices);
  e.closed = closed;
  e.elevation = elevation;
  e.normal = normal;
  return e;
}

inline PolylineVertex vertex(const Point3d& p, double bulge = 0.0, std::int16_t flags = 0) {
  PolylineVertex v;
  v.position = p;
  v.bulge = bulge;
  v.flags = flags;
  return v;
}

inline Polyline3dEntity polyline3d(const std::vector<Point3d>& points, std::int16_t flags = 0) {
  Polyline3dEntity e;
  for (const Point3d& p : points) e.vertices.push_back(vertex(p));
  e.flags = flags;
  return e;
}

inline MlineEntity mline(const std::vector<Point3d>& points, std::int16_t flags = 0) {
  MlineEntity e;
  for (const Point3d& p : points) {
    MlineVertex v;
    v.position = p;
    e.vertices.push_back(v);
  }
  e.flags = flags;
  return e;
}

inline SplineEntity spline(int degree, std::vector<Point3d> controls,
                           std::vector<double> knots = {}) {
  SplineEntity s;
  s.degree = static_cast<std::int16_t>(degree);
  s.controlPoints = std::move(controls);
  s.knots = std::move(knots);
  return s;
}

// The entity on the heap, for tables of entities of many kinds.
template <typename T>
std::shared_ptr<const Entity> shared(T entity) {
  return std::make_shared<T>(std::move(entity));
}

// A new entity of the drawing whose source is the text given, as the reader
// leaves the kinds it keeps as text.
template <typename T>
const Entity& addWithSource(Database& db, const std::string& source) {
  db.setSourceText(std::make_shared<std::string>(source),
                   std::make_shared<host::dxf::DxfKeptText>());
  auto e = std::make_unique<T>();
  e->source = {0, static_cast<std::uint32_t>(source.size())};
  return *db.entity(db.addEntity(std::move(e), db.modelSpace()));
}

}  // namespace host::geometry::test
