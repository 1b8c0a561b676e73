// Resolution of selection items against the document.
#include "host/editor/SelectionResolver.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/geometry/EntityGeometry.h"
#include "host/geometry/Extents.h"

namespace host {
namespace {

std::vector<ObjectId> selectableEntities(const Database& db) {
  std::vector<ObjectId> ids;
  for (ObjectId id : db.blockEntities(db.header().currentSpace)) {
    if (isSelectable(db, id)) ids.push_back(id);
  }
  return ids;
}

// How near a pick must come: a thousandth of the drawing's size, and never
// less than a small absolute distance.
double pickTolerance(const Database& db) {
  platform::Extents all;
  for (ObjectId id : selectableEntities(db)) all.add(geometry::cachedExtentsOf(db, id));
  if (all.isEmpty()) return 1e-6;
  const double size = std::hypot(all.max.x - all.min.x, all.max.y - all.min.y);
  return std::max(1e-6, size * 1e-3);
}

}  // namespace

bool isSelectable(const Database& db, ObjectId id) {
  const Entity* e = db.entity(id);
  if (e == nullptr || e->owner != db.header().currentSpace) return false;
  const Layer* layer = db.get<Layer>(e->layer);
  return layer == nullptr || (!layer->frozen && !layer->hidden);
}

ObjectId pickEntityAt(const Database& db, const platform::Point3d& point) {
  const double tolerance = pickTolerance(db);
  ObjectId best;
  double bestDistance = std::numeric_limits<double>::infinity();
  for (ObjectId id : selectableEntities(db)) {
    const double d = distanceXY(db, *db.entity(id), point);
    // Later entities lie on top, so a tie goes to them.
    if (d <= tolerance && d <= bestDistance) {
      best = id;
      bestDistance = d;
    }
  }
  return best;
}

std::vector<ObjectId> resolveSelectionItem(const Document& document, const SelectionItem& item) {
  const Database& db = document.db;
  switch (item.kind) {
    case SelectionKind::All: return selectableEntities(db);
    case SelectionKind::ByHandle: {
      // A handle names one entity wherever it is, whatever its layer.
      const ObjectId id = db.idOfHandle(item.handle);
      if (db.entity(id) == nullptr) return {};
      return {id};
    }
    case SelectionKind::Last: {
      const std::vector<ObjectId> ids = selectableEntities(db);
      if (ids.empty()) return {};
      return {*std::max_element(ids.begin(), ids.end())};
    }
    case SelectionKind::Previous: {
      std::vector<ObjectId> ids;
      for (ObjectId id : document.previous) {
        if (db.entity(id) != nullptr) ids.push_back(id);
      }
      return ids;
    }
    case SelectionKind::Window:
    case SelectionKind::Crossing: {
      const double x0 = std::min(item.first.x, item.second.x);
      const double x1 = std::max(item.first.x, item.second.x);
      const double y0 = std::min(item.first.y, item.second.y);
      const double y1 = std::max(item.first.y, item.second.y);
      std::vector<ObjectId> ids;
      for (ObjectId id : selectableEntities(db)) {
        const Entity& e = *db.entity(id);
        if (item.kind == SelectionKind::Crossing) {
          if (touchesBoxXY(db, e, item.first, item.second)) ids.push_back(id);
          continue;
        }
        const platform::Extents box = geometry::extentsOf(db, e);
        if (!box.isEmpty() && box.min.x >= x0 && box.max.x <= x1 && box.min.y >= y0 &&
            box.max.y <= y1) {
          ids.push_back(id);
        }
      }
      return ids;
    }
    case SelectionKind::Pick: {
      const ObjectId id = pickEntityAt(db, item.first);
      if (id.isNull()) return {};
      return {id};
    }
  }
  return {};
}

}  // namespace host
