// Extents of every kind against boxes worked out by hand, and the property
// that the box holds every point of the curve and touches its extremes.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "KeptText.h"
#include "Splines.h"
#include "host/db/Database.h"
#include "host/dxf/DrawingReader.h"
#include "host/geometry/Extents.h"

namespace {

namespace g = host::geometry;
using host::Database;
using host::ObjectId;
using platform::Extents;
using platform::Point3d;

constexpr double kPi = 3.141592653589793;
const double kHalfRoot2 = std::sqrt(0.5);

std::string text(const Point3d& p) {
  std::ostringstream out;
  out.precision(12);
  out << "(" << p.x << ", " << p.y << ", " << p.z << ")";
  return out.str();
}

::testing::AssertionResult box(const Extents& e, const Point3d& lo, const Point3d& hi,
                               double tolerance = 1e-9) {
  if (e.isEmpty()) return ::testing::AssertionFailure() << "empty extents";
  auto close = [&](const Point3d& a, const Point3d& b) {
    return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance &&
           std::fabs(a.z - b.z) <= tolerance;
  };
  if (close(e.min, lo) && close(e.max, hi)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << text(e.min) << "-" << text(e.max) << " is not " << text(lo) << "-" << text(hi);
}

::testing::AssertionResult near(const Point3d& a, const Point3d& b, double tolerance = 1e-9) {
  if (std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance &&
      std::fabs(a.z - b.z) <= tolerance) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << text(a) << " is not " << text(b);
}

bool contains(const Extents& e, const Point3d& p, double tolerance) {
  return p.x >= e.min.x - tolerance && p.x <= e.max.x + tolerance && p.y >= e.min.y - tolerance &&
         p.y <= e.max.y + tolerance && p.z >= e.min.z - tolerance && p.z <= e.max.z + tolerance;
}

class ExtentsTest : public ::testing::Test {
 protected:
  Extents of(const host::Entity& e) const { return g::extentsOf(db, e); }
  ObjectId addBlock(const std::wstring& name, const Point3d& base) {
    auto block = std::make_unique<host::BlockRecord>();
    block->name = name;
    block->basePoint = base;
    block->handle = db.takeHandle();
    return db.addLoaded(std::move(block));
  }
  template <typename T>
  ObjectId add(std::unique_ptr<T> e, ObjectId block) {
    return db.addEntity(std::move(e), block);
  }
  Database db;
};

std::unique_ptr<host::ArcEntity> arc(const Point3d& c, double r, double from, double to,
                                     const Point3d& normal = host::kUnitZ) {
  auto a = std::make_unique<host::ArcEntity>();
  a->center = c;
  a->radius = r;
  a->startAngle = from;
  a->endAngle = to;
  a->normal = normal;
  return a;
}

std::unique_ptr<host::CircleEntity> circle(const Point3d& c, double r) {
  auto e = std::make_unique<host::CircleEntity>();
  e->center = c;
  e->radius = r;
  return e;
}

std::unique_ptr<host::LineEntity> line(const Point3d& a, const Point3d& b) {
  auto e = std::make_unique<host::LineEntity>();
  e->start = a;
  e->end = b;
  return e;
}

// --- Points, lines, unknown kinds -------------------------------------------------

TEST_F(ExtentsTest, PointsAndLinesAreTheirOwnPoints) {
  host::PointEntity p;
  p.position = {1, 2, 3};
  EXPECT_TRUE(box(of(p), {1, 2, 3}, {1, 2, 3}));
  EXPECT_TRUE(box(of(*line({4, -1, 0}, {-2, 5, 7})), {-2, -1, 0}, {4, 5, 7}));
}

TEST_F(ExtentsTest, KindsWithoutGeometryHaveEmptyExtents) {
  host::UnknownEntity unknown;
  unknown.dxfName = "WIPEOUT";
  EXPECT_TRUE(of(unknown).isEmpty());
  // Kept as text, but made here without any.
  EXPECT_TRUE(of(host::HatchEntity()).isEmpty());
  EXPECT_TRUE(of(host::Solid3dEntity()).isEmpty());
  EXPECT_TRUE(of(host::RegionEntity()).isEmpty());
  EXPECT_TRUE(of(host::SplineEntity()).isEmpty());
}

// --- Arcs and circles ---------------------------------------------------------------

TEST_F(ExtentsTest, QuarterArcsTakeTheirEndsAndTheAxesTheyCross) {
  EXPECT_TRUE(box(of(*arc({0, 0, 0}, 1, 0, kPi / 2)), {0, 0, 0}, {1, 1, 0}));
  EXPECT_TRUE(box(of(*arc({0, 0, 0}, 1, kPi / 4, 3 * kPi / 4)), {-kHalfRoot2, kHalfRoot2, 0},
                  {kHalfRoot2, 1, 0}));
  // Across angle zero: from 315 to 45 degrees.
  EXPECT_TRUE(box(of(*arc({2, 3, 0}, 2, 7 * kPi / 4, kPi / 4)),
                  {2 + 2 * kHalfRoot2, 3 - 2 * kHalfRoot2, 0}, {4, 3 + 2 * kHalfRoot2, 0}));
  // Three quarters, from 90 to 0 degrees the long way round.
  EXPECT_TRUE(box(of(*arc({0, 0, 5}, 1, kPi / 2, 0)), {-1, -1, 5}, {1, 1, 5}));
}

TEST_F(ExtentsTest, CirclesAreSquaresInTheirPlane) {
  EXPECT_TRUE(box(of(*circle({1, 2, 3}, 2)), {-1, 0, 3}, {3, 4, 3}));
  // Normal along world X: the plane's axes are world Y and Z, its centre's
  // third coordinate runs along the normal.
  auto c = circle({0, 0, 5}, 1);
  c->normal = {1, 0, 0};
  EXPECT_TRUE(box(of(*c), {5, -1, -1}, {5, 1, 1}));
}

TEST_F(ExtentsTest, ArcInATiltedPlaneTakesTheExtremesOfItsWorldCoordinates) {
  // Normal (0, -1, 1)/sqrt2: the plane's X axis is world X, its Y axis is
  // (0, 1, 1)/sqrt2, so a point at angle t lies at (r cos t, r sin t/sqrt2, r sin t/sqrt2)
  // from the centre, and the centre (1, 2, 3) is at (1, -1/sqrt2, 5/sqrt2).
  const Point3d n{0, -1, 1};
  const double a = kHalfRoot2;
  EXPECT_TRUE(
      box(of(*arc({1, 2, 3}, 2, 0, kPi / 2, n)), {1, -a, 5 * a}, {3, -a + 2 * a, 5 * a + 2 * a}));
  // From 45 to 135 degrees: the top of the arc is the highest in Y and Z.
  EXPECT_TRUE(
      box(of(*arc({0, 0, 0}, 2, kPi / 4, 3 * kPi / 4, n)), {-2 * a, 1, 1}, {2 * a, 2 * a, 2 * a}));
}

// --- Ellipses -------------------------------------------------------------------

TEST_F(ExtentsTest, EllipsesFullAndPartial) {
  host::EllipseEntity e;
  e.center = {1, 1, 0};
  e.majorAxis = {2, 0, 0};
  e.ratio = 0.5;
  EXPECT_TRUE(box(of(e), {-1, 0, 0}, {3, 2, 0}));
  e.startParam = 0;
  e.endParam = kPi / 2;
  EXPECT_TRUE(box(of(e), {1, 1, 0}, {3, 2, 0}));
  e.startParam = kPi / 2;
  e.endParam = 3 * kPi / 2;
  EXPECT_TRUE(box(of(e), {-1, 0, 0}, {1, 2, 0}));
  // Parameters across zero.
  e.startParam = 3 * kPi / 2;
  e.endParam = kPi / 2;
  EXPECT_TRUE(box(of(e), {1, 0, 0}, {3, 2, 0}));
  // A whole turn from elsewhere than zero, its end rounded a little past it.
  e.startParam = 0.1;
  e.endParam = std::nextafter(0.1 + 2 * kPi, 10.0);
  EXPECT_TRUE(box(of(e), {-1, 0, 0}, {3, 2, 0}));
}

TEST_F(ExtentsTest, TurnedEllipseReachesBeyondItsAxesEnds) {
  // Major (3, 4), minor (-4, 3) * 0.4: x reaches sqrt(3^2 + 1.6^2), y sqrt(4^2 + 1.2^2).
  host::EllipseEntity e;
  e.majorAxis = {3, 4, 0};
  e.ratio = 0.4;
  const double hx = std::sqrt(9 + 1.6 * 1.6);
  const double hy = std::sqrt(16 + 1.2 * 1.2);
  EXPECT_TRUE(box(of(e), {-hx, -hy, 0}, {hx, hy, 0}));
}

// --- Polylines ------------------------------------------------------------------

TEST_F(ExtentsTest, LightweightPolylineBulgesAreArcs) {
  host::LwPolylineEntity p;
  // Bulge 1: a half circle counterclockwise from (0,0) to (2,0), below the chord.
  p.vertices = {{0, 0, 1}, {2, 0, 0}};
  p.elevation = 5;
  EXPECT_TRUE(box(of(p), {0, -1, 5}, {2, 0, 5}));
  p.vertices[0].bulge = -1;
  EXPECT_TRUE(box(of(p), {0, 0, 5}, {2, 1, 5}));
  // A quarter circle's bulge, tan(22.5 degrees): from (1,0) to (0,1) round (0,0).
  p.vertices = {{1, 0, std::tan(kPi / 8)}, {0, 1, 0}};
  EXPECT_TRUE(box(of(p), {0, 0, 5}, {1, 1, 5}));
}

TEST_F(ExtentsTest, ClosingSegmentAndPlaneOfALightweightPolyline) {
  host::LwPolylineEntity p;
  p.vertices = {{0, 0, 0}, {2, 0, 0}, {2, 2, 1}};
  EXPECT_TRUE(box(of(p), {0, 0, 0}, {2, 2, 0}));
  // Closed, the last vertex's bulge rounds the way back from (2,2) to (0,0):
  // a half circle round (1,1) of radius sqrt2 from 45 to 225 degrees, on the
  // side away from the triangle, through its top and its left.
  p.closed = true;
  const double r = std::sqrt(2.0);
  EXPECT_TRUE(box(of(p), {1 - r, 0, 0}, {2, 1 + r, 0}));
  // Seen from below, X turns round and the elevation goes down.
  p.normal = {0, 0, -1};
  p.elevation = 2;
  EXPECT_TRUE(box(of(p), {-2, 0, -2}, {r - 1, 1 + r, -2}));
}

TEST_F(ExtentsTest, OldStylePolylines) {
  host::Polyline2dEntity p2;
  p2.elevation = 1;
  host::PolylineVertex v;
  v.position = {0, 0, 0};
  v.bulge = -1;
  p2.vertices.push_back(v);
  v.position = {4, 0, 0};
  v.bulge = 0;
  p2.vertices.push_back(v);
  // A frame point of a spline fit is not drawn.
  v.position = {100, 100, 0};
  v.flags = 16;
  p2.vertices.push_back(v);
  EXPECT_TRUE(box(of(p2), {0, 0, 1}, {4, 2, 1}));

  host::Polyline3dEntity p3;
  v.flags = 0;
  for (const Point3d& q : {Point3d{1, 2, 3}, Point3d{-1, 5, 0}, Point3d{4, 0, -2}}) {
    v.position = q;
    p3.vertices.push_back(v);
  }
  EXPECT_TRUE(box(of(p3), {-1, 0, -2}, {4, 5, 3}));
}

TEST_F(ExtentsTest, MlinesTakeTheirElementsOrElseTheirVertices) {
  host::MlineEntity m;
  host::MlineVertex v;
  v.direction = {1, 0, 0};
  v.miter = {0, 1, 0};
  v.position = {0, 0, 0};
  m.vertices.push_back(v);
  v.position = {10, 0, 0};
  m.vertices.push_back(v);
  EXPECT_TRUE(box(of(m), {0, 0, 0}, {10, 0, 0}));
  for (auto& vertex : m.vertices) vertex.elementParams = {{0.5}, {-0.5}};
  EXPECT_TRUE(box(of(m), {0, -0.5, 0}, {10, 0.5, 0}));
}

// --- Splines --------------------------------------------------------------------

host::SplineEntity bezier(std::vector<Point3d> controls) {
  host::SplineEntity s;
  s.degree = static_cast<std::int16_t>(controls.size() - 1);
  s.controlPoints = std::move(controls);
  s.knots.assign(s.controlPoints.size(), 0.0);
  s.knots.insert(s.knots.end(), s.controlPoints.size(), 1.0);
  return s;
}

TEST_F(ExtentsTest, SplineReachesItsCurveNotItsControlPoints) {
  // y(t) = 9t - 21t^2 + 12t^3, extreme where 36t^2 - 42t + 9 = 0.
  const host::SplineEntity s = bezier({{0, 0, 0}, {1, 3, 0}, {2, -1, 0}, {3, 0, 0}});
  auto y = [](double t) { return 9 * t - 21 * t * t + 12 * t * t * t; };
  const double root = std::sqrt(42.0 * 42.0 - 4 * 36 * 9);
  const double top = y((42 - root) / 72);
  const double bottom = y((42 + root) / 72);
  EXPECT_TRUE(box(of(s), {0, bottom, 0}, {3, top, 0}, 1e-9));
}

TEST_F(ExtentsTest, RationalSplineOfAnArcIsTheArcsBox) {
  // One rational quadratic span of 120 degrees, from -40 to 80 degrees: the
  // middle control point lies at 1/cos(60) along the bisector, of weight cos(60).
  const double deg = kPi / 180;
  auto at = [&](double angle, double r) {
    return Point3d{r * std::cos(angle), r * std::sin(angle), 0};
  };
  host::SplineEntity s = bezier({at(-40 * deg, 1), at(20 * deg, 2), at(80 * deg, 1)});
  s.weights = {1, 0.5, 1};
  s.flags = 4;
  EXPECT_TRUE(
      box(of(s), {std::cos(80 * deg), std::sin(-40 * deg), 0}, {1, std::sin(80 * deg), 0}, 1e-9));
}

TEST_F(ExtentsTest, SplineBoxHoldsItsPointsAndTouchesItsExtremes) {
  host::SplineEntity s;
  s.degree = 3;
  s.controlPoints = {{0, 0, 0},  {2, 5, 1}, {4, -3, 2}, {6, 4, -1},
                     {7, -2, 0}, {9, 1, 3}, {10, 6, -2}};
  s.knots = {0, 0, 0, 0, 0.2, 0.5, 0.55, 1, 1, 1, 1};
  s.weights = {1, 2, 0.5, 1, 3, 1, 1};
  s.flags = 4;
  const Extents e = of(s);
  Extents dense;
  for (int i = 0; i <= 20000; ++i) {
    const Point3d p = g::evaluate(s, i / 20000.0);
    EXPECT_TRUE(contains(e, p, 1e-9)) << text(p);
    dense.add(p);
  }
  EXPECT_TRUE(box(e, dense.min, dense.max, 1e-6));
}

TEST_F(ExtentsTest, SplineWithFitPointsOnlyHoldsThemAndItsCurve) {
  host::SplineEntity s;
  s.fitPoints = {{0, 0, 0}, {3, 4, 0}, {6, -1, 2}, {9, 3, 1}};
  const Extents e = of(s);
  ASSERT_FALSE(e.isEmpty());
  for (const Point3d& p : s.fitPoints) EXPECT_TRUE(contains(e, p, 1e-9)) << text(p);
  // The size of the fit points sets how close the box comes to the curve.
  for (const Point3d& p : g::sample(s, 1e-9)) EXPECT_TRUE(contains(e, p, 1e-5)) << text(p);
}

TEST_F(ExtentsTest, PeriodicSplineListingItsDistinctPoints) {
  // A closed cubic over a square's corners with the knots of the wrapped set:
  // the curve stays inside the square and reaches out symmetrically.
  host::SplineEntity s;
  s.degree = 3;
  s.flags = 2 | 1;
  s.controlPoints = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
  for (int k = -3; k <= 4 + 3; ++k) s.knots.push_back(k);
  const Extents e = of(s);
  ASSERT_FALSE(e.isEmpty());
  EXPECT_NEAR(e.max.x, -e.min.x, 1e-6);
  EXPECT_NEAR(e.max.y, -e.min.y, 1e-6);
  EXPECT_LT(e.max.x, 1.0);
  EXPECT_GT(e.max.x, 0.5);
  for (const Point3d& p : g::sample(s, 1e-9)) EXPECT_TRUE(contains(e, p, 1e-5)) << text(p);
}

// --- Texts ----------------------------------------------------------------------

// "ABCDE" of height 2: 5 characters of 1.2 make it 6 wide.
host::TextData abcde(std::int16_t horizontal, std::int16_t vertical) {
  host::TextData t;
  t.text = L"ABCDE";
  t.height = 2;
  t.position = {10, 20, 0};
  t.alignmentPoint = {10, 20, 0};
  t.horizontalAlignment = horizontal;
  t.verticalAlignment = vertical;
  return t;
}

Extents boxOf(const g::TextBox& b) {
  Extents e;
  for (const Point3d& p : b.corners) e.add(p);
  return e;
}

TEST(TextBoxTest, HorizontalAlignments) {
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(0, 0))), {10, 20, 0}, {16, 22, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(1, 0))), {7, 20, 0}, {13, 22, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(2, 0))), {4, 20, 0}, {10, 22, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(4, 0))), {7, 19, 0}, {13, 21, 0}));
}

