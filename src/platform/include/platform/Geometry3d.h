// The geometry of a drawing's entities, as the module asks it of the host:
// each entity's class, extents, curve measures, vertices, and where two meet.
// Some answers are curves of their own that no drawing holds (the pieces of an
// exploded polyline, a spline copy of an arc, the polyline a spline becomes);
// they have ids like entities and answer the same questions until released.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/EntityClass.h"
#include "platform/Geometry.h"
#include "platform/ObjectId.h"
#include "platform/Status.h"

namespace platform {

// Where a single-line text is anchored: its alignment modes and the second
// point that any alignment but the left one on the base line goes by.
struct TextAlignment {
  int horizontalMode = 0;  // 0 left, 1 centre, 2 right, 3 aligned, 4 middle, 5 fit
  int verticalMode = 0;    // 0 base line, 1 bottom, 2 middle, 3 top
  Point3d alignmentPoint;
};

class EntityGeometry {
 public:
  virtual ~EntityGeometry() = default;

  // Unknown when the entity does not open.
  virtual EntityClass entityClass(ObjectId entity) const = 0;
  virtual std::optional<Extents> extents(ObjectId entity) const = 0;
  // Where the two meet in the XY plane, neither extended.
  virtual std::vector<Point3d> intersectWith(ObjectId a, ObjectId b) const = 0;

  // Curves: nothing for an entity that is none. A curve's parameter runs over
  // its range: a line's along its length, an arc's or ellipse's over its angle,
  // a polyline's from 0 to its number of segments, a spline's over its knots.
  virtual std::optional<std::pair<double, double>> paramRange(ObjectId curve) const = 0;
  virtual std::optional<Point3d> pointAtParam(ObjectId curve, double param) const = 0;
  virtual std::optional<Point3d> startPoint(ObjectId curve) const = 0;
  virtual std::optional<Point3d> endPoint(ObjectId curve) const = 0;
  virtual std::optional<double> length(ObjectId curve) const = 0;
  // A curve's own closed property: polylines, splines, mlines; circles and
  // full ellipses are closed too.
  virtual bool isClosed(ObjectId curve) const = 0;
  // The area of a planar curve, an open one closed by its chord.
  virtual std::optional<double> area(ObjectId curve) const = 0;
  // The volume of a 3D solid; nothing when the host cannot tell it.
  virtual std::optional<double> volume(ObjectId solid) const = 0;

  // The points that define an entity, by class: a polyline's vertices (with
  // their bulges), old-style polylines' and mlines' vertices, a line's ends, a
  // spline's control points. Empty for other classes.
  virtual std::vector<Point3d> vertices(ObjectId entity) const = 0;
  virtual std::vector<double> bulges(ObjectId polyline) const = 0;
  virtual std::vector<Point3d> fitPoints(ObjectId spline) const = 0;
  // An arc's, circle's or ellipse's centre in world coordinates; nothing for
  // other classes, or from a host that cannot tell it.
  virtual std::optional<Point3d> center(ObjectId /*curve*/) const { return std::nullopt; }
  // A point's, a text's or a block reference's insertion point.
  virtual std::optional<Point3d> position(ObjectId entity) const = 0;
  // A text's or attribute's string; an mtext's with its formatting codes.
  virtual std::optional<std::wstring> text(ObjectId entity) const = 0;
  // An mtext's string as plain text: its formatting codes stripped, each
  // paragraph break a carriage return and line feed. Other classes as text().
  virtual std::optional<std::wstring> plainText(ObjectId entity) const { return text(entity); }
  // A single-line text's alignment; nothing for other classes, or from a host
  // that keeps every text at its insertion point.
  virtual std::optional<TextAlignment> textAlignment(ObjectId /*text*/) const {
    return std::nullopt;
  }

  // Curves the caller owns until it releases them.
  virtual std::vector<ObjectId> explode(ObjectId polyline) = 0;
  // The exact spline of an arc, circle or ellipse; null for other classes.
  virtual ObjectId spline(ObjectId curve) = 0;
  // The polyline a spline becomes at a precision; null below 1.
  virtual ObjectId toPolyline(ObjectId spline, int precision) = 0;
  virtual void release(ObjectId curve) = 0;

  // Polylines the caller builds: curves of its own, empty at first, until it
  // appends them to model space or releases them. Null from a host that
  // makes none. A lightweight one lies in the plane of XY at its elevation.
  virtual ObjectId newPolyline() { return ObjectId(); }
  virtual ObjectId newPolyline3d() { return ObjectId(); }
  // Edits of such a polyline, or of one of the drawing within the command's
  // undo step. Failed for an id of another class or that won't open.
  // A straight vertex of default width, put in front of the one at the index
  // (at the end for an index of the vertex count).
  virtual Status addVertexAt(ObjectId /*polyline*/, std::size_t /*index*/,
                             const Point2d& /*point*/) {
    return Status::Failed;
  }
  virtual Status setElevation(ObjectId /*polyline*/, double /*elevation*/) {
    return Status::Failed;
  }
  virtual Status appendVertex(ObjectId /*polyline3d*/, const Point3d& /*point*/) {
    return Status::Failed;
  }
  // Either kind of polyline.
  virtual Status setClosed(ObjectId /*polyline*/, bool /*closed*/) { return Status::Failed; }
  // Makes a curve of the caller's (a built polyline, or one that toPolyline
  // gave) an entity of model space, within the command's undo step: the id
  // it has from then on, or null, the curve kept, when it can't be added.
  virtual ObjectId appendToModelSpace(ObjectId /*curve*/) { return ObjectId(); }
};

}  // namespace platform
