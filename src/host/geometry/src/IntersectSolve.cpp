// Where two pieces meet. Segments, circles and lines against conics have
// closed forms; everything else is found on the pieces' samples and then
// refined on the true curves, so the answers are as exact as the closed ones.
#include "IntersectSolve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace host::geometry {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

using Kind = Piece::Kind;

struct Pair {
  double sa = 0.0;
  double sb = 0.0;
  bool tangent = false;
};

// What one closed-form case finds: never more than four points.
struct Found {
  std::array<Pair, 4> items;
  int count = 0;
  void add(double sa, double sb, bool tangent = false) {
    if (count < 4) items[static_cast<std::size_t>(count++)] = {sa, sb, tangent};
  }
};

double crossXY(double ax, double ay, double bx, double by) {
  return ax * by - ay * bx;
}

// ---- parameters of points ------------------------------------------------------

double segmentParam(const Piece& s, const Point3d& p) {
  const double dx = s.p1.x - s.p0.x;
  const double dy = s.p1.y - s.p0.y;
  return ((p.x - s.p0.x) * dx + (p.y - s.p0.y) * dy) / (dx * dx + dy * dy);
}

// The segment's parameter of a point on its line, when the point is on the
// segment or within the tolerance past an end.
std::optional<double> segmentParamWithin(const Piece& s, const Point3d& p, double tolerance) {
  const double slack = tolerance / distanceXY(s.p0, s.p1);
  const double t = segmentParam(s, p);
  if (t < -slack || t > 1.0 + slack) return std::nullopt;
  return std::clamp(t, 0.0, 1.0);
}

// The fraction of the sweep at which an angle lies, counted in the sweep's
// direction; above 1 when the angle is outside.
double sweepFraction(double angle, double start, double sweep) {
  double d = std::fmod((angle - start) * (sweep >= 0.0 ? 1.0 : -1.0), kTwoPi);
  if (d < 0.0) d += kTwoPi;
  return d / std::fabs(sweep);
}

// A conic's parameter for a point of it: inside its sweep, or within the
// tolerance of an end.
std::optional<double> conicParam(const Piece& c, double fraction, const Point3d& p,
                                 double tolerance) {
  if (fraction <= 1.0) return fraction;
  if (distanceXY(p, c.last) <= tolerance) return 1.0;
  if (distanceXY(p, c.first) <= tolerance) return 0.0;
  return std::nullopt;
}

std::optional<double> circleParam(const Piece& c, const Point3d& p, double tolerance) {
  const double angle = std::atan2(p.y - c.c.y, p.x - c.c.x);
  return conicParam(c, sweepFraction(angle, c.angle0, c.sweepXY), p, tolerance);
}

Point3d conicAt(const Piece& c, double t) {
  return plus(c.c, plus(scaled(c.u, std::cos(t)), scaled(c.v, std::sin(t))));
}

// ---- numeric refinement -----------------------------------------------------------

// Damped Newton on a(s) - b(t) = 0 in XY (Levenberg-Marquardt): Newton's speed
// where the curves cross, and still a descent to the touching point where
// they are tangent and the Jacobian is singular.
struct Refined {
  double s = 0.0;
  double t = 0.0;
  double gap = 0.0;
  bool tangent = false;
};

