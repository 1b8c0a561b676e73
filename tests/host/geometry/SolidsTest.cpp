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
#include "host/geometry/Ocs.h"

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

std::string xyz(const Point3d& p) {
  std::ostringstream out;
  out.precision(17);
  out << p.x << " " << p.y << " " << p.z;
  return out.str();
}

std::string ref(long index) {
  return "$" + std::to_string(index);
}

std::vector<std::string> satHeader(bool newLayout = true) {
  return {newLayout ? "700 0 1 0" : "400 0 1 0",
          "@6 zarvel @9 ACIS 7.0 @24 Mon Jan 05 10:00:00 2026", "1 9.9999999999999995e-007 1e-010"};
}

// The faces' loops in turn, each loop's coedges in turn, and each edge once,
// run from where its first coedge starts.
struct Topology {
  struct Coedge {
    long loop, from, to, edge;
  };
  std::vector<long> loopFace;
  std::vector<long> loopStart;  // the loop's first coedge; one more for the end
  std::vector<Coedge> coedges;
  std::vector<long> edgeFirstUse;
  std::vector<long> vertexEdge;  // the first edge at each vertex
};

Topology topologyOf(const Polyhedron& poly) {
  Topology t;
  std::map<std::pair<int, int>, long> edgeOf;
  for (std::size_t f = 0; f < poly.faces.size(); ++f) {
    for (const auto& ring : poly.faces[f]) {
      t.loopFace.push_back(static_cast<long>(f));
      t.loopStart.push_back(static_cast<long>(t.coedges.size()));
      for (std::size_t k = 0; k < ring.size(); ++k) {
        const int from = ring[k];
        const int to = ring[(k + 1) % ring.size()];
        const auto found = edgeOf.emplace(std::minmax(from, to), t.edgeFirstUse.size());
        if (found.second) t.edgeFirstUse.push_back(static_cast<long>(t.coedges.size()));
        t.coedges.push_back(
            {static_cast<long>(t.loopFace.size()) - 1, from, to, found.first->second});
      }
    }
  }
  t.loopStart.push_back(static_cast<long>(t.coedges.size()));
  t.vertexEdge.assign(poly.vertices.size(), -1);
  for (long e = static_cast<long>(t.edgeFirstUse.size()) - 1; e >= 0; --e) {
    const Topology::Coedge& u = t.coedges[t.edgeFirstUse[e]];
    t.vertexEdge[u.from] = t.vertexEdge[u.to] = e;
  }
  return t;
}

// Newell's normal of the face's outer loop, which points outwards.
Point3d outwardNormal(const Polyhedron& poly, long face) {
  const auto& ring = poly.faces[face][0];
  Point3d n;
  for (std::size_t k = 0; k < ring.size(); ++k) {
    n = plus(n, cross(poly.vertices[ring[k]], poly.vertices[ring[(k + 1) % ring.size()]]));
  }
  return unit(n);
}