TEST(TextBoxTest, VerticalAlignments) {
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(0, 1))), {10, 20, 0}, {16, 22, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(0, 2))), {10, 19, 0}, {16, 21, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(0, 3))), {10, 18, 0}, {16, 20, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(1, 3))), {7, 18, 0}, {13, 20, 0}));
  EXPECT_TRUE(box(boxOf(g::textBox(abcde(2, 2))), {4, 19, 0}, {10, 21, 0}));
}

TEST(TextBoxTest, NonLeftAlignmentsHangOffTheAlignmentPoint) {
  host::TextData t = abcde(2, 0);
  t.position = {0, 0, 0};  // where the text happened to be laid out last
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {4, 20, 0}, {10, 22, 0}));
  t = abcde(0, 0);
  t.alignmentPoint = {0, 0, 0};
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {10, 20, 0}, {16, 22, 0}));
}

TEST(TextBoxTest, AlignedAndFitRunBetweenTheirPoints) {
  host::TextData t = abcde(3, 0);
  t.position = {0, 0, 0};
  t.alignmentPoint = {12, 0, 0};
  // Aligned: twice as wide as its characters, so twice as high.
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {0, 0, 0}, {12, 4, 0}));
  t.horizontalAlignment = 5;
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {0, 0, 0}, {12, 2, 0}));
  // Their points set the direction; the rotation does not count.
  t.alignmentPoint = {0, 12, 0};
  t.rotation = 1.0;
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {-2, 0, 0}, {0, 12, 0}));
}

