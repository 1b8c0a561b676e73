// Small pieces the host's commands share: number text in the drawing's
// precision, entity descriptions, name lists.
#pragma once

#include <string>
#include <vector>

#include "host/db/Database.h"

namespace host {

// A real with LUPREC decimals, as the host prints lengths and coordinates.
std::wstring formatReal(const Database& db, double value);
std::wstring formatPoint(const Database& db, const Point3d& point);

// "<handle> <kind> <layer>" of an entity.
std::wstring entitySummary(const Database& db, ObjectId id);

// Whether the entity lies on a locked layer, where editing commands leave it.
bool isOnLockedLayer(const Database& db, const Entity& entity);
// The line that tells how many entities a command left for their locked
// layer; empty for none.
std::wstring lockedLayerNotice(int count);

// Splits a comma-separated list, trimming blanks and dropping empty names.
std::vector<std::wstring> splitNameList(const std::wstring& text);

// Case-insensitive match with the wildcards "*" (any run) and "?" (one character).
bool matchesWildcard(std::wstring_view name, std::wstring_view pattern);

// Whether a layer or table name is acceptable: not empty, no characters that
// the name lists and files of the host give a meaning of their own.
bool isValidSymbolName(const std::wstring& name);

}  // namespace host
