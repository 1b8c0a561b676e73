// ZARVEL_PSEL. Extents are read once per entity; every later filter works on
// the boxes, and only the entities that hold the point and their neighbours
// are asked for intersections. It works on the whole of model space, whatever
// the layers, and reports nothing.
#include "search/PointSelection.h"

#include <cmath>
#include <initializer_list>
#include <limits>
#include <optional>
#include <unordered_map>

#include "oddata/Port.h"
#include "oddata/Precision.h"
#include "oddata/Selection.h"

namespace zarvel {
namespace {

using platform::EntityClass;
using platform::Extents;
using platform::ObjectId;
using platform::Point2d;
using platform::Point3d;

struct EntityBox {
  ObjectId id;
  Extents extents;
};

bool isOneOf(EntityClass kind, std::initializer_list<EntityClass> kinds) {
  for (EntityClass k : kinds) {
    if (k == kind) return true;
  }
  return false;
}

// The kinds whose points entityVertices2d gives.
bool hasVertexList(EntityClass kind) {
  return isOneOf(kind, {EntityClass::Polyline3d, EntityClass::Line, EntityClass::Mline,
                        EntityClass::LwPolyline, EntityClass::Spline});
}

Point2d flat(const Point3d& p) {
  return {p.x, p.y};
}

Point2d centreOf(const Extents& box) {
  return {(box.min.x + box.max.x) / 2.0, (box.min.y + box.max.y) / 2.0};
}

bool holdsInPlane(const Extents& box, const Point3d& p) {
  return p.x >= box.min.x && p.x <= box.max.x && p.y >= box.min.y && p.y <= box.max.y;
}

// Model space in block order; an entity that won't open has no extents and
// takes no part.
std::vector<EntityBox> modelSpaceBoxes() {
  platform::Drawing& drawing = port().drawing();
  platform::EntityGeometry& geometry = port().geometry();
  std::vector<EntityBox> boxes;
  for (ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (std::optional<Extents> box = geometry.extents(id)) boxes.push_back({id, *box});
  }
  return boxes;
}

// Entities whose boxes are apart cannot meet, so only overlapping boxes are
// asked for intersections.
bool crosses(const EntityBox& neighbour, const EntityBox& candidate) {
  return boxesOverlap(neighbour.extents, candidate.extents) &&
         !port().geometry().intersectWith(neighbour.id, candidate.id).empty();
}

// A neighbour that does not cross a closed boundary lies within it when its
// middle vertex does, or for kinds without vertices the centre of its box.
bool liesWithin(const EntityBox& neighbour, const PointList& boundary, const Point2d& outside) {
  Point2d probe = centreOf(neighbour.extents);
  if (hasVertexList(port().geometry().entityClass(neighbour.id))) {
    const PointList points = entityVertices2d(neighbour.id);
    if (points.empty()) return false;
    probe = points[points.size() / 2];
  }
  return pointInPolygon(probe, boundary, outside);
}

// Takes from the neighbours of all candidates what meets this candidate. The
// list holds an entity once per candidate it is near, and the answer for one
// entity is the same each time, so each is worked out once.
void takeMeeting(const EntityBox& candidate, const std::vector<EntityBox>& boxes,
                 const std::vector<std::size_t>& neighbours, std::vector<ObjectId>& taken) {
  const bool closed = isClosedCurve(candidate.id, luprecTolerance());
  PointList boundary;
  if (closed) boundary = entityVertices2d(candidate.id);
  const Point2d outside = outsidePoint(boundary);
  std::unordered_map<std::size_t, bool> meets;
  for (std::size_t n : neighbours) {
    auto [answer, isNew] = meets.try_emplace(n, false);
    if (isNew) {
      answer->second =
          crosses(boxes[n], candidate) || (closed && liesWithin(boxes[n], boundary, outside));
    }
    if (answer->second) taken.push_back(boxes[n].id);
  }
}

}  // namespace

std::vector<ObjectId> entitiesAtPoint(const Point3d& point) {
  const std::vector<EntityBox> boxes = modelSpaceBoxes();
  std::vector<std::size_t> candidates;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (holdsInPlane(boxes[i].extents, point)) candidates.push_back(i);
  }
  // One list for all candidates: an entity near two of them stands twice, and
  // a candidate can be another one's neighbour.
  std::vector<std::size_t> neighbours;
  for (std::size_t c : candidates) {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (i != c && boxesOverlap(boxes[c].extents, boxes[i].extents)) neighbours.push_back(i);
    }
  }
  std::vector<ObjectId> taken;
  for (std::size_t c : candidates) takeMeeting(boxes[c], boxes, neighbours, taken);
  for (std::size_t c : candidates) taken.push_back(boxes[c].id);
  return taken;
}