Refined refine(const Piece& a, const Piece& b, double s, double t) {
  auto gapOf = [&](double ss, double tt, double& fx, double& fy) {
    const Point3d pa = a.at(ss);
    const Point3d pb = b.at(tt);
    fx = pa.x - pb.x;
    fy = pa.y - pb.y;
    return fx * fx + fy * fy;
  };
  double fx = 0.0;
  double fy = 0.0;
  double cost = gapOf(s, t, fx, fy);
  double lambda = 1e-4;
  for (int iteration = 0; iteration < 100 && cost > 0.0; ++iteration) {
    const Point3d va = a.velocity(s);
    const Point3d vb = scaled(b.velocity(t), -1.0);
    const double a11 = va.x * va.x + va.y * va.y;
    const double a12 = va.x * vb.x + va.y * vb.y;
    const double a22 = vb.x * vb.x + vb.y * vb.y;
    const double g1 = va.x * fx + va.y * fy;
    const double g2 = vb.x * fx + vb.y * fy;
    // A piece that is a point has no direction; its parameter must stay put
    // rather than make the system singular.
    const double floor = 1e-12 * (a11 + a22) + 1e-300;
    bool moved = false;
    double ns = s;
    double nt = t;
    while (lambda < 1e16) {
      const double m11 = a11 + lambda * std::max(a11, floor);
      const double m22 = a22 + lambda * std::max(a22, floor);
      const double det = m11 * m22 - a12 * a12;
      if (det > 0.0) {
        ns = std::clamp(s - (m22 * g1 - a12 * g2) / det, 0.0, 1.0);
        nt = std::clamp(t - (m11 * g2 - a12 * g1) / det, 0.0, 1.0);
        double nfx = 0.0;
        double nfy = 0.0;
        const double next = gapOf(ns, nt, nfx, nfy);
        if (next < cost) {
          cost = next;
          fx = nfx;
          fy = nfy;
          moved = true;
          lambda = std::max(lambda * 0.1, 1e-15);
          break;
        }
      }
      lambda *= 10.0;
    }
    if (!moved) break;
    const double step = std::fabs(ns - s) + std::fabs(nt - t);
    s = ns;
    t = nt;
    if (step < 1e-16) break;
  }
  Refined r{s, t, std::sqrt(cost), false};
  const Point3d va = a.velocity(s);
  const Point3d vb = b.velocity(t);
  const double la = normXY(va.x, va.y);
  const double lb = normXY(vb.x, vb.y);
  r.tangent = la > 0.0 && lb > 0.0 && std::fabs(crossXY(va.x, va.y, vb.x, vb.y)) < 1e-3 * la * lb;
  return r;
}

// ---- points on pieces ----------------------------------------------------------------

// The closest points of two chords in XY: their distance and where on each.
struct Closest {
  double distance = 0.0;
  double u = 0.0;
  double v = 0.0;
};

double pointChordParam(const Point3d& p, const Point3d& a, const Point3d& b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double len2 = dx * dx + dy * dy;
  return len2 > 0.0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / len2, 0.0, 1.0) : 0.0;
}

Point3d lerp(const Point3d& a, const Point3d& b, double f) {
  return plus(a, scaled(minus(b, a), f));
}

Closest closestChords(const Point3d& a0, const Point3d& a1, const Point3d& b0, const Point3d& b1) {
  const double ax = a1.x - a0.x;
  const double ay = a1.y - a0.y;
  const double bx = b1.x - b0.x;
  const double by = b1.y - b0.y;
  const double denom = crossXY(ax, ay, bx, by);
  if (denom != 0.0) {
    const double wx = b0.x - a0.x;
    const double wy = b0.y - a0.y;
    const double u = crossXY(wx, wy, bx, by) / denom;
    const double v = crossXY(wx, wy, ax, ay) / denom;
    if (u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0) return {0.0, u, v};
  }
  // Apart: the closest pair has an end of one of them.
  Closest best{std::numeric_limits<double>::infinity(), 0.0, 0.0};
  auto consider = [&best](double d, double u, double v) {
    if (d < best.distance) best = {d, u, v};
  };
  for (double v : {0.0, 1.0}) {
    const Point3d p = v == 0.0 ? b0 : b1;
    const double u = pointChordParam(p, a0, a1);
    consider(distanceXY(lerp(a0, a1, u), p), u, v);
  }
  for (double u : {0.0, 1.0}) {
    const Point3d p = u == 0.0 ? a0 : a1;
    const double v = pointChordParam(p, b0, b1);
    consider(distanceXY(lerp(b0, b1, v), p), u, v);
  }
  return best;
}

