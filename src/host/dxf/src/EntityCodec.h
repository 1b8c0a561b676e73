// Entities between their file form and the database's model: reading the tags
// of one entity into its kind's class, and writing a kind's class as tags.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "TagReader.h"
#include "TagWriter.h"
#include "TextCodec.h"
#include "host/db/Entities.h"

namespace host::dxf {

// What reading needs of the drawing around an entity.
class ReadContext {
 public:
  virtual ~ReadContext() = default;
  virtual const TextCodec& codec() const = 0;
  // Symbol records by name, exact first, else ignoring case. A layer that the
  // file names but does not define is made; a missing linetype or block is null.
  virtual ObjectId layer(std::wstring_view name) = 0;
  virtual ObjectId linetype(std::wstring_view name) = 0;
  virtual ObjectId block(std::wstring_view name) = 0;
};

// What writing needs of the drawing around an entity.
class WriteContext {
 public:
  virtual ~WriteContext() = default;
  virtual const TextCodec& codec() const = 0;
  virtual Handle handleOf(ObjectId id) const = 0;
  virtual std::wstring layerName(ObjectId layer) const = 0;
  virtual std::wstring linetypeName(ObjectId linetype) const = 0;
  virtual std::wstring blockName(ObjectId block) const = 0;
  // The entity's attributes, for the block references that write them after
  // themselves.
  virtual const Entity* entity(ObjectId id) const = 0;
};

// One entity read from a file, with the attribute entities that followed a
// block reference. Handles, owner and extension dictionary are set from the
// tags; ids (the entity's attributes) are left for the caller to assign.
struct ReadEntity {
  std::unique_ptr<Entity> entity;
  std::vector<std::unique_ptr<Entity>> attributes;
  Handle xdictHandle = 0;
  Handle ownerHandle = 0;
  bool paperSpace = false;  // group 67
};

// The tags of one entity: from its "0 <KIND>" tag up to, not including, the
// next group-0 tag; for POLYLINE and for INSERT followed by attributes, through
// the SEQEND's tags. A kind this host does not model becomes an UnknownEntity.
// Throws ParseError (naming the line) for values that don't parse.
ReadEntity readEntity(const std::vector<Tag>& tags, ReadContext& context);

// Writes an entity's tags: group 0, handle, extension dictionary, owner, the
// common properties, then the kind's own; for POLYLINE its vertices and SEQEND,
// for INSERT its attributes and SEQEND. The owner's handle is given.
// With the tags the entity was read from, tags the model does not keep are
// written again in their subclass, after its modelled tags.
void writeEntity(const Entity& entity, Handle owner, TagWriter& out, WriteContext& context,
                 const std::vector<Tag>* original = nullptr);

// Whether the kind carries sub-entities up to a SEQEND.
bool endsWithSeqend(std::string_view dxfName, const std::vector<Tag>& tags);

}  // namespace host::dxf