bool boxesOverlap(const Extents& a, const Extents& b) {
  auto overlapOnAxis = [](double minA, double maxA, double minB, double maxB) {
    const double halfSizes = ((maxA - minA) + (maxB - minB)) / 2.0;
    const double centres = std::fabs((minA + maxA) / 2.0 - (minB + maxB) / 2.0);
    return halfSizes >= centres;
  };
  return overlapOnAxis(a.min.x, a.max.x, b.min.x, b.max.x) &&
         overlapOnAxis(a.min.y, a.max.y, b.min.y, b.max.y);
}

bool isClosedCurve(ObjectId entity, double tolerance) {
  platform::EntityGeometry& geometry = port().geometry();
  const EntityClass kind = geometry.entityClass(entity);
  if (!isOneOf(kind, {EntityClass::Polyline3d, EntityClass::LwPolyline, EntityClass::Spline,
                      EntityClass::Mline})) {
    return false;
  }
  if (geometry.isClosed(entity)) return true;
  std::optional<Point3d> first;
  std::optional<Point3d> last;
  if (kind == EntityClass::Mline) {
    const std::vector<Point3d> vertices = geometry.vertices(entity);
    if (!vertices.empty()) {
      first = vertices.front();
      last = vertices.back();
    }
  } else {
    first = geometry.startPoint(entity);
    last = geometry.endPoint(entity);
  }
  return first && last && flat(*first).distanceTo(flat(*last)) <= tolerance;
}

PointList entityVertices2d(ObjectId entity) {
  platform::EntityGeometry& geometry = port().geometry();
  PointList points;
  if (!hasVertexList(geometry.entityClass(entity))) return points;
  for (const Point3d& p : geometry.vertices(entity)) points.push_back(flat(p));
  return points;
}

bool pointInPolygon(const Point2d& point, const PointList& polygon, const Point2d& outside) {
  if (polygon.size() == 1) return false;
  auto ccw = [](const Point2d& a, const Point2d& b, const Point2d& c) {
    return (c.y - a.y) * (b.x - a.x) > (b.y - a.y) * (c.x - a.x);
  };
  int crossings = 0;
  for (std::size_t i = 0; i + 1 < polygon.size(); ++i) {
    const Point2d& a = polygon[i];
    const Point2d& b = polygon[i + 1];
    if (ccw(outside, a, b) != ccw(point, a, b) &&
        ccw(outside, point, a) != ccw(outside, point, b) && !point.isEqualTo(a) &&
        !point.isEqualTo(b)) {
      ++crossings;
    }
  }
  return crossings % 2 == 1;
}

Point2d outsidePoint(const PointList& boundary) {
  // Computed as selections at a point always have, so that a pick selects
  // what it always did: the greatest starts at the least positive double, and
  // a point that lowers the least is not compared with it, which can leave
  // the greatest short of the boundary's.
  Point2d least{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
  Point2d greatest{std::numeric_limits<double>::min(), std::numeric_limits<double>::min()};
  for (const Point2d& p : boundary) {
    if (p.x < least.x) {
      least.x = p.x;
    } else if (p.x > greatest.x) {
      greatest.x = p.x;
    }
    if (p.y < least.y) {
      least.y = p.y;
    } else if (p.y > greatest.y) {
      greatest.y = p.y;
    }
  }
  return {least.x + 2.0 * (greatest.x - least.x), least.y + 2.0 * (greatest.y - least.y)};
}

void commandPsel() {
  // The host prompts in its own words. A pick that gives no point selects
  // nothing.
  const platform::PointReply reply = port().editor().getPoint(std::wstring());
  std::vector<ObjectId> found;
  if (reply.status == platform::PromptStatus::Normal) found = entitiesAtPoint(reply.point);
  setPickFirst(found);
}

}  // namespace zarvel