TEST(TextBoxTest, RotationQuarterTurn) {
  host::TextData t = abcde(0, 0);
  t.rotation = kPi / 2;
  const g::TextBox b = g::textBox(t);
  EXPECT_TRUE(box(boxOf(b), {8, 20, 0}, {10, 26, 0}));
  // Counterclockwise from the text's own lower left.
  EXPECT_TRUE(near(b.corners[0], {10, 20, 0}));
  EXPECT_TRUE(near(b.corners[1], {10, 26, 0}));
  EXPECT_TRUE(near(b.corners[2], {8, 26, 0}));
  t = abcde(2, 3);  // top right
  t.rotation = kPi / 2;
  // Local x in [-6, 0], y in [-2, 0]; turned, x' = -y in [0, 2], y' = x in [-6, 0].
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {10, 14, 0}, {12, 20, 0}));
}

TEST(TextBoxTest, WidthFactorObliqueAndMirrors) {
  host::TextData t = abcde(0, 0);
  t.widthFactor = 0.5;
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {10, 20, 0}, {13, 22, 0}));
  t.widthFactor = 1;
  t.oblique = kPi / 4;  // the top slides right by the height
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {10, 20, 0}, {18, 22, 0}));
  t.oblique = 0;
  t.generation = 2;  // backwards: runs left of its insertion point
  const g::TextBox b = g::textBox(t);
  EXPECT_TRUE(box(boxOf(b), {4, 20, 0}, {10, 22, 0}));
  EXPECT_TRUE(near(b.corners[0], {4, 20, 0}));
  t.generation = 4;  // upside down: hangs below the baseline
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {10, 18, 0}, {16, 20, 0}));
}

