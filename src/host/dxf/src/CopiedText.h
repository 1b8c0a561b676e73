// A copy of an entity read from the file shares the original's source text for
// what the host does not model; this makes that text the copy's own.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "EntityCodec.h"

namespace host::dxf {

// The original's tags as the copy's: the handles of the original and of the
// entities it owns (its followers, the columns of a multiline text) become the
// copy's wherever they are named, XDATA included. Left out is what the copy
// must not share with the original: its reactors, which react to the original,
// the extension dictionaries of its followers, and the objects it owns that
// were not copied with it. Values made here are kept in storage.
std::vector<Tag> tagsForCopy(const std::vector<Tag>& original, const Entity& copy,
                             const WriteContext& context, std::deque<std::string>& storage);

}  // namespace host::dxf
