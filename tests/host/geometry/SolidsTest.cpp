// Volumes of solids bounded by planes, and extents of solids and regions, from
// SAT text made here for polyhedra of known volume, text written by another
// program (ezdxf), and small records written out by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "GeometryChecks.h"
#include "Solids.h"
#include "host/geometry/Extents.h"

namespace host::geometry {
namespace {

using namespace test;

// --- Writing SAT text ------------------------------------------------------------

struct Polyhedron {
  std::vector<Point3d> vertices;
  // Each face's loops of vertex indices: the first counterclockwise seen from
  // outside, holes the other way round.
  std::vector<std::vector<std::vector<int>>> faces;
};

struct SatOptions {
  bool newLayout = true;       // "$-1 -1 $-1" before each record's fields
  bool flipFirstFace = false;  // first face's plane normal inward, the face reversed
  std::string firstSurface;    // a record to put in place of the first face's plane
  std::string firstCurve;      // a record to put in place of the first edge's line
  bool scaleByTwo = false;     // a body transform doubling sizes and moving them
};

std::string number(double v) {
  std::ostringstream out;
  out.precision(17);
  out << v;
  return out.str();
}

std::string xyz(const Point3d& p) {
  return number(p.x) + " " + number(p.y) + " " + number(p.z);
}

std::string ref(long index) {
  return "$" + std::to_string(index);
}

std::vector<std::string> satHeader(bool newLayout = true) {
  return {newLayout ? "700 0 1 0" : "400 0 1 0",
          "@6 zarvel @9 ACIS 7.0 @24 Mon Jan 05 10:00:00 2026", "1 9.9999999999999995e-007 1e-010"};
}

// The records of the polyhedron, one a line, with the header and the end mark.
std::vector<std::string> satLines(const Polyhedron& poly, const SatOptions& options = {}) {
  const std::string prefix = options.newLayout ? " $-1 -1 $-1 " : " $-1 ";
  struct Use {
    int face, loop, from, to;
  };
  std::vector<Use> coedges;
  std::vector<std::vector<int>> loopCoedges;
  std::vector<int> loopFace;
  std::vector<std::vector<int>> faceLoops(poly.faces.size());
  for (std::size_t f = 0; f < poly.faces.size(); ++f) {
    for (const auto& ring : poly.faces[f]) {
      const int loop = static_cast<int>(loopCoedges.size());
      faceLoops[f].push_back(loop);
      loopFace.push_back(static_cast<int>(f));
      loopCoedges.emplace_back();
      for (std::size_t k = 0; k < ring.size(); ++k) {
        loopCoedges.back().push_back(static_cast<int>(coedges.size()));
        coedges.push_back({static_cast<int>(f), loop, ring[k], ring[(k + 1) % ring.size()]});
      }
    }
  }
  // Edges by their two vertices, started where their first coedge starts.
  std::map<std::pair<int, int>, int> edgeOf;
  std::vector<std::pair<int, int>> edges;
  std::vector<std::vector<int>> edgeUses;
  for (std::size_t c = 0; c < coedges.size(); ++c) {
    const auto key = std::minmax(coedges[c].from, coedges[c].to);
    auto it = edgeOf.find(key);
    if (it == edgeOf.end()) {
      it = edgeOf.emplace(key, static_cast<int>(edges.size())).first;
      edges.emplace_back(coedges[c].from, coedges[c].to);
      edgeUses.emplace_back();
    }
    edgeUses[it->second].push_back(static_cast<int>(c));
  }
  const long nF = static_cast<long>(poly.faces.size());
  const long nL = static_cast<long>(loopCoedges.size());
  const long nC = static_cast<long>(coedges.size());
  const long nE = static_cast<long>(edges.size());
  const long nV = static_cast<long>(poly.vertices.size());
  const long transform = options.scaleByTwo ? 3 : -1;
  const long faceBase = options.scaleByTwo ? 4 : 3;
  const long surfaceBase = faceBase + nF, loopBase = surfaceBase + nF, coedgeBase = loopBase + nL;
  const long edgeBase = coedgeBase + nC, curveBase = edgeBase + nE, vertexBase = curveBase + nE;
  const long pointBase = vertexBase + nV;

  std::vector<std::string> lines = satHeader(options.newLayout);
  lines.push_back("body" + prefix + ref(1) + " $-1 " + ref(transform) + " #");
  lines.push_back("lump" + prefix + "$-1 $2 $0 #");
  lines.push_back("shell" + prefix + "$-1 $-1 " + ref(faceBase) + " $-1 $1 #");
  if (options.scaleByTwo) {
    // Transforms have no pattern pointer among their first fields.
    lines.push_back(std::string("transform") + (options.newLayout ? " $-1 -1 " : " $-1 ") +
                    "2 0 0 0 2 0 0 0 2 10 20 30 1 rotate no_reflect no_shear #");
  }
  for (long f = 0; f < nF; ++f) {
    const bool flip = options.flipFirstFace && f == 0;
    lines.push_back("face" + prefix + ref(f + 1 < nF ? faceBase + f + 1 : -1) + " " +
                    ref(loopBase + faceLoops[f][0]) + " $2 $-1 " + ref(surfaceBase + f) +
                    (flip ? " reversed" : " forward") + " single #");
  }
  for (long f = 0; f < nF; ++f) {
    // Newell's normal of the outer loop points outwards.
    const auto& ring = poly.faces[f][0];
    Point3d n;
    for (std::size_t k = 0; k < ring.size(); ++k) {
      const Point3d& a = poly.vertices[ring[k]];
      const Point3d& b = poly.vertices[ring[(k + 1) % ring.size()]];
      n.x += (a.y - b.y) * (a.z + b.z);
      n.y += (a.z - b.z) * (a.x + b.x);
      n.z += (a.x - b.x) * (a.y + b.y);
    }
    if (options.flipFirstFace && f == 0) n = {-n.x, -n.y, -n.z};
    const double len = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    n = {n.x / len, n.y / len, n.z / len};
    const Point3d& root = poly.vertices[ring[0]];
    if (f == 0 && !options.firstSurface.empty()) {
      lines.push_back(options.firstSurface);
    } else {
      lines.push_back("plane-surface" + prefix + xyz(root) + " " + xyz(n) +
                      " 1 0 0 forward_v I I I I #");
    }
  }
  for (long l = 0; l < nL; ++l) {
    const bool last = l + 1 == nL || loopFace[l + 1] != loopFace[l];
    lines.push_back("loop" + prefix + ref(last ? -1 : loopBase + l + 1) + " " +
                    ref(coedgeBase + loopCoedges[l][0]) + " " + ref(faceBase + loopFace[l]) + " #");
  }
  for (long c = 0; c < nC; ++c) {
    const Use& u = coedges[c];
    const auto& ring = loopCoedges[u.loop];
    std::size_t k = 0;
    while (ring[k] != c) ++k;
    const long next = ring[(k + 1) % ring.size()];
    const long prev = ring[(k + ring.size() - 1) % ring.size()];
    const int e = edgeOf.at(std::minmax(u.from, u.to));
    long partner = -1;
    for (int other : edgeUses[e]) {
      if (other != c) partner = other;
    }
    const bool forward = edges[e].first == u.from;
    lines.push_back("coedge" + prefix + ref(coedgeBase + next) + " " + ref(coedgeBase + prev) +
                    " " + ref(partner < 0 ? -1 : coedgeBase + partner) + " " + ref(edgeBase + e) +
                    (forward ? " forward " : " reversed ") + ref(loopBase + u.loop) + " $-1 #");
  }
  for (long e = 0; e < nE; ++e) {
    const long v0 = vertexBase + edges[e].first;
    const long v1 = vertexBase + edges[e].second;
    const std::string ends =
        options.newLayout ? ref(v0) + " 0 " + ref(v1) + " 1 " : ref(v0) + " " + ref(v1) + " ";
    lines.push_back("edge" + prefix + ends + ref(coedgeBase + edgeUses[e][0]) + " " +
                    ref(curveBase + e) + " forward" + (options.newLayout ? " @7 unknown" : "") +
                    " #");
  }
  for (long e = 0; e < nE; ++e) {
    const Point3d& a = poly.vertices[edges[e].first];
    const Point3d& b = poly.vertices[edges[e].second];
    if (e == 0 && !options.firstCurve.empty()) {
      lines.push_back(options.firstCurve);
    } else {
      lines.push_back("straight-curve" + prefix + xyz(a) + " " +
                      xyz({b.x - a.x, b.y - a.y, b.z - a.z}) + " I I #");
    }
  }
  for (long v = 0; v < nV; ++v) {
    long edge = 0;
    while (edges[edge].first != v && edges[edge].second != v) ++edge;
    lines.push_back("vertex" + prefix + ref(edgeBase + edge) + " " + ref(pointBase + v) + " #");
  }
  for (long v = 0; v < nV; ++v) lines.push_back("point" + prefix + xyz(poly.vertices[v]) + " #");
  lines.push_back("End-of-ACIS-data");
  return lines;
}

// Older files write each character c but the space as 159 - c, and a caret
// that results as "^ ".
std::string substituted(const std::string& line) {
  std::string out;
  for (char c : line) {
    if (c == ' ') {
      out += ' ';
      continue;
    }
    const char s = static_cast<char>(159 - c);
    out += s;
    if (s == '^') out += ' ';
  }
  return out;
}

// The 3DSOLID's source text: the lines in groups 1, their tails past the
// length in groups 3.
std::string solidSource(const std::vector<std::string>& lines, bool substitute = true,
                        std::size_t length = 255) {
  std::string s =
      "  0\n3DSOLID\n  5\n2F\n330\n1F\n100\nAcDbEntity\n  8\n0\n100\nAcDbModelerGeometry\n 70\n1\n";
  for (const std::string& line : lines) {
    for (std::size_t at = 0; at == 0 || at < line.size(); at += length) {
      const std::string piece = line.substr(at, length);
      s += at == 0 ? "  1\n" : "  3\n";
      s += (substitute ? substituted(piece) : piece) + "\n";
    }
  }
  return s + "100\nAcDb3dSolid\n350\n0\n";
}

Polyhedron cuboid(const Point3d& lo, const Point3d& size) {
  Polyhedron p;
  for (int i = 0; i < 8; ++i) {
    p.vertices.push_back({lo.x + ((i & 1) ? size.x : 0), lo.y + ((i & 2) ? size.y : 0),
                          lo.z + ((i & 4) ? size.z : 0)});
  }
  p.faces = {{{0, 2, 3, 1}}, {{4, 5, 7, 6}}, {{0, 1, 5, 4}},
             {{2, 6, 7, 3}}, {{0, 4, 6, 2}}, {{1, 3, 7, 5}}};
  return p;
}

Polyhedron triangularPrism() {
  // The triangle (0,0), (4,0), (0,3), 5 high: 6 times 5.
  Polyhedron p;
  p.vertices = {{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {0, 0, 5}, {4, 0, 5}, {0, 3, 5}};
  p.faces = {{{0, 2, 1}}, {{3, 4, 5}}, {{0, 1, 4, 3}}, {{1, 2, 5, 4}}, {{2, 0, 3, 5}}};
  return p;
}

Polyhedron boxWithSquareHole() {
  // A 4 cube with a 2 by 2 hole through it along Z: 64 - 16.
  Polyhedron p;
  for (double z : {0.0, 4.0}) {
    for (const auto& xy :
         {std::pair{0, 0}, {4, 0}, {4, 4}, {0, 4}, {1, 1}, {3, 1}, {3, 3}, {1, 3}}) {
      p.vertices.push_back({double(xy.first), double(xy.second), z});
    }
  }
  p.faces = {
      {{0, 3, 2, 1}, {4, 5, 6, 7}},        // bottom, seen from below
      {{8, 9, 10, 11}, {12, 15, 14, 13}},  // top
      {{0, 1, 9, 8}},
      {{1, 2, 10, 9}},
      {{2, 3, 11, 10}},
      {{3, 0, 8, 11}},
      {{4, 12, 13, 5}},
      {{5, 13, 14, 6}},
      {{6, 14, 15, 7}},
      {{7, 15, 12, 4}},  // the hole's walls
  };
  return p;
}

// The group 1 lines of a 2 by 3 by 4 box round (10,0,0) as another program
// (ezdxf) writes it into an R2010 file: a body round the origin and a
// transform that moves it.
std::vector<std::string> writtenElsewhere() {
  std::ifstream in(std::string(GEOMETRY_FIXTURES_DIR) + "/box_r2010.sat");
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// --- Volumes ---------------------------------------------------------------------

// The volume of a 3DSOLID's source text, decoded as the drawing's reader does.
std::optional<double> volumeOf(const std::string& source) {
  return solidVolume(host::dxf::DxfKeptText().acisText(source));
}

TEST(SolidVolumeTest, BodiesBoundedByPlanesWrittenEveryWayTheTextMayBe) {
  auto expect = [](const char* name, const std::string& source, double volume) {
    const auto v = volumeOf(source);
    ASSERT_TRUE(v) << name;
    EXPECT_NEAR(*v, volume, 1e-9 * volume) << name;
  };
  const Polyhedron cube = cuboid({1, 1, 1}, {1, 1, 1});
  SatOptions older;
  older.newLayout = false;
  SatOptions flipped;
  flipped.flipFirstFace = true;
  SatOptions scaled;
  scaled.scaleByTwo = true;
  SatOptions scaledOlder = scaled;
  scaledOlder.newLayout = false;
  expect("unit cube", solidSource(satLines(cube)), 1.0);
  // Away from the origin, to show the sum does not depend on where it stands,
  // and where the first face's plane does not pass.
  expect("box away from the origin", solidSource(satLines(cuboid({5, -1, 2}, {2, 3, 4}))), 24.0);
  expect("face sense turns an inward plane out",
         solidSource(satLines(cuboid({1, 2, 3}, {2, 3, 4}), flipped)), 24.0);
  expect("triangular prism", solidSource(satLines(triangularPrism())), 30.0);
  expect("holes come off their faces", solidSource(satLines(boxWithSquareHole())), 48.0);
  expect("older layout", solidSource(satLines(cube, older)), 1.0);
  expect("characters as they are", solidSource(satLines(cube), false), 1.0);
  expect("lines split across continuation groups", solidSource(satLines(cube), true, 7), 1.0);
  expect("body transform", solidSource(satLines(cuboid({0, 0, 0}, {1, 2, 3}), scaled)), 48.0);
  expect("body transform of the older layout",
         solidSource(satLines(cuboid({0, 0, 0}, {1, 2, 3}), scaledOlder)), 48.0);
  expect("box written by another program", solidSource(writtenElsewhere(), false), 24.0);
}

TEST(SolidVolumeTest, CurvedBodiesAndTextThatIsNotReadableGiveNothing) {
  const Polyhedron cube = cuboid({0, 0, 0}, {1, 1, 1});
  SatOptions cone;
  cone.firstSurface = "cone-surface $-1 -1 $-1 0 0 0 0 0 1 1 0 0 1 I I 0 1 1 forward I I I I #";
  EXPECT_FALSE(volumeOf(solidSource(satLines(cube, cone))));
  SatOptions arc;
  arc.firstCurve = "ellipse-curve $-1 -1 $-1 0 0 0 0 0 1 1 0 0 1 I I #";
  EXPECT_FALSE(volumeOf(solidSource(satLines(cube, arc))));
  EXPECT_FALSE(volumeOf(""));
  // Newer files keep the body elsewhere: the entity has no text of it.
  EXPECT_FALSE(volumeOf(
      "  0\n3DSOLID\n  5\n2F\n100\nAcDbEntity\n  8\n0\n100\nAcDbModelerGeometry\n290\n1\n"
      "  2\n{6445A843-C4EE-47C4-AE36-F7E876683D60}\n100\nAcDb3dSolid\n350\n0\n"));
  EXPECT_FALSE(volumeOf(solidSource({"hello", "world"})));
  // Cut short inside a record.
  std::vector<std::string> lines = satLines(cube);
  lines.resize(20);
  lines.back() = lines.back().substr(0, 10);
  EXPECT_FALSE(volumeOf(solidSource(lines)));
  // A coedge whose next pointer leads to a point.
  lines = satLines(cube);
  const std::string lastPoint = "$" + std::to_string(lines.size() - 5);  // header and end aside
  const std::string fields = "coedge $-1 -1 $-1 ";
  for (std::string& line : lines) {
    if (line.rfind(fields, 0) == 0) {
      line = fields + lastPoint + line.substr(line.find(' ', fields.size()));
      break;
    }
  }
  EXPECT_FALSE(volumeOf(solidSource(lines)));
}

// --- Extents of solids and regions -------------------------------------------------

class AcisExtentsTest : public ::testing::Test {
 protected:
  template <typename T>
  Extents of(const std::string& source) {
    return extentsOf(db, addWithSource<T>(db, source));
  }
  Database db;
};

// The records between the header and the end mark.
std::vector<std::string> sat(std::vector<std::string> records) {
  std::vector<std::string> lines = satHeader();
  lines.insert(lines.end(), records.begin(), records.end());
  lines.push_back("End-of-ACIS-data");
  return lines;
}

TEST_F(AcisExtentsTest, SolidsTakeTheirVerticesPlacedByTheirBody) {
  EXPECT_TRUE(box(of<Solid3dEntity>(solidSource(satLines(cuboid({5, -1, 2}, {2, 3, 4})))),
                  {5, -1, 2}, {7, 2, 6}));
  SatOptions scaled;
  scaled.scaleByTwo = true;
  EXPECT_TRUE(box(of<Solid3dEntity>(solidSource(satLines(cuboid({0, 0, 0}, {1, 2, 3}), scaled))),
                  {10, 20, 30}, {12, 24, 36}));
  EXPECT_TRUE(
      box(of<Solid3dEntity>(solidSource(writtenElsewhere(), false)), {9, -1.5, -2}, {11, 1.5, 2}));
  EXPECT_TRUE(of<Solid3dEntity>(solidSource({"hello"})).isEmpty());
}

TEST_F(AcisExtentsTest, RegionBoundedByACircle) {
  // One face, one loop, one coedge on a closed edge round the circle of radius
  // 2 about (5,5); its only vertex is at (7,5).
  const auto lines = sat({
      "body $-1 -1 $-1 $1 $-1 $-1 #",
      "lump $-1 -1 $-1 $-1 $2 $0 #",
      "shell $-1 -1 $-1 $-1 $-1 $3 $-1 $1 #",
      "face $-1 -1 $-1 $-1 $4 $2 $-1 $5 forward double out #",
      "loop $-1 -1 $-1 $-1 $6 $3 #",
      "plane-surface $-1 -1 $-1 5 5 0 0 0 1 1 0 0 forward_v I I I I #",
      "coedge $-1 -1 $-1 $6 $6 $-1 $7 forward $4 $-1 #",
      "edge $-1 -1 $-1 $9 0 $9 6.2831853071795862 $6 $8 forward @7 unknown #",
      "ellipse-curve $-1 -1 $-1 5 5 0 0 0 1 2 0 0 1 I I #",
      "vertex $-1 -1 $-1 $7 $10 #",
      "point $-1 -1 $-1 7 5 0 #",
  });
  EXPECT_TRUE(box(of<RegionEntity>(solidSource(lines)), {3, 3, 0}, {7, 7, 0}));
}

// A half disc: an arc of the circle of radius 2 about (5,5) from (7,5) to
// (3,5), and the line back.
std::vector<std::string> halfDisc(const std::string& arcSense) {
  return sat({
      "body $-1 -1 $-1 $1 $-1 $-1 #",
      "lump $-1 -1 $-1 $-1 $2 $0 #",
      "shell $-1 -1 $-1 $-1 $-1 $3 $-1 $1 #",
      "face $-1 -1 $-1 $-1 $4 $2 $-1 $5 forward double out #",
      "loop $-1 -1 $-1 $-1 $6 $3 #",
      "plane-surface $-1 -1 $-1 5 5 0 0 0 1 1 0 0 forward_v I I I I #",
      "coedge $-1 -1 $-1 $7 $7 $-1 $8 forward $4 $-1 #",
      "coedge $-1 -1 $-1 $6 $6 $-1 $9 forward $4 $-1 #",
      "edge $-1 -1 $-1 $10 0 $11 3.1415926535897931 $6 $12 " + arcSense + " @7 unknown #",
      "edge $-1 -1 $-1 $11 0 $10 4 $7 $13 forward @7 unknown #",
      "vertex $-1 -1 $-1 $8 $14 #",
      "vertex $-1 -1 $-1 $8 $15 #",
      "ellipse-curve $-1 -1 $-1 5 5 0 0 0 1 2 0 0 1 I I #",
      "straight-curve $-1 -1 $-1 3 5 0 1 0 0 I I #",
      "point $-1 -1 $-1 7 5 0 #",
      "point $-1 -1 $-1 3 5 0 #",
  });
}

TEST_F(AcisExtentsTest, ArcEdgesFollowTheirSense) {
  // Forward, the edge runs with the circle, counterclockwise over the top;
  // reversed, the circle runs from the edge's end to its start: under.
  EXPECT_TRUE(box(of<RegionEntity>(solidSource(halfDisc("forward"))), {3, 5, 0}, {7, 7, 0}));
  EXPECT_TRUE(box(of<RegionEntity>(solidSource(halfDisc("reversed"))), {3, 3, 0}, {7, 5, 0}));
}

TEST_F(AcisExtentsTest, SphereWithoutEdgesTakesItsPolesAndHasNoVolume) {
  const auto lines = sat({
      "body $-1 -1 $-1 $1 $-1 $-1 #",
      "lump $-1 -1 $-1 $-1 $2 $0 #",
      "shell $-1 -1 $-1 $-1 $-1 $3 $-1 $1 #",
      "face $-1 -1 $-1 $-1 $-1 $2 $-1 $4 forward single #",
      "sphere-surface $-1 -1 $-1 1 2 3 4 1 0 0 0 0 1 forward_v I I I I #",
  });
  EXPECT_TRUE(box(of<Solid3dEntity>(solidSource(lines)), {-3, -2, -1}, {5, 6, 7}));
  EXPECT_FALSE(volumeOf(solidSource(lines)));
}

}  // namespace
}  // namespace host::geometry