TEST(TextBoxTest, SpecialCharacterCodesAndPlane) {
  host::TextData t = abcde(0, 0);
  t.text = L"%%u30%%d";  // underlined "30" and a degree sign
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {10, 20, 0}, {13.6, 22, 0}));
  t.text = L"ABCDE";
  t.normal = {0, 0, -1};
  t.position = {10, 20, 3};
  EXPECT_TRUE(box(boxOf(g::textBox(t)), {-16, 20, -3}, {-10, 22, -3}));
}

TEST_F(ExtentsTest, TextsAttributesAndDefinitionsShareTheBox) {
  host::TextEntity text;
  text.data = abcde(1, 2);
  host::AttributeEntity attribute;
  attribute.data = abcde(1, 2);
  host::AttributeDefinitionEntity definition;
  definition.data = abcde(1, 2);
  for (const host::Entity* e :
       {static_cast<const host::Entity*>(&text), static_cast<const host::Entity*>(&attribute),
        static_cast<const host::Entity*>(&definition)}) {
    EXPECT_TRUE(box(of(*e), {7, 19, 0}, {13, 21, 0}));
  }
}

// --- Multiline texts -------------------------------------------------------------

host::MTextEntity mtext(const std::wstring& s, std::int16_t attachment) {
  host::MTextEntity m;
  m.text = s;
  m.height = 1;
  m.position = {0, 10, 0};
  m.attachment = attachment;
  return m;
}

// Two lines of height 1: 1 + 5/3.
const double kTwoLines = 1 + 5.0 / 3.0;

TEST(MTextBoxTest, AttachmentPlacesTheBox) {
  // "World!" is the longer line: 6 characters of 0.6.
  const std::wstring s = L"Hello\\PWorld!";
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(s, 1))), {0, 10 - kTwoLines, 0}, {3.6, 10, 0}));
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(s, 5))), {-1.8, 10 - kTwoLines / 2, 0},
                  {1.8, 10 + kTwoLines / 2, 0}));
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(s, 9))), {-3.6, 10, 0}, {0, 10 + kTwoLines, 0}));
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(s, 3))), {-3.6, 10 - kTwoLines, 0}, {0, 10, 0}));
}