// The records of the polyhedron, one a line, with the header and the end mark.
std::vector<std::string> satLines(const Polyhedron& poly, const SatOptions& options = {}) {
  const Topology t = topologyOf(poly);
  const long nF = static_cast<long>(poly.faces.size());
  const long nL = static_cast<long>(t.loopFace.size());
  const long nC = static_cast<long>(t.coedges.size());
  const long nE = static_cast<long>(t.edgeFirstUse.size());
  const long faces = options.scaleByTwo ? 4 : 3;
  const long surfaces = faces + nF, loops = surfaces + nF, coedges = loops + nL;
  const long edges = coedges + nC, curves = edges + nE, vertices = curves + nE;
  const long points = vertices + static_cast<long>(poly.vertices.size());
  std::vector<std::string> lines = satHeader(options.newLayout);
  auto add = [&](const std::string& type, const std::string& fields) {
    lines.push_back(type + (options.newLayout ? " $-1 -1 $-1 " : " $-1 ") + fields + " #");
  };
  add("body", "$1 $-1 " + ref(options.scaleByTwo ? 3 : -1));
  add("lump", "$-1 $2 $0");
  add("shell", "$-1 $-1 " + ref(faces) + " $-1 $1");
  if (options.scaleByTwo) {
    // Transforms have no pattern pointer among their first fields.
    lines.push_back(std::string("transform") + (options.newLayout ? " $-1 -1 " : " $-1 ") +
                    "2 0 0 0 2 0 0 0 2 10 20 30 1 rotate no_reflect no_shear #");
  }
  long loop = 0;
  for (long f = 0; f < nF; ++f) {
    while (t.loopFace[loop] != f) ++loop;
    add("face", ref(f + 1 < nF ? faces + f + 1 : -1) + " " + ref(loops + loop) + " $2 $-1 " +
                    ref(surfaces + f) +
                    (options.flipFirstFace && f == 0 ? " reversed" : " forward") + " single");
  }
  for (long f = 0; f < nF; ++f) {
    const Point3d n = scaled(outwardNormal(poly, f), options.flipFirstFace && f == 0 ? -1 : 1);
    if (f == 0 && !options.firstSurface.empty()) {
      lines.push_back(options.firstSurface);
    } else {
      add("plane-surface",
          xyz(poly.vertices[poly.faces[f][0][0]]) + " " + xyz(n) + " 1 0 0 forward_v I I I I");
    }
  }
  for (long l = 0; l < nL; ++l) {
    const bool last = l + 1 == nL || t.loopFace[l + 1] != t.loopFace[l];
    add("loop", ref(last ? -1 : loops + l + 1) + " " + ref(coedges + t.loopStart[l]) + " " +
                    ref(faces + t.loopFace[l]));
  }
  for (long c = 0; c < nC; ++c) {
    const Topology::Coedge& u = t.coedges[c];
    const long first = t.loopStart[u.loop];
    const long end = t.loopStart[u.loop + 1];
    long partner = -1;
    for (long other = 0; other < nC; ++other) {
      if (t.coedges[other].from == u.to && t.coedges[other].to == u.from) partner = other;
    }
    const bool forward = t.coedges[t.edgeFirstUse[u.edge]].from == u.from;
    add("coedge", ref(coedges + (c + 1 == end ? first : c + 1)) + " " +
                      ref(coedges + (c == first ? end - 1 : c - 1)) + " " +
                      ref(partner < 0 ? -1 : coedges + partner) + " " + ref(edges + u.edge) +
                      (forward ? " forward " : " reversed ") + ref(loops + u.loop) + " $-1");
  }
  for (long e = 0; e < nE; ++e) {
    const Topology::Coedge& u = t.coedges[t.edgeFirstUse[e]];
    const long v0 = vertices + u.from;
    const long v1 = vertices + u.to;
    add("edge",
        (options.newLayout ? ref(v0) + " 0 " + ref(v1) + " 1 " : ref(v0) + " " + ref(v1) + " ") +
            ref(coedges + t.edgeFirstUse[e]) + " " + ref(curves + e) + " forward" +
            (options.newLayout ? " @7 unknown" : ""));
  }
  for (long e = 0; e < nE; ++e) {
    const Topology::Coedge& u = t.coedges[t.edgeFirstUse[e]];
    const Point3d& a = poly.vertices[u.from];
    if (e == 0 && !options.firstCurve.empty()) {
      lines.push_back(options.firstCurve);
    } else {
      add("straight-curve", xyz(a) + " " + xyz(minus(poly.vertices[u.to], a)) + " I I");
    }
  }
  for (std::size_t v = 0; v < poly.vertices.size(); ++v) {
    add("vertex", ref(edges + t.vertexEdge[v]) + " " + ref(points + static_cast<long>(v)));
  }
  for (const Point3d& p : poly.vertices) add("point", xyz(p));
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
  // The bottom, seen from below, and the top with their holes; the outer
  // walls, and the hole's.
  p.faces = {{{0, 3, 2, 1}, {4, 5, 6, 7}},
             {{8, 9, 10, 11}, {12, 15, 14, 13}},
             {{0, 1, 9, 8}},
             {{1, 2, 10, 9}},
             {{2, 3, 11, 10}},
             {{3, 0, 8, 11}},
             {{4, 12, 13, 5}},
             {{5, 13, 14, 6}},
             {{6, 14, 15, 7}},
             {{7, 15, 12, 4}}};
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
  EXPECT_FALSE(
      volumeOf("  0\n3DSOLID\n  5\n2F\n100\nAcDbEntity\n  8\n0\n100\nAcDbModelerGeometry\n290\n1\n"
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

// A body of one lump of one shell, its first face record 3, and the records
// from there on, between the header and the end mark.
std::vector<std::string> sat(std::vector<std::string> records) {
  std::vector<std::string> lines = satHeader();
  lines.insert(lines.end(), {"body $-1 -1 $-1 $1 $-1 $-1 #", "lump $-1 -1 $-1 $-1 $2 $0 #",
                             "shell $-1 -1 $-1 $-1 $-1 $3 $-1 $1 #"});
  lines.insert(lines.end(), records.begin(), records.end());
  lines.push_back("End-of-ACIS-data");
  return lines;
}

// A region of one face in the plane z = 0 with one loop, and the records from
// its first coedge, record 6, on.
std::vector<std::string> region(std::vector<std::string> records) {
  records.insert(
      records.begin(),
      {"face $-1 -1 $-1 $-1 $4 $2 $-1 $5 forward double out #", "loop $-1 -1 $-1 $-1 $6 $3 #",
       "plane-surface $-1 -1 $-1 5 5 0 0 0 1 1 0 0 forward_v I I I I #"});
  return sat(records);
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
  const auto lines = region({
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
  return region({
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
      "face $-1 -1 $-1 $-1 $-1 $2 $-1 $4 forward single #",
      "sphere-surface $-1 -1 $-1 1 2 3 4 1 0 0 0 0 1 forward_v I I I I #",
  });
  EXPECT_TRUE(box(of<Solid3dEntity>(solidSource(lines)), {-3, -2, -1}, {5, 6, 7}));
  EXPECT_FALSE(volumeOf(solidSource(lines)));
}

}  // namespace
}  // namespace host::geometry