std::optional<double> pointOn(const Piece& piece, const Point3d& p, double tolerance) {
  switch (piece.kind) {
    case Kind::Point:
      if (distanceXY(piece.p0, p) <= tolerance) return 0.0;
      return std::nullopt;
    case Kind::Segment: {
      const double t = std::clamp(segmentParam(piece, p), 0.0, 1.0);
      if (distanceXY(piece.at(t), p) <= tolerance) return t;
      return std::nullopt;
    }
    case Kind::Conic:
    case Kind::Spline:
      break;
  }
  if (piece.circle) {
    if (std::fabs(distanceXY(piece.c, p) - piece.radius) > tolerance) return std::nullopt;
    return circleParam(piece, p, tolerance);
  }
  // Start at the nearest sample chord and let the refinement settle it.
  const Flat& flat = piece.flattened(tolerance);
  double best = std::numeric_limits<double>::infinity();
  double start = 0.0;
  for (std::size_t i = 1; i < flat.points.size(); ++i) {
    const double f = pointChordParam(p, flat.points[i - 1], flat.points[i]);
    const double d = distanceXY(lerp(flat.points[i - 1], flat.points[i], f), p);
    if (d < best) {
      best = d;
      start = flat.params[i - 1] + f * (flat.params[i] - flat.params[i - 1]);
    }
  }
  if (best > flat.tolerance + tolerance) return std::nullopt;
  Piece point;
  point.p0 = p;
  const Refined r = refine(piece, point, start, 0.0);
  if (r.gap <= tolerance) return r.s;
  return std::nullopt;
}

// The ends of a piece; a closed loop has none.
int endsOf(const Piece& piece, std::array<double, 2>& ends) {
  if (piece.kind == Kind::Point) {
    ends[0] = 0.0;
    return 1;
  }
  if (piece.closedLoop()) return 0;
  ends = {0.0, 1.0};
  return 2;
}

// Ends of either piece that lie on the other: where they merely touch, and
// where pieces that run along one another begin and stop doing so.
void endContacts(const Piece& a, const Piece& b, double tolerance, Found& found) {
  std::array<double, 2> ends{};
  const int na = endsOf(a, ends);
  for (int i = 0; i < na; ++i) {
    const double sa = ends[static_cast<std::size_t>(i)];
    if (const auto sb = pointOn(b, sa == 0.0 ? a.first : a.last, tolerance)) found.add(sa, *sb);
  }
  const int nb = endsOf(b, ends);
  for (int i = 0; i < nb; ++i) {
    const double sb = ends[static_cast<std::size_t>(i)];
    if (const auto sa = pointOn(a, sb == 0.0 ? b.first : b.last, tolerance)) found.add(*sa, sb);
  }
}

// ---- closed forms ------------------------------------------------------------------

double lineDistance(const Piece& s, const Point3d& p) {
  const double dx = s.p1.x - s.p0.x;
  const double dy = s.p1.y - s.p0.y;
  return std::fabs(crossXY(dx, dy, p.x - s.p0.x, p.y - s.p0.y)) / normXY(dx, dy);
}

void segmentSegment(const Piece& a, const Piece& b, double tolerance, Found& found) {
  // Running along one another: the overlap's ends, or nothing when apart.
  if ((lineDistance(a, b.p0) <= tolerance && lineDistance(a, b.p1) <= tolerance) ||
      (lineDistance(b, a.p0) <= tolerance && lineDistance(b, a.p1) <= tolerance)) {
    endContacts(a, b, tolerance, found);
    return;
  }
  const double ax = a.p1.x - a.p0.x;
  const double ay = a.p1.y - a.p0.y;
  const double bx = b.p1.x - b.p0.x;
  const double by = b.p1.y - b.p0.y;
  const double denom = crossXY(ax, ay, bx, by);
  if (denom != 0.0) {
    const double wx = b.p0.x - a.p0.x;
    const double wy = b.p0.y - a.p0.y;
    const double s = crossXY(wx, wy, bx, by) / denom;
    const double t = crossXY(wx, wy, ax, ay) / denom;
    const double slackA = tolerance / normXY(ax, ay);
    const double slackB = tolerance / normXY(bx, by);
    if (s >= -slackA && s <= 1.0 + slackA && t >= -slackB && t <= 1.0 + slackB) {
      found.add(std::clamp(s, 0.0, 1.0), std::clamp(t, 0.0, 1.0));
      return;
    }
  }
  // Nearly parallel, an end may touch the other though the lines cross
  // further on.
  endContacts(a, b, tolerance, found);
}