TEST(MTextBoxTest, FormattingCodesShowNothing) {
  // Two lines of two characters each, once the codes are gone.
  const std::wstring s = L"{\\fArial|b1|i0;Hi}\\P\\H2x;\\LYo\\l";
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(s, 1))), {0, 10 - kTwoLines, 0}, {1.2, 10, 0}));
  // Escaped braces and backslashes show; a stack is as wide as its wider part.
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(L"\\{a\\}\\\\", 7))), {0, 10, 0}, {2.4, 11, 0}));
  EXPECT_TRUE(box(boxOf(g::mtextBox(mtext(L"1\\S12/345;", 7))), {0, 10, 0}, {2.4, 11, 0}));
}

TEST(MTextBoxTest, ReferenceWidthWrapsAndLineSpacingStretches) {
  // Ten characters are 6 wide; in a width of 4 they take two lines.
  host::MTextEntity m = mtext(L"abcdefghij", 7);
  m.referenceWidth = 4;
  EXPECT_TRUE(box(boxOf(g::mtextBox(m)), {0, 10, 0}, {4, 10 + kTwoLines, 0}));
  m.lineSpacing = 2;
  EXPECT_TRUE(box(boxOf(g::mtextBox(m)), {0, 10, 0}, {4, 10 + 1 + 10.0 / 3.0, 0}));
}

TEST(MTextBoxTest, DirectionOrRotationTurnsTheBox) {
  host::MTextEntity m = mtext(L"abcde", 7);  // 3 wide, 1 high from the bottom left
  m.direction = {0, 2, 0};
  EXPECT_TRUE(box(boxOf(g::mtextBox(m)), {-1, 10, 0}, {0, 13, 0}));
  m.direction = {1, 0, 0};
  m.rotation = kPi;
  EXPECT_TRUE(box(boxOf(g::mtextBox(m)), {-3, 9, 0}, {0, 10, 0}));
}

TEST_F(ExtentsTest, MTextEntityUsesItsBox) {
  EXPECT_TRUE(box(of(mtext(L"abcde", 1)), {0, 9, 0}, {3, 10, 0}));
}

// --- Block references ------------------------------------------------------------

// A turn about Z and a shift, composed by hand to follow references' copies.
struct Affine3 {
  double c = 1.0;
  double s = 0.0;
  Point3d t;
  static Affine3 turn(double angle, const Point3d& shift) {
    return {std::cos(angle), std::sin(angle), shift};
  }
  Point3d apply(const Point3d& p) const {
    return {c * p.x - s * p.y + t.x, s * p.x + c * p.y + t.y, p.z + t.z};
  }
  Affine3 after(const Affine3& inner) const {
    return {c * inner.c - s * inner.s, s * inner.c + c * inner.s, apply(inner.t)};
  }
};

// Block "B", base (1,1): a line from the base 2 along X and a circle of radius 1
// round (2,2).
class BlockReferenceTest : public ExtentsTest {
 protected:
  void SetUp() override {
    block = addBlock(L"B", {1, 1, 0});
    add(line({1, 1, 0}, {3, 1, 0}), block);
    add(circle({2, 2, 0}, 1), block);
  }
  std::unique_ptr<host::BlockReferenceEntity> reference(ObjectId of, const Point3d& at) {
    auto r = std::make_unique<host::BlockReferenceEntity>();
    r->block = of;
    r->position = at;
    return r;
  }
  ObjectId block;
};

TEST_F(BlockReferenceTest, PlainReferenceMovesTheBaseToTheInsertionPoint) {
  EXPECT_TRUE(box(of(*reference(block, {10, 0, 0})), {10, 0, 0}, {12, 2, 0}));
}

TEST_F(BlockReferenceTest, ScaledAndRotatedReference) {
  // Scale 2: the line (0,0)-(4,0) and the circle round (2,2) of radius 2 from the
  // base; a quarter turn takes (x, y) to (-y, x).
  auto r = reference(block, {10, 0, 0});
  r->scale = {2, 2, 2};
  r->rotation = kPi / 2;
  EXPECT_TRUE(box(of(*r), {6, 0, 0}, {10, 4, 0}));
}

TEST_F(BlockReferenceTest, UnevenScaleTurnsCirclesIntoEllipsesExactly) {
  // The circle alone, scaled (2, 1) and turned 45 degrees: an ellipse of half
  // axes 2 and 1 whose half width is sqrt((2 cos45)^2 + (sin45)^2), less than the
  // turned box of the ellipse would give.
  const ObjectId b = addBlock(L"C", {0, 0, 0});
  add(circle({0, 0, 0}, 1), b);
  auto r = reference(b, {0, 0, 0});
  r->scale = {2, 1, 1};
  r->rotation = kPi / 4;
  const double h = std::sqrt(2.5);
  EXPECT_TRUE(box(of(*r), {-h, -h, 0}, {h, h, 0}));
}

