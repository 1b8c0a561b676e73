// Every entity the writer will write must point at objects that exist: its block (it is written
// nowhere else), its layer and linetype (written by name), its block definition, its extension
// dictionary and the tables of its Object Data (written by name too).
#include "DrawingCheck.h"

#include "host/db/PortDrawing.h"
#include "platform/Text.h"

namespace host::dxf {
namespace {

bool isLiveBlock(const Database& db, ObjectId id) {
  const BlockRecord* block = db.get<BlockRecord>(id);
  return block != nullptr && !block->erased;
}

// What is wrong with an entity's links, as the end of a sentence about it; null when nothing is.
const char* linkProblem(const Database& db, const Entity& e) {
  if (e.kind() == EntityKind::Attribute) {
    if (db.get<BlockReferenceEntity>(e.owner) == nullptr) return "belongs to no block reference";
  } else if (!isLiveBlock(db, e.owner)) {
    return "belongs to no block";
  }
  if (!e.layer.isNull() && db.get<Layer>(e.layer) == nullptr) {
    return "is on a layer that does not exist";
  }
  if (!e.linetype().isNull() && db.get<TaggedObject>(e.linetype()) == nullptr) {
    return "has a linetype that does not exist";
  }
  if (e.kind() == EntityKind::BlockReference) {
    const ObjectId block = static_cast<const BlockReferenceEntity&>(e).block;
    if (!block.isNull() && !isLiveBlock(db, block)) return "refers to a block that does not exist";
  }
  if (!e.xdict.isNull() && db.get<ExtDictionary>(e.xdict) == nullptr) {
    return "has an extension dictionary that does not exist";
  }
  return nullptr;
}

const char* recordsProblem(const Database& db, const ExtDictionary& dict) {
  const OdRecordList& records = dict.od;
  for (auto pos = records.begin(); pos < records.end(); pos = records.next(pos)) {
    const OdTableObject* table = db.odTableAt(records.tableAt(pos));
    if (table == nullptr || table->erased) {
      return "carries Object Data of a table that does not exist";
    }
  }
  return nullptr;
}

// An entity or dictionary as read and never changed is written from its text, whose links the
// reader resolved, so only what changed since needs looking at: a save of a large drawing with a
// few changes stays as fast as a copy.
const char* problemOf(const Database& db, const Entity& e) {
  if (e.modified || e.source.empty()) {
    if (const char* problem = linkProblem(db, e)) return problem;
  }
  const ExtDictionary* dict = db.get<ExtDictionary>(e.xdict);
  if (dict != nullptr && (dict->modified || dict->source.empty())) return recordsProblem(db, *dict);
  return nullptr;
}

}  // namespace

std::optional<std::string> findInconsistency(const Database& db) {
  for (std::uint64_t i = 1; i <= db.idCount(); ++i) {
    const Entity* e = db.entity(ObjectId(i));
    if (e == nullptr) continue;
    if (const char* problem = problemOf(db, *e)) {
      return "the " + platform::toUtf8(typeName(*e)) + " " +
             platform::toUtf8(handleToText(e->handle)) + " " + problem;
    }
  }
  return std::nullopt;
}

}  // namespace host::dxf