void lineCircle(const Piece& line, const Piece& circle, double tolerance, Found& found) {
  const double dx = line.p1.x - line.p0.x;
  const double dy = line.p1.y - line.p0.y;
  const double len = normXY(dx, dy);
  const double f = ((circle.c.x - line.p0.x) * dx + (circle.c.y - line.p0.y) * dy) / (len * len);
  const Point3d foot{line.p0.x + f * dx, line.p0.y + f * dy, 0.0};
  const double h = distanceXY(foot, circle.c);
  const double r = circle.radius;
  if (h > r + tolerance) return;
  std::array<Point3d, 2> points{foot, foot};
  int count = 1;
  const bool tangent = h >= r - tolerance;
  if (!tangent) {
    const double k = std::sqrt((r - h) * (r + h)) / len;
    points[0] = {foot.x - k * dx, foot.y - k * dy, 0.0};
    points[1] = {foot.x + k * dx, foot.y + k * dy, 0.0};
    count = 2;
  }
  const int before = found.count;
  for (int i = 0; i < count; ++i) {
    const Point3d& p = points[static_cast<std::size_t>(i)];
    const auto sl = segmentParamWithin(line, p, tolerance);
    const auto sc = sl ? circleParam(circle, p, tolerance) : std::nullopt;
    if (sl && sc) found.add(*sl, *sc, tangent);
  }
  if (found.count == before) endContacts(line, circle, tolerance, found);
}

// A conic c + u cos t + v sin t, seen along the line's normal n, is
// c.n + h cos(t - alpha) with h and alpha from u.n and v.n: the affine image
// of the unit circle meets the line where that equals the line's offset.
void lineConic(const Piece& line, const Piece& conic, double tolerance, Found& found) {
  const double dx = line.p1.x - line.p0.x;
  const double dy = line.p1.y - line.p0.y;
  const double len = normXY(dx, dy);
  const double nx = -dy / len;
  const double ny = dx / len;
  const double offset = nx * (line.p0.x - conic.c.x) + ny * (line.p0.y - conic.c.y);
  const double a = nx * conic.u.x + ny * conic.u.y;
  const double b = nx * conic.v.x + ny * conic.v.y;
  const double h = normXY(a, b);
  const int before = found.count;
  if (h > 0.0 && std::fabs(offset) <= h + tolerance) {
    const double alpha = std::atan2(b, a);
    std::array<double, 2> angles{};
    int count = 1;
    const bool tangent = std::fabs(offset) >= h - tolerance;
    if (tangent) {
      angles[0] = offset > 0.0 ? alpha : alpha + kPi;
    } else {
      const double delta = std::acos(offset / h);
      angles = {alpha - delta, alpha + delta};
      count = 2;
    }
    for (int i = 0; i < count; ++i) {
      const double angle = angles[static_cast<std::size_t>(i)];
      const Point3d p = conicAt(conic, angle);
      const auto sc = conicParam(conic, sweepFraction(angle, conic.t0, conic.sweep), p, tolerance);
      const auto sl = sc ? segmentParamWithin(line, p, tolerance) : std::nullopt;
      if (sl && sc) found.add(*sl, *sc, tangent);
    }
  }
  if (found.count == before) endContacts(line, conic, tolerance, found);
}

