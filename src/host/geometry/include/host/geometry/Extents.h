// The geometric extents of every kind of entity, in world coordinates. Block
// references take their block's contents (and their attributes) transformed;
// hatches, regions and solids read what they need from their source text, and
// kinds the host does not model the points their text holds.
#pragma once

#include "host/db/Database.h"
#include "platform/Geometry.h"

namespace host::geometry {

platform::Extents extentsOf(const Database& db, const Entity& entity);
// The same for an entity of the drawing, by id, kept until the drawing next
// changes; empty for one that does not open.
platform::Extents cachedExtentsOf(const Database& db, ObjectId id);

// The font model of texts: each character is as wide as 0.6 times the height
// times the width factor, the box runs from the baseline up by the height, and
// the alignment places it against the insertion or alignment point.
struct TextBox {
  Point3d corners[4];  // world coordinates, counterclockwise from the lower left
};
TextBox textBox(const TextData& text);
TextBox mtextBox(const MTextEntity& text);

}  // namespace host::geometry
