// The markers a value operation leaves where it could not decide: references
// of a block holding one circle, on a layer of their own, which a user finds,
// looks at and erases when done.
#pragma once

#include <string>

#include "platform/Drawing.h"
#include "platform/Geometry.h"
#include "platform/ObjectId.h"

namespace zarvel {

// The name of the markers' layer and of their block.
inline const wchar_t* const kErrorMarkerName = L"zarvel_error";

// Makes the layer unless one of that name, in any case, is there.
void ensureLayer(const std::wstring& name, const platform::RgbColor& color);
// The block of that name; made, with a circle of the radius round its origin,
// if there is none. Null if the host cannot make one.
platform::ObjectId ensureBlock(const std::wstring& name, double radius);
// A reference of the block at the point, on the layer and in its colour,
// scaled so that the circle's radius is `scale` times its own. Nothing for a
// null block.
void placeMarker(platform::ObjectId blockId, const std::wstring& layerName,
                 const platform::Point3d& point, double scale);

}  // namespace zarvel