void circleCircle(const Piece& a, const Piece& b, double tolerance, Found& found) {
  const double dx = b.c.x - a.c.x;
  const double dy = b.c.y - a.c.y;
  const double d = normXY(dx, dy);
  const double r1 = a.radius;
  const double r2 = b.radius;
  if (d <= tolerance) {
    // The same circle: where the arcs' common stretches end.
    if (std::fabs(r1 - r2) <= tolerance) endContacts(a, b, tolerance, found);
    return;
  }
  if (d > r1 + r2 + tolerance || d < std::fabs(r1 - r2) - tolerance) return;
  const double ex = dx / d;
  const double ey = dy / d;
  std::array<Point3d, 2> points{};
  int count = 1;
  bool tangent = true;
  if (std::fabs(d - (r1 + r2)) <= tolerance) {
    points[0] = {a.c.x + ex * r1, a.c.y + ey * r1, 0.0};
  } else if (std::fabs(d - std::fabs(r1 - r2)) <= tolerance) {
    const double along = r1 >= r2 ? r1 : -r1;
    points[0] = {a.c.x + ex * along, a.c.y + ey * along, 0.0};
  } else {
    const double x = (d * d + r1 * r1 - r2 * r2) / (2.0 * d);
    const double y = std::sqrt(std::max(0.0, (r1 - x) * (r1 + x)));
    const double mx = a.c.x + ex * x;
    const double my = a.c.y + ey * x;
    points[0] = {mx + ey * y, my - ex * y, 0.0};
    points[1] = {mx - ey * y, my + ex * y, 0.0};
    count = 2;
    tangent = false;
  }
  const int before = found.count;
  for (int i = 0; i < count; ++i) {
    const Point3d& p = points[static_cast<std::size_t>(i)];
    const auto sa = circleParam(a, p, tolerance);
    const auto sb = sa ? circleParam(b, p, tolerance) : std::nullopt;
    if (sa && sb) found.add(*sa, *sb, tangent);
  }
  if (found.count == before) endContacts(a, b, tolerance, found);
}

// ---- by samples ------------------------------------------------------------------------

// Whether every sample of one piece (a spread of them, ends included) lies
// on the other's samples: the two run along one another.
bool liesAlong(const Flat& a, const Flat& b, double margin) {
  const std::size_t n = a.points.size();
  const std::size_t stride = std::max<std::size_t>(1, n / 32);
  for (std::size_t k = 0; k < n + stride; k += stride) {
    const Point3d& p = a.points[std::min(k, n - 1)];
    bool near = b.points.size() == 1 && distanceXY(p, b.points[0]) <= margin;
    for (std::size_t j = 1; j < b.points.size() && !near; ++j) {
      const double f = pointChordParam(p, b.points[j - 1], b.points[j]);
      near = distanceXY(lerp(b.points[j - 1], b.points[j], f), p) <= margin;
    }
    if (!near) return false;
  }
  return true;
}

// The boxes of a flat's chords taken a block at a time.
constexpr std::size_t kBlock = 32;

std::size_t chordCount(const Flat& f) {
  return std::max<std::size_t>(f.points.size(), 2) - 1;
}

std::vector<Box2> blockBoxes(const Flat& f) {
  std::vector<Box2> boxes;
  const std::size_t chords = chordCount(f);
  for (std::size_t from = 0; from < chords; from += kBlock) {
    Box2 box;
    for (std::size_t i = from; i <= from + kBlock && i < f.points.size(); ++i) {
      box.add(f.points[i].x, f.points[i].y);
    }
    boxes.push_back(box);
  }
  return boxes;
}

bool chordsMayMeet(const Point3d& a0, const Point3d& a1, const Point3d& b0, const Point3d& b1,
                   double margin) {
  return std::min(a0.x, a1.x) <= std::max(b0.x, b1.x) + margin &&
         std::min(b0.x, b1.x) <= std::max(a0.x, a1.x) + margin &&
         std::min(a0.y, a1.y) <= std::max(b0.y, b1.y) + margin &&
         std::min(b0.y, b1.y) <= std::max(a0.y, a1.y) + margin;
}

