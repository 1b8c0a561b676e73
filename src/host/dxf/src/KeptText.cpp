// What the geometry needs out of the text of the kinds the host keeps as text:
// a hatch's boundary paths, the SAT text of solids and regions, the points of
// kinds the host does not model. Each is read from the tags on demand.
#include "KeptText.h"

#include <cctype>
#include <optional>

#include "GroupCodes.h"
#include "TagReader.h"
#include "host/dxf/ParseError.h"

namespace host::dxf {
namespace {

// --- Hatches: the boundary paths, in the hatch's plane ----------------------
// Edge angles are in degrees, and clockwise arcs and elliptic arcs keep their
// angles mirrored, as if measured clockwise.

constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;

class Cursor {
 public:
  explicit Cursor(std::vector<Tag> tags) : tags_(std::move(tags)) {}
  bool at(int code, std::size_t ahead = 0) const {
    return i_ + ahead < tags_.size() && tags_[i_ + ahead].code == code;
  }
  std::optional<double> real(int code) {
    if (!at(code)) return std::nullopt;
    return parseDouble(tags_[i_++].value);
  }
  std::optional<long> integer(int code) {
    if (!at(code)) return std::nullopt;
    const auto v = parseInt(tags_[i_++].value);
    if (!v) return std::nullopt;
    return static_cast<long>(*v);
  }
  // A point of two coordinates, x under the code and y under the code plus 10.
  std::optional<Point3d> point(int code, double z) {
    const auto x = real(code);
    const auto y = x ? real(code + 10) : std::nullopt;
    if (!y) return std::nullopt;
    return Point3d{*x, *y, z};
  }
  void skip() { ++i_; }
  bool done() const { return i_ >= tags_.size(); }
  // Moves past the tag of the subclass marker, if there is one.
  void seekSubclass(std::string_view name) {
    for (std::size_t k = 0; k < tags_.size(); ++k) {
      if (tags_[k].code == 100 && tags_[k].value == name) {
        i_ = k + 1;
        return;
      }
    }
  }

