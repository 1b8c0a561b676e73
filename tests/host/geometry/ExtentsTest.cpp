// Extents against boxes worked out by hand: what the curves' own walk does not
// reach (texts, block references, hatches, splines in other forms), and the
// boxes of texts by the font model. The curves' extents are checked against
// their points where the curves are tested.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "GeometryChecks.h"
#include "Splines.h"
#include "host/geometry/Extents.h"

namespace host::geometry {
namespace {

using namespace test;

class ExtentsTest : public ::testing::Test {
 protected:
  Extents of(const Entity& e) const { return extentsOf(db, e); }
  ObjectId addBlock(const std::wstring& name, const Point3d& base) {
    auto block = std::make_unique<BlockRecord>();
    block->name = name;
    block->basePoint = base;
    block->handle = db.takeHandle();
    return db.addLoaded(std::move(block));
  }
  template <typename T>
  ObjectId add(T e, ObjectId block) {
    return db.addEntity(std::make_unique<T>(std::move(e)), block);
  }
  Database db;
};

TEST_F(ExtentsTest, BoxesWorkedOutByHandAndNoneWithoutGeometry) {
  UnknownEntity unknown;
  unknown.dxfName = "WIPEOUT";
  EXPECT_TRUE(of(unknown).isEmpty());
  // Kept as text, but made here without any.
  EXPECT_TRUE(of(HatchEntity()).isEmpty());
  EXPECT_TRUE(of(Solid3dEntity()).isEmpty());
  EXPECT_TRUE(of(RegionEntity()).isEmpty());
  EXPECT_TRUE(of(SplineEntity()).isEmpty());
  auto expect = [&](const char* name, const Entity& e, const Point3d& lo, const Point3d& hi) {
    EXPECT_TRUE(box(of(e), lo, hi)) << name;
  };
  PointEntity point;
  point.position = {1, 2, 3};
  expect("point", point, {1, 2, 3}, {1, 2, 3});
  // A whole turn from elsewhere than zero, its end rounded a little past it.
  expect("whole ellipse from 0.1",
         ellipse({1, 1, 0}, {2, 0, 0}, 0.5, 0.1, std::nextafter(0.1 + 2 * kPi, 10.0)), {-1, 0, 0},
         {3, 2, 0});
  // Major (3, 4), minor (-4, 3) * 0.4: x reaches sqrt(3^2 + 1.6^2), y sqrt(4^2 + 1.2^2).
  const double hx = std::sqrt(9 + 1.6 * 1.6);
  const double hy = std::sqrt(16 + 1.2 * 1.2);
  expect("turned ellipse reaches beyond its axes' ends", ellipse({}, {3, 4, 0}, 0.4), {-hx, -hy, 0},
         {hx, hy, 0});
  // Bulge 1: a half circle counterclockwise from (0,0) to (2,0), below the chord.
  expect("polyline at an elevation", lw({{0, 0, 1}, {2, 0, 0}}, false, 5), {0, -1, 5}, {2, 0, 5});
  Polyline3dEntity framed = polyline3d({{1, 2, 3}, {-1, 5, 0}, {4, 0, -2}});
  framed.vertices.push_back(vertex({100, 100, 0}, 0, 16));  // a spline's frame is not drawn
  expect("3D polyline", framed, {-1, 0, -2}, {4, 5, 3});
  // Each element runs off its vertex along the miter.
  MlineEntity m = mline({{0, 0, 0}, {10, 0, 0}});
  for (auto& v : m.vertices) {
    v.miter = {0, 1, 0};
    v.elementParams = {{0.5}, {-0.5}};
  }
  expect("mline of two elements", m, {0, -0.5, 0}, {10, 0.5, 0});
  // y(t) = 9t - 21t^2 + 12t^3, extreme where 36t^2 - 42t + 9 = 0.
  auto y = [](double t) { return 9 * t - 21 * t * t + 12 * t * t * t; };
  const double root = std::sqrt(42.0 * 42.0 - 4 * 36 * 9);
  expect("spline reaches its curve, not its control points",
         spline(3, {{0, 0, 0}, {1, 3, 0}, {2, -1, 0}, {3, 0, 0}}), {0, y((42 + root) / 72), 0},
         {3, y((42 - root) / 72), 0});
}

TEST_F(ExtentsTest, SplinesOfFitPointsOrListingTheirDistinctPointsHoldTheirCurve) {
  SplineEntity fitted;
  fitted.fitPoints = {{0, 0, 0}, {3, 4, 0}, {6, -1, 2}, {9, 3, 1}};
  const Extents e = of(fitted);
  ASSERT_FALSE(e.isEmpty());
  for (const Point3d& p : fitted.fitPoints) EXPECT_TRUE(contains(e, p, 1e-9)) << text(p);
  // The size of the fit points sets how close the box comes to the curve.
  for (const Point3d& p : sample(fitted, 1e-9)) EXPECT_TRUE(contains(e, p, 1e-5)) << text(p);
  // A closed cubic over a square's corners with the knots of the wrapped set:
  // the curve stays inside the square and reaches out symmetrically.
  SplineEntity periodic = spline(3, {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}});
  periodic.flags = 2 | 1;
  for (int k = -3; k <= 4 + 3; ++k) periodic.knots.push_back(k);
  const Extents p = of(periodic);
  ASSERT_FALSE(p.isEmpty());
  EXPECT_NEAR(p.max.x, -p.min.x, 1e-6);
  EXPECT_NEAR(p.max.y, -p.min.y, 1e-6);
  EXPECT_LT(p.max.x, 1.0);
  EXPECT_GT(p.max.x, 0.5);
  for (const Point3d& q : sample(periodic, 1e-9)) EXPECT_TRUE(contains(p, q, 1e-5)) << text(q);
}

// --- Texts ----------------------------------------------------------------------

// "ABCDE" of height 2 at (10, 20): 5 characters of 1.2 make it 6 wide.
TextData abcde(std::int16_t horizontal, std::int16_t vertical,
               const std::function<void(TextData&)>& change = {}) {
  TextData t;
  t.text = L"ABCDE";
  t.height = 2;
  t.position = {10, 20, 0};
  t.alignmentPoint = {10, 20, 0};
  t.horizontalAlignment = horizontal;
  t.verticalAlignment = vertical;
  if (change) change(t);
  return t;
}

Extents boxOf(const TextBox& b) {
  Extents e;
  for (const Point3d& p : b.corners) e.add(p);
  return e;
}

TEST(TextBoxTest, AlignmentsTurnsAndTheFontModel) {
  auto expect = [](const char* name, const TextData& t, const Point3d& lo, const Point3d& hi) {
    EXPECT_TRUE(box(boxOf(textBox(t)), lo, hi)) << name;
  };
  expect("left", abcde(0, 0), {10, 20, 0}, {16, 22, 0});
  expect("centre", abcde(1, 0), {7, 20, 0}, {13, 22, 0});
  expect("right", abcde(2, 0), {4, 20, 0}, {10, 22, 0});
  expect("middle", abcde(4, 0), {7, 19, 0}, {13, 21, 0});
  expect("bottom", abcde(0, 1), {10, 20, 0}, {16, 22, 0});
  expect("middle left", abcde(0, 2), {10, 19, 0}, {16, 21, 0});
  expect("top left", abcde(0, 3), {10, 18, 0}, {16, 20, 0});
  expect("top centre", abcde(1, 3), {7, 18, 0}, {13, 20, 0});
  expect("middle right", abcde(2, 2), {4, 19, 0}, {10, 21, 0});
  // Where the text happened to be laid out last does not count for the
  // alignments that hang off the alignment point, and the other way round.
  expect("right of the alignment point", abcde(2, 0, [](TextData& t) { t.position = {}; }),
         {4, 20, 0}, {10, 22, 0});
  expect("left of the position", abcde(0, 0, [](TextData& t) { t.alignmentPoint = {}; }),
         {10, 20, 0}, {16, 22, 0});
  // Aligned and fit run between their points, which set the direction; the
  // rotation does not count. Aligned is twice as wide as its characters, so
  // twice as high.
  auto between = [](const Point3d& to) {
    return [to](TextData& t) {
      t.position = {};
      t.alignmentPoint = to;
      t.rotation = 1.0;
    };
  };
  expect("aligned", abcde(3, 0, between({12, 0, 0})), {0, 0, 0}, {12, 4, 0});
  expect("fit", abcde(5, 0, between({12, 0, 0})), {0, 0, 0}, {12, 2, 0});
  expect("fit upward", abcde(5, 0, between({0, 12, 0})), {-2, 0, 0}, {0, 12, 0});
  auto turned = [](TextData& t) { t.rotation = kPi / 2; };
  expect("turned a quarter", abcde(0, 0, turned), {8, 20, 0}, {10, 26, 0});
  // Local x in [-6, 0], y in [-2, 0]; turned, x' = -y in [0, 2], y' = x in [-6, 0].
  expect("top right turned a quarter", abcde(2, 3, turned), {10, 14, 0}, {12, 20, 0});
  expect("half width", abcde(0, 0, [](TextData& t) { t.widthFactor = 0.5; }), {10, 20, 0},
         {13, 22, 0});
  // The top slides right by the height.
  expect("oblique", abcde(0, 0, [](TextData& t) { t.oblique = kPi / 4; }), {10, 20, 0},
         {18, 22, 0});
  expect("backwards", abcde(0, 0, [](TextData& t) { t.generation = 2; }), {4, 20, 0}, {10, 22, 0});
  expect("upside down", abcde(0, 0, [](TextData& t) { t.generation = 4; }), {10, 18, 0},
         {16, 20, 0});
  // Underlined "30" and a degree sign.
  expect("special character codes", abcde(0, 0, [](TextData& t) { t.text = L"%%u30%%d"; }),
         {10, 20, 0}, {13.6, 22, 0});
  auto below = [](TextData& t) {
    t.normal = {0, 0, -1};
    t.position = {10, 20, 3};
  };
  expect("seen from below", abcde(0, 0, below), {-16, 20, -3}, {-10, 22, -3});
}

TEST(TextBoxTest, CornersRunCounterclockwiseFromTheTextsOwnLowerLeft) {
  const TextBox turned = textBox(abcde(0, 0, [](TextData& t) { t.rotation = kPi / 2; }));
  EXPECT_TRUE(near(turned.corners[0], {10, 20, 0}));
  EXPECT_TRUE(near(turned.corners[1], {10, 26, 0}));
  EXPECT_TRUE(near(turned.corners[2], {8, 26, 0}));
  const TextBox backwards = textBox(abcde(0, 0, [](TextData& t) { t.generation = 2; }));
  EXPECT_TRUE(near(backwards.corners[0], {4, 20, 0}));
}

MTextEntity mtext(const std::wstring& s, std::int16_t attachment,
                  const std::function<void(MTextEntity&)>& change = {}) {
  MTextEntity m;
  m.text = s;
  m.height = 1;
  m.position = {0, 10, 0};
  m.attachment = attachment;
  if (change) change(m);
  return m;
}

TEST(MTextBoxTest, AttachmentCodesWrappingSpacingAndDirection) {
  auto expect = [](const char* name, const MTextEntity& m, const Point3d& lo, const Point3d& hi) {
    EXPECT_TRUE(box(boxOf(mtextBox(m)), lo, hi)) << name;
  };
  // Two lines of height 1 are 1 + 5/3 high; "World!" is the longer line:
  // 6 characters of 0.6.
  const double two = 1 + 5.0 / 3.0;
  const std::wstring s = L"Hello\\PWorld!";
  expect("top left", mtext(s, 1), {0, 10 - two, 0}, {3.6, 10, 0});
  expect("middle centre", mtext(s, 5), {-1.8, 10 - two / 2, 0}, {1.8, 10 + two / 2, 0});
  expect("bottom right", mtext(s, 9), {-3.6, 10, 0}, {0, 10 + two, 0});
  expect("top right", mtext(s, 3), {-3.6, 10 - two, 0}, {0, 10, 0});
  // Two lines of two characters each, once the codes are gone; escaped braces
  // and backslashes show; a stack is as wide as its wider part.
  expect("formatting codes", mtext(L"{\\fArial|b1|i0;Hi}\\P\\H2x;\\LYo\\l", 1), {0, 10 - two, 0},
         {1.2, 10, 0});
  expect("escapes", mtext(L"\\{a\\}\\\\", 7), {0, 10, 0}, {2.4, 11, 0});
  expect("stack", mtext(L"1\\S12/345;", 7), {0, 10, 0}, {2.4, 11, 0});
  // Ten characters are 6 wide; in a width of 4 they take two lines.
  auto width4 = [](MTextEntity& m) { m.referenceWidth = 4; };
  expect("wrapped", mtext(L"abcdefghij", 7, width4), {0, 10, 0}, {4, 10 + two, 0});
  auto spaced = [&](MTextEntity& m) {
    width4(m);
    m.lineSpacing = 2;
  };
  expect("spaced", mtext(L"abcdefghij", 7, spaced), {0, 10, 0}, {4, 10 + 1 + 10.0 / 3.0, 0});
  // 3 wide and 1 high from the bottom left.
  MTextEntity turned = mtext(L"abcde", 7);
  turned.direction = {0, 2, 0};
  expect("direction", turned, {-1, 10, 0}, {0, 13, 0});
  expect("rotation", mtext(L"abcde", 7, [](MTextEntity& m) { m.rotation = kPi; }), {-3, 9, 0},
         {0, 10, 0});
}

TEST_F(ExtentsTest, TextsAttributesDefinitionsAndMultilineTextsTakeTheirBoxes) {
  TextEntity text;
  text.data = abcde(1, 2);
  AttributeEntity attribute;
  attribute.data = abcde(1, 2);
  AttributeDefinitionEntity definition;
  definition.data = abcde(1, 2);
  for (const Entity* e : std::vector<const Entity*>{&text, &attribute, &definition}) {
    EXPECT_TRUE(box(of(*e), {7, 19, 0}, {13, 21, 0}));
  }
  EXPECT_TRUE(box(of(mtext(L"abcde", 1)), {0, 9, 0}, {3, 10, 0}));
}

// --- Block references ------------------------------------------------------------

// A turn about Z and a shift in XY, as complex numbers: w -> turn w + shift,
// composed by hand to follow references' copies.
struct Placed {
  std::complex<double> turn{1.0};
  std::complex<double> shift;
  Point3d apply(const Point3d& p) const {
    const std::complex<double> w = turn * std::complex<double>(p.x, p.y) + shift;
    return {w.real(), w.imag(), p.z};
  }
};

BlockReferenceEntity reference(ObjectId block, const Point3d& at, double rotation = 0.0,
                               const Point3d& scale = {1, 1, 1}) {
  BlockReferenceEntity r;
  r.block = block;
  r.position = at;
  r.rotation = rotation;
  r.scale = scale;
  return r;
}

// Block "B", base (1,1): a line from the base 2 along X and a circle of radius 1
// round (2,2).
class BlockReferenceTest : public ExtentsTest {
 protected:
  void SetUp() override {
    block = addBlock(L"B", {1, 1, 0});
    add(line({1, 1, 0}, {3, 1, 0}), block);
    add(circle({2, 2, 0}, 1), block);
  }
  ObjectId block;
};

TEST_F(BlockReferenceTest, PlacementsWorkedOutByHand) {
  auto expect = [&](const char* name, const BlockReferenceEntity& r, const Point3d& lo,
                    const Point3d& hi) { EXPECT_TRUE(box(of(r), lo, hi)) << name; };
  expect("plain: the base goes to the insertion point", reference(block, {10, 0, 0}), {10, 0, 0},
         {12, 2, 0});
  // Scale 2: the line (0,0)-(4,0) and the circle round (2,2) of radius 2 from
  // the base; a quarter turn takes (x, y) to (-y, x).
  expect("scaled and turned", reference(block, {10, 0, 0}, kPi / 2, {2, 2, 2}), {6, 0, 0},
         {10, 4, 0});
  BlockReferenceEntity below = reference(block, {10, 0, 4});
  below.normal = {0, 0, -1};  // the plane's X is world -X; its origin's third coordinate is -Z
  expect("seen from below", below, {-12, 0, -4}, {-10, 2, -4});
  BlockReferenceEntity array = reference(block, {});
  array.columns = 3;
  array.rows = 2;
  array.columnSpacing = 10;
  array.rowSpacing = 5;
  expect("array", array, {0, 0, 0}, {22, 7, 0});
  array.rotation = kPi / 2;
  expect("turned array", array, {-7, 0, 0}, {0, 22, 0});
  // The circle alone, scaled (2, 1) and turned 45 degrees: an ellipse of half
  // axes 2 and 1 whose half width is sqrt((2 cos45)^2 + (sin45)^2), less than
  // the turned box of the ellipse would give.
  const ObjectId c = addBlock(L"C", {0, 0, 0});
  add(circle({0, 0, 0}, 1), c);
  const double h = std::sqrt(2.5);
  expect("uneven scale turns circles into ellipses exactly", reference(c, {}, kPi / 4, {2, 1, 1}),
         {-h, -h, 0}, {h, h, 0});
  // Outer holds B at (5,0) turned a quarter, and a point at (0,-3): B turned
  // at (5,0) has its line from (5,0) to (5,2) and its circle round (4,1) of
  // radius 1, x in [3,5], y in [0,2]; with the point, y from -3. The outer
  // reference scales that by 3 from outer's base (0,0) and moves it to
  // (100,100), or turns it half round too.
  const ObjectId outer = addBlock(L"Outer", {0, 0, 0});
  add(reference(block, {5, 0, 0}, kPi / 2), outer);
  PointEntity p;
  p.position = {0, -3, 0};
  add(p, outer);
  expect("nested", reference(outer, {100, 100, 0}, 0, {3, 3, 3}), {100 + 0, 100 - 9, 0},
         {100 + 15, 100 + 6, 0});
  expect("nested, turned half round", reference(outer, {100, 100, 0}, kPi, {3, 3, 3}),
         {100 - 15, 100 - 6, 0}, {100, 100 + 9, 0});
}

TEST_F(BlockReferenceTest, AttributesCountAndDefinitionsOnlyWhenConstant) {
  AttributeDefinitionEntity definition;
  definition.data = abcde(0, 0);
  definition.data.position = {-50, -50, 0};
  const ObjectId defId = add(definition, block);
  auto r = reference(block, {0, 0, 0});
  EXPECT_TRUE(box(of(r), {0, 0, 0}, {2, 2, 0}));
  db.modify<AttributeDefinitionEntity>(defId)->flags = 2;
  EXPECT_TRUE(box(of(r), {-51, -51, 0}, {2, 2, 0}));
  db.modify<AttributeDefinitionEntity>(defId)->flags = 0;

  const ObjectId refId = add(r, db.modelSpace());
  auto attribute = std::make_unique<AttributeEntity>();
  attribute->data = abcde(0, 0);  // (10,20)-(16,22)
  const ObjectId attId = db.addEntity(std::move(attribute), refId);
  db.modify<BlockReferenceEntity>(refId)->attributes.push_back(attId);
  EXPECT_TRUE(box(of(*db.entity(refId)), {0, 0, 0}, {16, 22, 0}));
}

TEST_F(BlockReferenceTest, BlocksThatContainThemselvesEndAndMissingOrErasedContentsShowNothing) {
  const ObjectId loop = addBlock(L"Loop", {0, 0, 0});
  add(line({0, 0, 0}, {1, 1, 0}), loop);
  add(reference(loop, {5, 5, 0}), loop);
  EXPECT_TRUE(box(of(reference(loop, {0, 0, 0})), {0, 0, 0}, {1, 1, 0}));
  // Two blocks holding each other: a reference shows its own block's contents,
  // whichever of the two it names, and none of the other's.
  const ObjectId a = addBlock(L"A", {0, 0, 0});
  const ObjectId b = addBlock(L"B2", {0, 0, 0});
  add(line({0, 0, 0}, {1, 1, 0}), a);
  add(reference(b, {10, 0, 0}), a);
  add(line({0, 0, 0}, {-1, -1, 0}), b);
  add(reference(a, {-10, 0, 0}), b);
  EXPECT_TRUE(box(of(reference(a, {0, 0, 0})), {0, 0, 0}, {1, 1, 0}));
  EXPECT_TRUE(box(of(reference(b, {0, 0, 0})), {-1, -1, 0}, {0, 0, 0}));
  // A block that is missing, or whose contents were erased in part.
  EXPECT_TRUE(of(reference(ObjectId(), {0, 0, 0})).isEmpty());
  const ObjectId e = addBlock(L"E", {0, 0, 0});
  const ObjectId l = add(line({0, 0, 0}, {1, 1, 0}), e);
  add(line({0, 0, 0}, {-1, -1, 0}), e);
  db.eraseEntity(l);
  EXPECT_TRUE(box(of(reference(e, {0, 0, 0})), {-1, -1, 0}, {0, 0, 0}));
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
  EXPECT_TRUE(box(of(top), {0, 0, 0}, {1, 5, 0}));

  db.undo().begin(L"ADD");
  add(line({0, 0, 0}, {0, -3, 0}), inner);
  db.undo().end();
  EXPECT_TRUE(box(of(top), {0, -3, 0}, {1, 5, 0}));
  db.modify<LineEntity>(first)->end = {7, 0, 0};
  EXPECT_TRUE(box(of(top), {0, -3, 0}, {7, 5, 0}));
  db.setOpenFailure(first, true);
  EXPECT_TRUE(box(of(top), {0, -3, 0}, {0, 5, 0}));
  db.setOpenFailure(first, false);
  db.modify<LineEntity>(first)->end = {1, 0, 0};
  ASSERT_EQ(db.undoSteps(1).size(), 1u);
  EXPECT_TRUE(box(of(top), {0, 0, 0}, {1, 5, 0}));
  ASSERT_EQ(db.redoSteps(1).size(), 1u);
  EXPECT_TRUE(box(of(top), {0, -3, 0}, {1, 5, 0}));
}

TEST_F(BlockReferenceTest, DeepNestingOfManyPlacementsEndsWithABoxThatHoldsIt) {
  // Ten levels, each holding the next twice, turned by angles of its own: a
  // thousand and twenty-four copies of the innermost line, each placed anew.
  constexpr int kDepth = 10;
  std::vector<Placed> paths{Placed{}};
  ObjectId inner = addBlock(L"N0", {0, 0, 0});
  add(line({0, 0, 0}, {1, 0, 2}), inner);
  for (int level = 1; level <= kDepth; ++level) {
    const ObjectId outer = addBlock(L"N" + std::to_wstring(level), {0, 0, 0});
    std::vector<Placed> placed;
    for (int copy = 0; copy < 2; ++copy) {
      const BlockReferenceEntity r =
          reference(inner, {copy * 0.5, copy * 1.0, 0}, 0.3 * level + 1.1 * copy);
      const Placed step{std::polar(1.0, r.rotation), {r.position.x, r.position.y}};
      for (const Placed& below : paths) {
        placed.push_back({step.turn * below.turn, step.turn * below.shift + step.shift});
      }
      add(r, outer);
    }
    paths = std::move(placed);
    inner = outer;
  }
  const Extents e = of(reference(inner, {0, 0, 0}));
  ASSERT_FALSE(e.isEmpty());
  for (const Placed& path : paths) {
    ASSERT_TRUE(contains(e, path.apply({0, 0, 0}), 1e-9));
    ASSERT_TRUE(contains(e, path.apply({1, 0, 2}), 1e-9));
  }
}

// --- Hatches ---------------------------------------------------------------------

// Group codes and their values written "code=value", apart by spaces, as the
// lines of a file.
std::string tags(const std::string& pairs) {
  std::istringstream in(pairs);
  std::string out;
  for (std::string pair; in >> pair;) {
    const std::size_t equals = pair.find('=');
    out += std::string(3 - std::min<std::size_t>(equals, 3), ' ') + pair.substr(0, equals) + "\n" +
           pair.substr(equals + 1) + "\n";
  }
  return out;
}

// A hatch with the given boundary tags after its plane and path count.
std::string hatch(const std::string& plane, const std::string& paths) {
  return tags("0=HATCH 5=2F 330=17 100=AcDbEntity 8=0 100=AcDbHatch " + plane +
              " 2=SOLID 70=1 71=0 " + paths + " 75=0 76=1 98=1 10=1000 20=1000");
}

std::string flat(double elevation) {
  return "10=0 20=0 30=" + std::to_string(elevation) + " 210=0 220=0 230=1";
}

// One path of one edge.
std::string edge(const std::string& tags) {
  return "91=1 92=1 93=1 " + tags + " 97=0";
}

TEST_F(ExtentsTest, HatchesTakeTheirBoundaryPaths) {
  auto expect = [&](const char* name, const std::string& plane, const std::string& paths,
                    const Point3d& lo, const Point3d& hi) {
    EXPECT_TRUE(box(of(addWithSource<HatchEntity>(db, hatch(plane, paths))), lo, hi)) << name;
  };
  // A square with a half circle bulging out below its first side; the seed
  // point far off must not count.
  expect("polyline path with bulges", flat(2),
         "91=1 92=3 72=1 73=1 93=4 10=0 20=0 42=1 10=10 20=0 42=0 10=10 20=10 42=0 10=0 20=10 42=0 "
         "97=0",
         {0, -5, 2}, {10, 10, 2});
  // A line; a clockwise arc written as from 270 to 360 (mirrored), that is the
  // quarter from 0 to 90 round (5,5) of radius 3; an ellipse half over the top
  // round (20,0); a spline whose control points reach y = 9 but whose curve
  // stays lower, with fit data after it. A second path follows it. The arc
  // reaches (8,5) and (5,8); the half ellipse x 16..24, y 0..2; the spline's
  // top is 4.5; the second path's line reaches (-5,-5).
  expect("edge path of every kind", flat(0),
         "91=2 92=1 93=4 72=1 10=0 20=0 11=10 21=0 72=2 10=5 20=5 40=3 50=270 51=360 73=0 "
         "72=3 10=20 20=0 11=4 21=0 40=0.5 50=0 51=180 73=1 "
         "72=4 94=2 73=0 74=0 95=6 96=3 40=0 40=0 40=0 40=1 40=1 40=1 "
         "10=30 20=0 10=31 20=9 10=32 20=0 97=2 11=30 21=0 11=32 21=0 12=1 22=1 13=1 23=-1 "
         "97=1 330=2A 92=1 93=1 72=1 10=0 20=0 11=-5 21=-5 97=0",
         {-5, -5, 0}, {32, 8, 0});
  // Written as from 300 to 330 degrees clockwise: the arc from 30 to 60.
  const double c30 = 3 * std::cos(kPi / 6);
  expect("clockwise arc edge keeps mirrored angles", flat(0),
         edge("72=2 10=5 20=5 40=3 50=300 51=330 73=0"), {6.5, 6.5, 0}, {5 + c30, 5 + c30, 0});
  // From 0 to 90 clockwise: the parameters from -90 to 0, the lower right quarter.
  expect("clockwise ellipse edge", flat(0), edge("72=3 10=0 20=0 11=2 21=0 40=0.5 50=0 51=90 73=0"),
         {0, -1, 0}, {2, 0, 0});
  // Seen from below, the plane's X is world -X; its elevation, world -Z.
  const std::string below = "10=0 20=0 30=7 210=0 220=0 230=-1";
  expect("arc edge seen from below", below, edge("72=2 10=5 20=5 40=1 50=0 51=360 73=1"),
         {-6, 4, -7}, {-4, 6, -7});
  expect("ellipse edge seen from below", below,
         edge("72=3 10=5 20=5 11=2 21=0 40=0.5 50=0 51=90 73=1"), {-7, 5, -7}, {-5, 6, -7});
  expect("spline edge seen from below", below,
         edge("72=4 94=1 73=0 74=0 95=4 96=2 40=0 40=0 40=1 40=1 10=0 20=0 10=3 20=4"), {-3, 0, -7},
         {0, 4, -7});
  // No fit data: the path's own source count follows the control points.
  expect("spline edge of older files", flat(0),
         "91=2 92=1 93=1 72=4 94=1 73=0 74=0 95=4 96=2 40=0 40=0 40=1 40=1 10=0 20=0 10=3 20=4 "
         "97=0 92=1 93=1 72=1 10=-1 20=-1 11=0 21=0 97=0",
         {-1, -1, 0}, {3, 4, 0});
  // A path that stops short keeps what came before it.
  expect("broken path", flat(0), "91=2 92=1 93=1 72=1 10=1 20=1 11=2 21=2 97=0 92=1 93=1 72=1 10=9",
         {1, 1, 0}, {2, 2, 0});
}

TEST_F(ExtentsTest, HatchInsideABlockIsPlacedWithIt) {
  const Entity& h =
      addWithSource<HatchEntity>(db, hatch(flat(0), edge("72=2 10=0 20=0 40=1 50=0 51=360 73=1")));
  const ObjectId b = addBlock(L"H", {0, 0, 0});
  db.addEntity(std::unique_ptr<Entity>(static_cast<Entity*>(h.clone().release())), b);
  EXPECT_TRUE(box(of(reference(b, {10, 0, 0}, 0, {3, 1, 1})), {7, -1, 0}, {13, 1, 0}));
}

}  // namespace
}  // namespace host::geometry