// Chord pairs near enough that the curves they follow may meet there, with
// the parameters of their closest points. Chords go in blocks so that far
// apart stretches are passed over a block at a time.
std::vector<Pair> candidates(const Flat& fa, const Flat& fb, double margin) {
  const std::size_t na = chordCount(fa);
  const std::size_t nb = chordCount(fb);
  const std::vector<Box2> blocksA = blockBoxes(fa);
  const std::vector<Box2> blocksB = blockBoxes(fb);
  // A flat of one point is a chord of no length.
  auto end = [](const Flat& f, std::size_t i) { return std::min(i + 1, f.points.size() - 1); };
  std::vector<Pair> out;
  for (std::size_t ba = 0; ba < blocksA.size(); ++ba) {
    for (std::size_t bb = 0; bb < blocksB.size(); ++bb) {
      if (!blocksA[ba].meets(blocksB[bb], margin)) continue;
      for (std::size_t i = ba * kBlock; i < std::min(na, (ba + 1) * kBlock); ++i) {
        const std::size_t i1 = end(fa, i);
        const Point3d& a0 = fa.points[i];
        const Point3d& a1 = fa.points[i1];
        for (std::size_t j = bb * kBlock; j < std::min(nb, (bb + 1) * kBlock); ++j) {
          const std::size_t j1 = end(fb, j);
          const Point3d& b0 = fb.points[j];
          const Point3d& b1 = fb.points[j1];
          if (!chordsMayMeet(a0, a1, b0, b1, margin)) continue;
          const Closest c = closestChords(a0, a1, b0, b1);
          if (c.distance > margin) continue;
          out.push_back({fa.params[i] + c.u * (fa.params[i1] - fa.params[i]),
                         fb.params[j] + c.v * (fb.params[j1] - fb.params[j]), false});
        }
      }
    }
  }
  return out;
}

void bySamples(const Piece& a, std::size_t index, const Piece& b, double tolerance, double scale,
               std::vector<Hit>& hits) {
  const Flat& fa = a.flattened(tolerance);
  const Flat& fb = b.flattened(tolerance);
  const double margin = fa.tolerance + fb.tolerance + tolerance;
  const std::vector<Pair> near = candidates(fa, fb, margin);
  // Many near chords may mean one curve follows the other; then only where
  // they part counts, as for lines along lines.
  if (near.size() > 8 && (liesAlong(fa, fb, margin) || liesAlong(fb, fa, margin))) {
    Found found;
    endContacts(a, b, tolerance, found);
    for (int i = 0; i < found.count; ++i) {
      const double s = found.items[static_cast<std::size_t>(i)].sa;
      hits.push_back({index, s, a.at(s), tolerance});
    }
    return;
  }
  // Tangent contacts found this way are sure only to about the square root
  // of the tolerance along the tangent; closer ones are the same contact.
  const double tangentRadius = std::max(tolerance, std::sqrt(tolerance * scale));
  for (const Pair& start : near) {
    const Refined r = refine(a, b, start.sa, start.sb);
    if (r.gap > tolerance) continue;
    hits.push_back({index, r.s, a.at(r.s), r.tangent ? tangentRadius : tolerance});
  }
}

}  // namespace

void meet(const Piece& a, std::size_t index, const Piece& b, double tolerance, double scale,
          std::vector<Hit>& hits) {
  if (!a.box.meets(b.box, tolerance)) return;
  Found found;
  bool swapped = false;
  const bool lineA = a.kind == Kind::Segment;
  const bool lineB = b.kind == Kind::Segment;
  if (a.kind == Kind::Point) {
    if (const auto sb = pointOn(b, a.p0, tolerance)) found.add(0.0, *sb);
  } else if (b.kind == Kind::Point) {
    if (const auto sa = pointOn(a, b.p0, tolerance)) found.add(*sa, 0.0);
  } else if (lineA && lineB) {
    segmentSegment(a, b, tolerance, found);
  } else if ((lineA && b.kind == Kind::Conic) || (lineB && a.kind == Kind::Conic)) {
    swapped = lineB;
    const Piece& line = swapped ? b : a;
    const Piece& conic = swapped ? a : b;
    if (conic.circle) {
      lineCircle(line, conic, tolerance, found);
    } else {
      lineConic(line, conic, tolerance, found);
    }
  } else if (a.circle && b.circle) {
    circleCircle(a, b, tolerance, found);
  } else {
    bySamples(a, index, b, tolerance, scale, hits);
    return;
  }
  for (int i = 0; i < found.count; ++i) {
    const Pair& p = found.items[static_cast<std::size_t>(i)];
    const double s = swapped ? p.sb : p.sa;
    hits.push_back({index, s, a.at(s), tolerance});
  }
}

}  // namespace host::geometry
