// What the items typed at "Select objects: " stand for in a drawing.
#pragma once

#include <vector>

#include "host/editor/Document.h"
#include "host/editor/SelectionGrammar.h"

namespace host {

// An entity a window, a pick or ALL may select: present, in the current
// space, and not on a frozen or hidden layer. Locked and off layers don't hide
// an entity from selection.
bool isSelectable(const Database& db, ObjectId id);

// The entities one item names, in drawing order.
std::vector<ObjectId> resolveSelectionItem(const Document& document, const SelectionItem& item);

// The selectable entity nearest to a point in XY, within a small distance
// that scales with the drawing; null if none is that near.
ObjectId pickEntityAt(const Database& db, const platform::Point3d& point);

}  // namespace host
