// Copies of entities: new handles for the entity and everything that belongs
// to it, so the copy and the source never share an object.
#include "host/db/Database.h"

namespace host {

ObjectId Database::copyEntity(ObjectId source, ObjectId block) {
  const Entity* original = entity(source);
  if (original == nullptr) return {};
  std::unique_ptr<DbObject> made = original->clone();
  auto* copy = static_cast<Entity*>(made.get());
  // The copy keeps the source text of the original, for what the host does
  // not model (thickness, XDATA...); being modified, it is never written as
  // that text alone.
  copy->modified = true;
  copy->xdict = ObjectId();
  copy->owner = block;
  // Vertices of old-style polylines and their end mark have handles of their own.
  auto renumber = [this](auto& polyline) {
    for (PolylineVertex& v : polyline.vertices) v.handle = handleSeed_++;
    polyline.seqendHandle = handleSeed_++;
  };
  if (copy->kind() == EntityKind::Polyline2d) renumber(static_cast<Polyline2dEntity&>(*copy));
  if (copy->kind() == EntityKind::Polyline3d) renumber(static_cast<Polyline3dEntity&>(*copy));
  if (copy->kind() == EntityKind::Unknown) {
    for (Handle& h : static_cast<UnknownEntity&>(*copy).followers) h = handleSeed_++;
  }
  std::vector<ObjectId> attributes;
  if (copy->kind() == EntityKind::BlockReference) {
    auto& reference = static_cast<BlockReferenceEntity&>(*copy);
    attributes = reference.attributes;
    reference.attributes.clear();
    if (reference.seqendHandle != 0) reference.seqendHandle = handleSeed_++;
  }
  made.release();
  const ObjectId id = addEntity(std::unique_ptr<Entity>(copy), block);
  for (ObjectId a : attributes) {
    const ObjectId attribute = copyEntity(a, id);
    modify<BlockReferenceEntity>(id)->attributes.push_back(attribute);
  }
  if (const auto* text = get<MTextEntity>(source); text != nullptr && !text->columns.empty()) {
    copyColumns(*text, id, block);
  }
  if (const ExtDictionary* dict = get<ExtDictionary>(original->xdict)) {
    // The Object Data and the feature class travel with the dictionary; the
    // entries of other applications name objects of theirs, which stay.
    ExtDictionary* target = modifyExtDictionary(id);
    if (!dict->od.empty()) {
      target->od = dict->od;
      target->odHandle = handleSeed_++;
      bumpOdGeneration();
    }
    if (dict->extras && !dict->extras->featureClass.empty()) {
      target->extras.make().featureClass = dict->extras->featureClass;
    }
  }
  return id;
}

ObjectId Database::addCopy(const TaggedObject& original, ObjectId owner) {
  auto copy = std::make_unique<TaggedObject>(original);
  if (copy->textHandle == 0) {
    const DbObject* originalOwner = object(original.owner);
    copy->textHandle = original.handle;
    copy->textOwner = originalOwner != nullptr ? originalOwner->handle : 0;
  }
  copy->owner = owner;
  copy->xdict = ObjectId();
  copy->erased = false;
  copy->modified = true;
  return addObject(std::move(copy));
}

void Database::copyColumns(const MTextEntity& source, ObjectId copy, ObjectId block) {
  std::vector<Handle> columns = source.columns;
  for (Handle& h : columns) {
    const auto* column = get<MTextEntity>(idOfHandle(h));
    // A column holds no columns of its own; one that would is no column, and
    // copying it could go round in circles.
    if (column == nullptr || column->erased || !column->columns.empty()) continue;
    h = object(copyEntity(idOfHandle(h), block))->handle;
  }
  modify<MTextEntity>(copy)->columns = std::move(columns);
}

}  // namespace host