TEST_F(BlockReferenceTest, NestedReferencesComposeTheirPlacements) {
  // Outer holds B at (5,0) turned a quarter, and a point at (0,-3); the outer
  // reference is scaled by 3 from outer's base (0,0) and placed at (100,100).
  const ObjectId outer = addBlock(L"Outer", {0, 0, 0});
  auto inner = reference(block, {5, 0, 0});
  inner->rotation = kPi / 2;
  add(std::move(inner), outer);
  auto p = std::make_unique<host::PointEntity>();
  p->position = {0, -3, 0};
  add(std::move(p), outer);
  // B turned at (5,0): line from (5,0) to (5,2), circle round (4,1) radius 1:
  // x in [3,5], y in [0,2]; with the point, y from -3. Scaled 3 and moved.
  auto r = reference(outer, {100, 100, 0});
  r->scale = {3, 3, 3};
  EXPECT_TRUE(box(of(*r), {100 + 0, 100 - 9, 0}, {100 + 15, 100 + 6, 0}));
  r->rotation = kPi;  // a half turn
  EXPECT_TRUE(box(of(*r), {100 - 15, 100 - 6, 0}, {100, 100 + 9, 0}));
}

TEST_F(BlockReferenceTest, ReferenceInAPlaneSeenFromBelow) {
  auto r = reference(block, {10, 0, 4});
  r->normal = {0, 0, -1};  // the plane's X is world -X; its origin's third coordinate is -Z
  EXPECT_TRUE(box(of(*r), {-12, 0, -4}, {-10, 2, -4}));
}

TEST_F(BlockReferenceTest, ArraysSpanTheirColumnsAndRows) {
  auto r = reference(block, {0, 0, 0});
  r->columns = 3;
  r->rows = 2;
  r->columnSpacing = 10;
  r->rowSpacing = 5;
  EXPECT_TRUE(box(of(*r), {0, 0, 0}, {22, 7, 0}));
  // The array turns with the reference.
  r->rotation = kPi / 2;
  EXPECT_TRUE(box(of(*r), {-7, 0, 0}, {0, 22, 0}));
}

TEST_F(BlockReferenceTest, AttributesCountAndDefinitionsOnlyWhenConstant) {
  auto definition = std::make_unique<host::AttributeDefinitionEntity>();
  definition->data = abcde(0, 0);
  definition->data.position = {-50, -50, 0};
  const ObjectId defId = add(std::move(definition), block);
  auto r = reference(block, {0, 0, 0});
  EXPECT_TRUE(box(of(*r), {0, 0, 0}, {2, 2, 0}));
  db.modify<host::AttributeDefinitionEntity>(defId)->flags = 2;
  EXPECT_TRUE(box(of(*r), {-51, -51, 0}, {2, 2, 0}));
  db.modify<host::AttributeDefinitionEntity>(defId)->flags = 0;

  const ObjectId refId = add(std::move(r), db.modelSpace());
  auto attribute = std::make_unique<host::AttributeEntity>();
  attribute->data = abcde(0, 0);  // (10,20)-(16,22)
  const ObjectId attId = db.addEntity(std::move(attribute), refId);
  db.modify<host::BlockReferenceEntity>(refId)->attributes.push_back(attId);
  EXPECT_TRUE(box(of(*db.entity(refId)), {0, 0, 0}, {16, 22, 0}));
}

TEST_F(BlockReferenceTest, BlocksThatContainThemselvesEnd) {
  const ObjectId loop = addBlock(L"Loop", {0, 0, 0});
  add(line({0, 0, 0}, {1, 1, 0}), loop);
  auto self = reference(loop, {5, 5, 0});
  add(std::move(self), loop);
  EXPECT_TRUE(box(of(*reference(loop, {0, 0, 0})), {0, 0, 0}, {1, 1, 0}));
  // Two blocks holding each other: a reference shows its own block's contents,
  // whichever of the two it names, and none of the other's.
  const ObjectId a = addBlock(L"A", {0, 0, 0});
  const ObjectId b = addBlock(L"B2", {0, 0, 0});
  add(line({0, 0, 0}, {1, 1, 0}), a);
  add(reference(b, {10, 0, 0}), a);
  add(line({0, 0, 0}, {-1, -1, 0}), b);
  add(reference(a, {-10, 0, 0}), b);
  EXPECT_TRUE(box(of(*reference(a, {0, 0, 0})), {0, 0, 0}, {1, 1, 0}));
  EXPECT_TRUE(box(of(*reference(b, {0, 0, 0})), {-1, -1, 0}, {0, 0, 0}));
}

TEST_F(BlockReferenceTest, KeptBoxesFollowChangesUndoAndRedo) {
  // Outer holds Inner twice; Inner holds a line. Each answer below comes after
  // the same question was answered for the drawing as it was before.
  const ObjectId inner = addBlock(L"Inner", {0, 0, 0});
  const ObjectId first = add(line({0, 0, 0}, {1, 0, 0}), inner);
  const ObjectId outer = addBlock(L"Outer", {0, 0, 0});
  add(reference(inner, {0, 0, 0}), outer);
  add(reference(inner, {0, 5, 0}), outer);
  const auto top = reference(outer, {0, 0, 0});
  EXPECT_TRUE(box(of(*top), {0, 0, 0}, {1, 5, 0}));

  db.undo().begin(L"ADD");
  add(line({0, 0, 0}, {0, -3, 0}), inner);
  db.undo().end();
  EXPECT_TRUE(box(of(*top), {0, -3, 0}, {1, 5, 0}));
  db.modify<host::LineEntity>(first)->end = {7, 0, 0};
  EXPECT_TRUE(box(of(*top), {0, -3, 0}, {7, 5, 0}));
  db.setOpenFailure(first, true);
  EXPECT_TRUE(box(of(*top), {0, -3, 0}, {0, 5, 0}));
  db.setOpenFailure(first, false);
  db.modify<host::LineEntity>(first)->end = {1, 0, 0};
  ASSERT_EQ(db.undoSteps(1).size(), 1u);
  EXPECT_TRUE(box(of(*top), {0, 0, 0}, {1, 5, 0}));
  ASSERT_EQ(db.redoSteps(1).size(), 1u);
  EXPECT_TRUE(box(of(*top), {0, -3, 0}, {1, 5, 0}));
}

