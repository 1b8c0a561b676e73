// A hatch's boundary edges, from its plane's coordinates into the world.
#include "HatchBoundary.h"

#include "host/geometry/Ocs.h"

namespace host::geometry {

std::vector<std::unique_ptr<Entity>> hatchBoundary(HatchPaths paths) {
  const Ocs ocs(paths.normal);
  for (std::unique_ptr<Entity>& edge : paths.edges) {
    if (auto* line = dynamic_cast<LineEntity*>(edge.get())) {
      line->start = ocs.toWorld(line->start);
      line->end = ocs.toWorld(line->end);
    } else if (auto* ellipse = dynamic_cast<EllipseEntity*>(edge.get())) {
      ellipse->center = ocs.toWorld(ellipse->center);
      ellipse->majorAxis = ocs.toWorld(ellipse->majorAxis);
    } else if (auto* spline = dynamic_cast<SplineEntity*>(edge.get())) {
      for (Point3d& p : spline->controlPoints) p = ocs.toWorld(p);
      for (Point3d& p : spline->fitPoints) p = ocs.toWorld(p);
    }
    // Arcs and polylines keep their points in the plane, as every arc and
    // polyline of a drawing does.
  }
  return std::move(paths.edges);
}

}  // namespace host::geometry
