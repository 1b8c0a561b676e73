// Points, lines, arcs, circles, ellipses and splines.
#include "EntityKinds.h"

namespace host::dxf::entity {
namespace {

bool isNormal(int code) {
  return isCoordinate(code, 210);
}

constexpr std::string_view kPointSubclasses[] = {"AcDbPoint"};
constexpr std::string_view kLineSubclasses[] = {"AcDbLine"};
constexpr std::string_view kCircleSubclasses[] = {"AcDbCircle"};
constexpr std::string_view kArcSubclasses[] = {"AcDbCircle", "AcDbArc"};
constexpr std::string_view kEllipseSubclasses[] = {"AcDbEllipse"};
constexpr std::string_view kSplineSubclasses[] = {"AcDbSpline"};

bool pointOwns(int code, int) {
  return isCoordinate(code, 10);
}
bool lineOwns(int code, int) {
  return isCoordinate(code, 10) || isCoordinate(code, 11);
}
bool circleOwns(int code, int) {
  return isCoordinate(code, 10) || code == 40 || isNormal(code);
}
bool arcOwns(int code, int slot) {
  const bool arc = code == 50 || code == 51;
  if (slot == 2) return arc;
  return circleOwns(code, slot) || (slot == kPreSlot && arc);
}
bool ellipseOwns(int code, int) {
  return isAnyOf(code, {40, 41, 42}) || isCoordinate(code, 10) || isCoordinate(code, 11) ||
         isNormal(code);
}
bool splineOwns(int code, int) {
  return isAnyOf(code, {70, 71, 72, 73, 74, 40, 41}) || isCoordinate(code, 10) ||
         isCoordinate(code, 11) || isNormal(code);
}

}  // namespace

const KindInfo kPointKind{kPointSubclasses, 1, pointOwns};
const KindInfo kLineKind{kLineSubclasses, 1, lineOwns};
const KindInfo kCircleKind{kCircleSubclasses, 1, circleOwns};
const KindInfo kArcKind{kArcSubclasses, 2, arcOwns};
const KindInfo kEllipseKind{kEllipseSubclasses, 1, ellipseOwns};
const KindInfo kSplineKind{kSplineSubclasses, 1, splineOwns};

std::unique_ptr<Entity> readPoint(const Tag* begin, const Tag* end, ReadContext& context,
                                  CommonRead& common) {
  auto e = std::make_unique<PointEntity>();
  auto tags = tagsOf([&](const Tag& t, int) { readCoordinate(t, 10, e->position); });
  readTags(begin, end, kPointKind, e.get(), context, common, &tags);
  return e;
}

void writePoint(const PointEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbPoint");
  w.point(10, e.position);
  w.endSubclass();
}

std::unique_ptr<Entity> readLine(const Tag* begin, const Tag* end, ReadContext& context,
                                 CommonRead& common) {
  auto e = std::make_unique<LineEntity>();
  auto tags = tagsOf([&](const Tag& t, int) {
    if (!readCoordinate(t, 10, e->start)) readCoordinate(t, 11, e->end);
  });
  readTags(begin, end, kLineKind, e.get(), context, common, &tags);
  return e;
}

void writeLine(const LineEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbLine");
  w.point(10, e.start);
  w.point(11, e.end);
  w.endSubclass();
}

std::unique_ptr<Entity> readCircle(const Tag* begin, const Tag* end, ReadContext& context,
                                   CommonRead& common) {
  auto e = std::make_unique<CircleEntity>();
  auto tags = tagsOf([&](const Tag& t, int) {
    if (t.code == 40) {
      e->radius = realOf(t);
    } else if (!readCoordinate(t, 10, e->center)) {
      readCoordinate(t, 210, e->normal);
    }
  });
  readTags(begin, end, kCircleKind, e.get(), context, common, &tags);
  return e;
}

void writeCircle(const CircleEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbCircle");
  w.point(10, e.center);
  w.real(40, e.radius);
  w.normal(e.normal);
  w.endSubclass();
}

std::unique_ptr<Entity> readArc(const Tag* begin, const Tag* end, ReadContext& context,
                                CommonRead& common) {
  auto e = std::make_unique<ArcEntity>();
  auto tags = tagsOf([&](const Tag& t, int slot) {
    if (slot != 1 && (t.code == 50 || t.code == 51)) {
      (t.code == 50 ? e->startAngle : e->endAngle) = radiansOf(realOf(t));
    } else if (slot == 2) {
      return;
    } else if (t.code == 40) {
      e->radius = realOf(t);
    } else if (!readCoordinate(t, 10, e->center)) {
      readCoordinate(t, 210, e->normal);
    }
  });
  readTags(begin, end, kArcKind, e.get(), context, common, &tags);
  return e;
}

void writeArc(const ArcEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbCircle");
  w.point(10, e.center);
  w.real(40, e.radius);
  w.normal(e.normal);
  w.endSubclass();
  w.beginSubclass(2, "AcDbArc");
  w.angle(50, e.startAngle);
  w.angle(51, e.endAngle);
  w.endSubclass();
}

std::unique_ptr<Entity> readEllipse(const Tag* begin, const Tag* end, ReadContext& context,
                                    CommonRead& common) {
  auto e = std::make_unique<EllipseEntity>();
  auto tags = tagsOf([&](const Tag& t, int) {
    switch (t.code) {
      case 40:
        e->ratio = realOf(t);
        break;
      case 41:
        e->startParam = realOf(t);
        break;
      case 42:
        e->endParam = realOf(t);
        break;
      default:
        if (!readCoordinate(t, 10, e->center) && !readCoordinate(t, 11, e->majorAxis)) {
          readCoordinate(t, 210, e->normal);
        }
    }
  });
  readTags(begin, end, kEllipseKind, e.get(), context, common, &tags);
  return e;
}

void writeEllipse(const EllipseEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbEllipse");
  w.point(10, e.center);
  w.point(11, e.majorAxis);
  w.normal(e.normal);
  w.real(40, e.ratio);
  w.real(41, e.startParam);
  w.real(42, e.endParam);
  w.endSubclass();
}

std::unique_ptr<Entity> readSpline(const Tag* begin, const Tag* end, ReadContext& context,
                                   CommonRead& common) {
  auto e = std::make_unique<SplineEntity>();
  // A coordinate continues the point its x started; one before any x is dropped.
  const auto coordinate = [](std::vector<Point3d>& points, const Tag& t, int base) {
    if (t.code == base) {
      points.emplace_back().x = realOf(t);
    } else if (!points.empty()) {
      (t.code == base + 10 ? points.back().y : points.back().z) = realOf(t);
    }
  };
  auto tags = tagsOf([&](const Tag& t, int) {
    switch (t.code) {
      case 70:
        e->flags = int16Of(t);
        break;
      case 71:
        e->degree = int16Of(t);
        break;
      case 72:
        e->knots.reserve(reserveFor(int16Of(t), begin, end));
        break;
      case 73:
        e->controlPoints.reserve(reserveFor(int16Of(t), begin, end));
        break;
      case 74:
        e->fitPoints.reserve(reserveFor(int16Of(t), begin, end));
        break;
      case 40:
        e->knots.push_back(realOf(t));
        break;
      case 41:
        e->weights.push_back(realOf(t));
        break;
      case 10:
      case 20:
      case 30:
        coordinate(e->controlPoints, t, 10);
        break;
      case 11:
      case 21:
      case 31:
        coordinate(e->fitPoints, t, 11);
        break;
      default:
        readCoordinate(t, 210, e->normal);
    }
  });
  readTags(begin, end, kSplineKind, e.get(), context, common, &tags);
  return e;
}

void writeSpline(const SplineEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbSpline");
  w.normal(e.normal);
  w.integer(70, e.flags);
  w.integer(71, e.degree);
  w.integer(72, static_cast<std::int64_t>(e.knots.size()));
  w.integer(73, static_cast<std::int64_t>(e.controlPoints.size()));
  w.integer(74, static_cast<std::int64_t>(e.fitPoints.size()));
  for (double knot : e.knots) w.real(40, knot);
  for (double weight : e.weights) w.real(41, weight);
  for (const Point3d& p : e.controlPoints) w.point(10, p);
  for (const Point3d& p : e.fitPoints) w.point(11, p);
  w.endSubclass();
}

}  // namespace host::dxf::entity