 private:
  std::vector<Tag> tags_;
  std::size_t i_ = 0;
};

// A count read from the text, kept within what the text can hold.
bool count(Cursor& c, int code, long& n) {
  const auto v = c.integer(code);
  if (!v || *v < 0 || *v > 10000000) return false;
  n = *v;
  return true;
}

struct Plane {
  Point3d normal = kUnitZ;
  double elevation = 0.0;
};

using Entities = std::vector<std::unique_ptr<Entity>>;

bool readPolylinePath(Cursor& c, const Plane& plane, Entities& out) {
  const auto hasBulge = c.integer(72);
  const auto closed = c.integer(73);
  long n = 0;
  if (!hasBulge || !closed || !count(c, 93, n)) return false;
  auto polyline = std::make_unique<LwPolylineEntity>();
  polyline->closed = *closed != 0;
  polyline->elevation = plane.elevation;
  polyline->normal = plane.normal;
  for (long k = 0; k < n; ++k) {
    const auto p = c.point(10, 0.0);
    if (!p) return false;
    LwVertex v{p->x, p->y, 0.0};
    if (c.at(42)) v.bulge = c.real(42).value_or(0.0);
    polyline->vertices.push_back(v);
  }
  out.push_back(std::move(polyline));
  return true;
}

// The angles of an arc or elliptic arc edge, counterclockwise in radians.
void edgeAngles(double start, double end, bool counterclockwise, double& from, double& to) {
  if (counterclockwise) {
    from = start * kRadiansPerDegree;
    to = end * kRadiansPerDegree;
  } else {
    from = -end * kRadiansPerDegree;
    to = -start * kRadiansPerDegree;
  }
}

bool readArcEdge(Cursor& c, const Plane& plane, Entities& out) {
  const auto center = c.point(10, plane.elevation);
  const auto radius = center ? c.real(40) : std::nullopt;
  const auto start = radius ? c.real(50) : std::nullopt;
  const auto end = start ? c.real(51) : std::nullopt;
  if (!end) return false;
  const bool ccw = c.integer(73).value_or(1) != 0;
  auto arc = std::make_unique<ArcEntity>();
  arc->center = *center;
  arc->radius = *radius;
  arc->normal = plane.normal;
  edgeAngles(*start, *end, ccw, arc->startAngle, arc->endAngle);
  out.push_back(std::move(arc));
  return true;
}

// The angles of an elliptic edge are taken as the ellipse's parameters.
bool readEllipseEdge(Cursor& c, const Plane& plane, Entities& out) {
  const auto center = c.point(10, plane.elevation);
  const auto major = center ? c.point(11, 0.0) : std::nullopt;
  const auto ratio = major ? c.real(40) : std::nullopt;
  const auto start = ratio ? c.real(50) : std::nullopt;
  const auto end = start ? c.real(51) : std::nullopt;
  if (!end) return false;
  const bool ccw = c.integer(73).value_or(1) != 0;
  auto ellipse = std::make_unique<EllipseEntity>();
  ellipse->center = *center;
  ellipse->majorAxis = *major;
  ellipse->ratio = *ratio;
  ellipse->normal = plane.normal;
  edgeAngles(*start, *end, ccw, ellipse->startParam, ellipse->endParam);
  out.push_back(std::move(ellipse));
  return true;
}

bool readSplineEdge(Cursor& c, const Plane& plane, Entities& out) {
  const auto degree = c.integer(94);
  const auto rational = c.integer(73);
  const auto periodic = c.integer(74);
  long knots = 0;
  long controls = 0;
  if (!degree || !rational || !periodic || !count(c, 95, knots) || !count(c, 96, controls)) {
    return false;
  }
  auto spline = std::make_unique<SplineEntity>();
  spline->degree = static_cast<std::int16_t>(*degree);
  spline->flags = static_cast<std::int16_t>((*rational != 0 ? 4 : 0) | (*periodic != 0 ? 2 : 0));
  spline->normal = plane.normal;
  for (long k = 0; k < knots; ++k) {
    const auto knot = c.real(40);
    if (!knot) return false;
    spline->knots.push_back(*knot);
  }
  for (long k = 0; k < controls; ++k) {
    const auto p = c.point(10, plane.elevation);
    if (!p) return false;
    spline->controlPoints.push_back(*p);
    if (c.at(42)) spline->weights.push_back(c.real(42).value_or(1.0));
  }
  if (spline->weights.size() != spline->controlPoints.size()) spline->weights.clear();
  // Newer files follow with the fit points and end tangents; a 97 that stands
  // for the path's source objects is followed by their handles instead.
  if (c.at(97) && (c.at(11, 1) || c.at(12, 1) || c.at(13, 1) || c.at(97, 1))) {
    long fits = 0;
    if (!count(c, 97, fits)) return false;
    for (long k = 0; k < fits; ++k) {
      const auto p = c.point(11, plane.elevation);
      if (!p) return false;
      spline->fitPoints.push_back(*p);
    }
    c.point(12, 0.0);
    c.point(13, 0.0);
  }
  out.push_back(std::move(spline));
  return true;
}

bool readEdgePath(Cursor& c, const Plane& plane, Entities& out) {
  long n = 0;
  if (!count(c, 93, n)) return false;
  for (long k = 0; k < n; ++k) {
    const auto type = c.integer(72);
    if (!type) return false;
    bool read = false;
    switch (*type) {
      case 1: {
        const auto start = c.point(10, plane.elevation);
        const auto end = start ? c.point(11, plane.elevation) : std::nullopt;
        if (end) {
          auto line = std::make_unique<LineEntity>();
          line->start = *start;
          line->end = *end;
          out.push_back(std::move(line));
          read = true;
        }
        break;
      }
      case 2:
        read = readArcEdge(c, plane, out);
        break;
      case 3:
        read = readEllipseEdge(c, plane, out);
        break;
      case 4:
        read = readSplineEdge(c, plane, out);
        break;
      default:
        break;
    }
    if (!read) return false;
  }
  return true;
}

std::vector<Tag> tagsOf(std::string_view source) {
  std::vector<Tag> tags;
  try {
    TagReader reader(source);
    while (auto tag = reader.next()) tags.push_back(*tag);
  } catch (const ParseError&) {
    // The tags before a flaw still hold whole paths.
  }
  return tags;
}

HatchPaths readHatchPaths(std::string_view source) {
  HatchPaths result;
  Entities& out = result.edges;
  Cursor c(tagsOf(source));
  c.seekSubclass("AcDbHatch");
  Plane plane;
  Point3d normal = kUnitZ;
  while (!c.done() && !c.at(91)) {
    if (c.at(30)) {
      plane.elevation = c.real(30).value_or(0.0);
    } else if (c.at(210)) {
      normal.x = c.real(210).value_or(0.0);
    } else if (c.at(220)) {
      normal.y = c.real(220).value_or(0.0);
    } else if (c.at(230)) {
      normal.z = c.real(230).value_or(1.0);
    } else {
      c.skip();
    }
  }
  plane.normal = normal;
  result.normal = normal;
  result.elevation = plane.elevation;
  long paths = 0;
  if (!count(c, 91, paths)) return result;
  for (long k = 0; k < paths; ++k) {
    const auto flags = c.integer(92);
    if (!flags) break;
    const bool read =
        (*flags & 2) != 0 ? readPolylinePath(c, plane, out) : readEdgePath(c, plane, out);
    if (!read) break;
    // The path's source objects: a count and their handles.
    if (c.at(97)) {
      c.skip();
      while (c.at(330)) c.skip();
    }
  }
  return result;
}

// --- Solids and regions: the SAT text of groups 1 and 3 ---------------------

// Files write a literal caret as "^ " and control characters as a caret and a
// letter; the substitution is undone after that.
std::string unescapeCarets(std::string_view value) {
  std::string out;
  out.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    if (c == '^' && i + 1 < value.size()) {
      const char next = value[++i];
      out.push_back(next == ' ' ? '^' : static_cast<char>(next & 0x1f));
    } else {
      out.push_back(c);
    }
  }
  return out;
}

// Each printable character other than the space stands for 159 minus its code.
void undoSubstitution(std::string& line) {
  for (char& c : line) {
    const int code = static_cast<unsigned char>(c);
    if (code > 32 && code < 127) c = static_cast<char>(159 - code);
  }
}

std::string readAcisText(std::string_view entitySource) {
  std::vector<std::string> lines;
  try {
    TagReader reader(entitySource);
    while (auto tag = reader.next()) {
      if (tag->code == 1) {
        lines.push_back(unescapeCarets(tag->value));
      } else if (tag->code == 3 && !lines.empty()) {
        lines.back() += unescapeCarets(tag->value);
      }
    }
  } catch (const ParseError&) {
    // An entity's source was read once already; what came before a flaw is kept.
  }
  if (lines.empty()) return {};
  // Plain text starts with the version number; the substituted form does not.
  const std::size_t first = lines[0].find_first_not_of(' ');
  const bool substituted =
      first != std::string::npos && !std::isdigit(static_cast<unsigned char>(lines[0][first]));
  std::string text;
  for (std::string& line : lines) {
    if (substituted) undoSubstitution(line);
    text += line;
    text += '\n';
  }
  return text;
}

// --- Kinds the host does not model: the points their text holds --------------

// Groups 10 to 18 with their Y and Z, and the normal of groups 210 to 230.
TextPoints readTextPoints(std::string_view text) {
  TextPoints result;
  Point3d normal = kUnitZ;
  bool planar = false;
  try {
    TagReader reader(text);
    reader.next();  // the kind's name
    while (auto tag = reader.next()) {
      if (tag->code == 0) break;  // a following vertex or attribute
      if (tag->code >= 10 && tag->code <= 18) {
        result.points.push_back({parseDouble(tag->value).value_or(0.0), 0.0, 0.0});
      } else if (tag->code >= 20 && tag->code <= 28 && !result.points.empty()) {
        result.points.back().y = parseDouble(tag->value).value_or(0.0);
      } else if (tag->code >= 30 && tag->code <= 38 && !result.points.empty()) {
        result.points.back().z = parseDouble(tag->value).value_or(0.0);
      } else if (tag->code == 210) {
        normal.x = parseDouble(tag->value).value_or(0.0);
        planar = true;
      } else if (tag->code == 220) {
        normal.y = parseDouble(tag->value).value_or(0.0);
      } else if (tag->code == 230) {
        normal.z = parseDouble(tag->value).value_or(1.0);
      }
    }
  } catch (const ParseError&) {
    // What was read before the damage still counts.
  }
  if (planar) result.normal = normal;
  return result;
}

}  // namespace

HatchPaths DxfKeptText::hatchPaths(std::string_view source) const {
  return readHatchPaths(source);
}

std::string DxfKeptText::acisText(std::string_view source) const {
  return readAcisText(source);
}

TextPoints DxfKeptText::points(std::string_view source) const {
  return readTextPoints(source);
}

}  // namespace host::dxf