TEST_F(BlockReferenceTest, DeepNestingOfManyPlacementsEndsWithABoxThatHoldsIt) {
  // Ten levels, each holding the next twice, turned by angles of its own: a
  // thousand and twenty-four copies of the innermost line, each placed anew.
  constexpr int kDepth = 10;
  std::vector<Affine3> paths{Affine3{}};
  ObjectId inner = addBlock(L"N0", {0, 0, 0});
  add(line({0, 0, 0}, {1, 0, 2}), inner);
  for (int level = 1; level <= kDepth; ++level) {
    const ObjectId outer = addBlock(L"N" + std::to_wstring(level), {0, 0, 0});
    std::vector<Affine3> placed;
    for (int copy = 0; copy < 2; ++copy) {
      auto r = reference(inner, {copy * 0.5, copy * 1.0, 0});
      r->rotation = 0.3 * level + 1.1 * copy;
      const Affine3 step = Affine3::turn(r->rotation, r->position);
      for (const Affine3& below : paths) placed.push_back(step.after(below));
      add(std::move(r), outer);
    }
    paths = std::move(placed);
    inner = outer;
  }
  const Extents e = of(*reference(inner, {0, 0, 0}));
  ASSERT_FALSE(e.isEmpty());
  for (const Affine3& path : paths) {
    ASSERT_TRUE(contains(e, path.apply({0, 0, 0}), 1e-9));
    ASSERT_TRUE(contains(e, path.apply({1, 0, 2}), 1e-9));
  }
}

TEST_F(BlockReferenceTest, MissingBlockOrErasedContents) {
  EXPECT_TRUE(of(*reference(ObjectId(), {0, 0, 0})).isEmpty());
  const ObjectId b = addBlock(L"E", {0, 0, 0});
  const ObjectId l = add(line({0, 0, 0}, {1, 1, 0}), b);
  add(line({0, 0, 0}, {-1, -1, 0}), b);
  db.eraseEntity(l);
  EXPECT_TRUE(box(of(*reference(b, {0, 0, 0})), {-1, -1, 0}, {0, 0, 0}));
}

// --- Hatches ---------------------------------------------------------------------

class HatchTest : public ExtentsTest {
 protected:
  // A hatch with the given boundary tags after its plane and path count.
  const host::Entity& hatch(const std::string& plane, const std::string& paths) {
    source_ = "  0\nHATCH\n  5\n2F\n330\n17\n100\nAcDbEntity\n  8\n0\n100\nAcDbHatch\n" + plane +
              "  2\nSOLID\n 70\n1\n 71\n0\n" + paths +
              " 75\n0\n 76\n1\n 98\n1\n 10\n1000.0\n 20\n1000.0\n";
    db.setSourceText(std::make_shared<std::string>(source_),
                     std::make_shared<host::dxf::DxfKeptText>());
    auto h = std::make_unique<host::HatchEntity>();
    h->source = {0, static_cast<std::uint32_t>(source_.size())};
    return *db.entity(add(std::move(h), db.modelSpace()));
  }
  static std::string flat(double elevation) {
    return " 10\n0.0\n 20\n0.0\n 30\n" + std::to_string(elevation) +
           "\n210\n0.0\n220\n0.0\n230\n1.0\n";
  }
  std::string source_;
};

TEST_F(HatchTest, PolylinePathWithBulges) {
  // A square with a half circle bulging out below its first side; the seed
  // point far off must not count.
  const std::string paths =
      " 91\n1\n 92\n3\n 72\n1\n 73\n1\n 93\n4\n"
      " 10\n0.0\n 20\n0.0\n 42\n1.0\n 10\n10.0\n 20\n0.0\n 42\n0.0\n"
      " 10\n10.0\n 20\n10.0\n 42\n0.0\n 10\n0.0\n 20\n10.0\n 42\n0.0\n 97\n0\n";
  EXPECT_TRUE(box(of(hatch(flat(2), paths)), {0, -5, 2}, {10, 10, 2}));
}

TEST_F(HatchTest, EdgePathOfEveryKind) {
  // A line; a clockwise arc written as from 270 to 360 (mirrored), that is the
  // quarter from 0 to 90 round (5,5) of radius 3; an ellipse half over the top
  // round (20,0); a spline whose control points reach y = 9 but whose curve
  // stays lower, with fit data after it. A second path follows it.
  const std::string paths =
      " 91\n2\n 92\n1\n 93\n4\n"
      " 72\n1\n 10\n0.0\n 20\n0.0\n 11\n10.0\n 21\n0.0\n"
      " 72\n2\n 10\n5.0\n 20\n5.0\n 40\n3.0\n 50\n270.0\n 51\n360.0\n 73\n0\n"
      " 72\n3\n 10\n20.0\n 20\n0.0\n 11\n4.0\n 21\n0.0\n 40\n0.5\n 50\n0\n 51\n180\n 73\n1\n"
      " 72\n4\n 94\n2\n 73\n0\n 74\n0\n 95\n6\n 96\n3\n"
      " 40\n0\n 40\n0\n 40\n0\n 40\n1\n 40\n1\n 40\n1\n"
      " 10\n30.0\n 20\n0.0\n 10\n31.0\n 20\n9.0\n 10\n32.0\n 20\n0.0\n"
      " 97\n2\n 11\n30.0\n 21\n0.0\n 11\n32.0\n 21\n0.0\n 12\n1.0\n 22\n1.0\n 13\n1.0\n 23\n-1.0\n"
      " 97\n1\n330\n2A\n"
      " 92\n1\n 93\n1\n 72\n1\n 10\n0.0\n 20\n0.0\n 11\n-5.0\n 21\n-5.0\n 97\n0\n";
  // The arc reaches (8,5) and (5,8); the half ellipse x 16..24, y 0..2; the
  // spline's top is 4.5; the second path's line reaches (-5,-5).
  EXPECT_TRUE(box(of(hatch(flat(0), paths)), {-5, -5, 0}, {32, 8, 0}));
}

TEST_F(HatchTest, ClockwiseEdgesKeepMirroredAngles) {
  // Written as from 300 to 330 degrees clockwise: the arc from 30 to 60.
  const double c30 = 3 * std::cos(kPi / 6);
  const std::string arcPath =
      " 91\n1\n 92\n1\n 93\n1\n 72\n2\n 10\n5.0\n 20\n5.0\n 40\n3.0\n 50\n300.0\n 51\n330.0\n"
      " 73\n0\n 97\n0\n";
  EXPECT_TRUE(box(of(hatch(flat(0), arcPath)), {6.5, 6.5, 0}, {5 + c30, 5 + c30, 0}));
}

TEST_F(HatchTest, ClockwiseEllipseEdge) {
  // From 0 to 90 clockwise: the parameters from -90 to 0, the lower right quarter.
  const std::string ellipsePath =
      " 91\n1\n 92\n1\n 93\n1\n 72\n3\n 10\n0.0\n 20\n0.0\n 11\n2.0\n 21\n0.0\n 40\n0.5\n"
      " 50\n0.0\n 51\n90.0\n 73\n0\n 97\n0\n";
  EXPECT_TRUE(box(of(hatch(flat(0), ellipsePath)), {0, -1, 0}, {2, 0, 0}));
}

TEST_F(HatchTest, PlaneSeenFromBelowAndElevation) {
  const std::string plane = " 10\n0.0\n 20\n0.0\n 30\n7.0\n210\n0.0\n220\n0.0\n230\n-1.0\n";
  const std::string paths =
      " 91\n1\n 92\n1\n 93\n1\n 72\n2\n 10\n5.0\n 20\n5.0\n 40\n1.0\n 50\n0.0\n 51\n360.0\n 73\n1\n"
      " 97\n0\n";
  EXPECT_TRUE(box(of(hatch(plane, paths)), {-6, 4, -7}, {-4, 6, -7}));
}

TEST_F(HatchTest, SplineEdgeOfOlderFilesAndBrokenPaths) {
  // No fit data: the path's own source count follows the control points.
  const std::string older =
      " 91\n2\n 92\n1\n 93\n1\n"
      " 72\n4\n 94\n1\n 73\n0\n 74\n0\n 95\n4\n 96\n2\n 40\n0\n 40\n0\n 40\n1\n 40\n1\n"
      " 10\n0.0\n 20\n0.0\n 10\n3.0\n 20\n4.0\n 97\n0\n"
      " 92\n1\n 93\n1\n 72\n1\n 10\n-1.0\n 20\n-1.0\n 11\n0.0\n 21\n0.0\n 97\n0\n";
  EXPECT_TRUE(box(of(hatch(flat(0), older)), {-1, -1, 0}, {3, 4, 0}));
  // A path that stops short keeps what came before it.
  const std::string broken =
      " 91\n2\n 92\n1\n 93\n1\n 72\n1\n 10\n1.0\n 20\n1.0\n 11\n2.0\n 21\n2.0\n 97\n0\n"
      " 92\n1\n 93\n1\n 72\n1\n 10\n9.0\n";
  EXPECT_TRUE(box(of(hatch(flat(0), broken)), {1, 1, 0}, {2, 2, 0}));
}

TEST_F(HatchTest, HatchInsideABlockIsPlacedWithIt) {
  const std::string paths =
      " 91\n1\n 92\n1\n 93\n1\n 72\n2\n 10\n0.0\n 20\n0.0\n 40\n1.0\n 50\n0.0\n 51\n360.0\n 73\n1\n"
      " 97\n0\n";
  const host::Entity& h = hatch(flat(0), paths);
  const ObjectId b = addBlock(L"H", {0, 0, 0});
  auto copy = std::unique_ptr<host::Entity>(static_cast<host::Entity*>(h.clone().release()));
  db.addEntity(std::move(copy), b);
  host::BlockReferenceEntity r;
  r.block = b;
  r.position = {10, 0, 0};
  r.scale = {3, 1, 1};
  EXPECT_TRUE(box(of(r), {7, -1, 0}, {13, 1, 0}));
}

}  // namespace

namespace host::geometry {
namespace {

// Every entity of a drawing made by an independent writer, of every kind the
// files bring, has extents; only what the file keeps no geometry of is empty.
TEST(ExtentsOfADrawing, EveryKindTheFilesBringHasExtents) {
  std::ifstream in(std::string(FIXTURES_DIR) + "/full_r2018.dxf", std::ios::binary);
  auto text = std::make_shared<const std::string>(std::istreambuf_iterator<char>(in),
                                                  std::istreambuf_iterator<char>());
  ASSERT_FALSE(text->empty());
  dxf::LoadedDrawing drawing = dxf::readDrawing(text);
  const Database& db = *drawing.db;
  int checked = 0;
  for (ObjectId space : {db.modelSpace(), db.paperSpace()}) {
    for (ObjectId id : db.blockEntities(space)) {
      const Entity& e = *db.entity(id);
      // Solids of this format keep their bodies in a binary section the host doesn't read.
      if (e.kind() == EntityKind::Solid3d || e.kind() == EntityKind::Region) continue;
      const std::wstring name = typeName(e);
      if (e.kind() == EntityKind::Unknown && name != L"SOLID" && name != L"3DFACE") continue;
      EXPECT_FALSE(extentsOf(db, e).isEmpty()) << std::string(name.begin(), name.end());
      ++checked;
    }
  }
  EXPECT_GT(checked, 30);
}

}  // namespace
}  // namespace host::geometry
