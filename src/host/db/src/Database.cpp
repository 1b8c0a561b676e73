// The drawing database: object storage, layers, blocks, entities and undo.
// Object Data tables and records are in DatabaseOd.cpp.
#include "host/db/Database.h"

#include <algorithm>
#include <cassert>

#include "platform/Text.h"

namespace host {

std::wstring typeName(const Entity& entity) {
  const std::string_view name = entity.kind() == EntityKind::Unknown
                                    ? static_cast<const UnknownEntity&>(entity).dxfName
                                    : platform::dxfName(entity.kind());
  return std::wstring(name.begin(), name.end());
}

Database::Database(Empty) {
  // The header is no object of the file, so it takes no handle from it.
  headerId_ = addLoaded(std::make_unique<DatabaseHeader>());
}

Database::Database() {
  headerId_ = addObject(std::make_unique<DatabaseHeader>());
  auto model = std::make_unique<BlockRecord>();
  model->name = L"*Model_Space";
  modelSpaceId_ = addObject(std::move(model));
  auto paper = std::make_unique<BlockRecord>();
  paper->name = L"*Paper_Space";
  paperSpaceId_ = addObject(std::move(paper));
  blockIds_ = {modelSpaceId_, paperSpaceId_};
  const ObjectId layer0 = addLayer(L"0");
  DatabaseHeader& h = modifyHeader();
  h.currentLayer = layer0;
  h.currentSpace = modelSpaceId_;
}

Database::~Database() = default;

const DbObject* Database::object(ObjectId id) const {
  if (id.isNull() || id.value() > objects_.size()) return nullptr;
  return objects_[id.value() - 1].get();
}

DbObject* Database::objectForWrite(ObjectId id) {
  if (id.isNull() || id.value() > objects_.size()) return nullptr;
  DbObject* o = slot(id).get();
  if (o == nullptr) return nullptr;
  ++generation_;
  if (undo_.recording() && o->undoStamp != undo_.stamp()) {
    o->undoStamp = undo_.stamp();
    undo_.save(id, *o);
  }
  o->modified = true;
  return o;
}

ObjectId Database::addObject(std::unique_ptr<DbObject> object) {
  object->handle = handleSeed_++;
  object->undoStamp = undo_.stamp();
  ++generation_;
  objects_.push_back(std::move(object));
  const ObjectId id(objects_.size());
  handleIndex_.add(objects_.back()->handle, id);
  if (undo_.recording()) undo_.saveCreation(id);
  return id;
}

ObjectId Database::addLoaded(std::unique_ptr<DbObject> object) {
  if (object->handle >= handleSeed_) handleSeed_ = object->handle + 1;
  const ObjectType type = object->type();
  ++generation_;
  objects_.push_back(std::move(object));
  const ObjectId id(objects_.size());
  DbObject& o = *objects_.back();
  handleIndex_.add(o.handle, id);
  switch (type) {
    case ObjectType::Layer: layerIds_.push_back(id); break;
    case ObjectType::BlockRecord: {
      blockIds_.push_back(id);
      const std::wstring& name = static_cast<BlockRecord&>(o).name;
      if (platform::equalsIgnoreCase(name, L"*Model_Space")) modelSpaceId_ = id;
      if (platform::equalsIgnoreCase(name, L"*Paper_Space")) paperSpaceId_ = id;
      break;
    }
    case ObjectType::OdTable:
      static_cast<OdTableObject&>(o).index = static_cast<std::uint32_t>(odTableIds_.size());
      odTableIds_.push_back(id);
      break;
    case ObjectType::Entity:
      if (!o.owner.isNull()) blockContents_[o.owner.value()].push_back(id);
      break;
    default:
      break;
  }
  return id;
}

void Database::setNextHandle(Handle handle) {
  if (handle > handleSeed_) handleSeed_ = handle;
}

std::string_view Database::sourceText(const DbObject& object) const {
  if (!source_ || object.source.empty()) return {};
  return std::string_view(*source_).substr(object.source.offset, object.source.length);
}

HatchPaths Database::hatchPaths(const Entity& hatch) const {
  const std::string_view text = sourceText(hatch);
  return keptText_ && !text.empty() ? keptText_->hatchPaths(text) : HatchPaths{};
}

std::string Database::acisText(const Entity& solid) const {
  const std::string_view text = sourceText(solid);
  return keptText_ && !text.empty() ? keptText_->acisText(text) : std::string();
}

TextPoints Database::textPoints(const Entity& entity) const {
  const std::string_view text = sourceText(entity);
  return keptText_ && !text.empty() ? keptText_->points(text) : TextPoints{};
}

ObjectId Database::idOfHandle(Handle handle) const {
  // Built on first use: most drawings never look a handle up, and the index
  // would cost more memory than the objects it points to.
  if (!handleIndex_.built()) {
    std::vector<HandleIndex::Entry> entries;
    entries.reserve(objects_.size());
    for (std::size_t i = 0; i < objects_.size(); ++i) {
      if (objects_[i]) entries.emplace_back(objects_[i]->handle, ObjectId(i + 1));
    }
    handleIndex_.build(std::move(entries));
  }
  return handleIndex_.find(handle, [this](ObjectId id) { return object(id) != nullptr; });
}

std::vector<ObjectId> Database::layerIds() const {
  std::vector<ObjectId> ids;
  for (ObjectId id : layerIds_) {
    const Layer* l = get<Layer>(id);
    if (l != nullptr && !l->erased) ids.push_back(id);
  }
  return ids;
}

ObjectId Database::findLayer(const std::wstring& name) const {
  // Asked once per entity by some searches, so the layers are not copied out.
  ObjectId folded;
  for (ObjectId id : layerIds_) {
    const Layer* l = get<Layer>(id);
    if (l == nullptr || l->erased) continue;
    const std::wstring& n = l->name;
    if (n == name) return id;
    if (folded.isNull() && platform::equalsIgnoreCase(n, name)) folded = id;
  }
  return folded;
}

ObjectId Database::addLayer(const std::wstring& name) {
  auto layer = std::make_unique<Layer>();
  layer->name = name;
  const ObjectId id = addObject(std::move(layer));
  layerIds_.push_back(id);
  return id;
}

std::vector<ObjectId> Database::blockIds() const {
  std::vector<ObjectId> ids;
  ids.reserve(blockIds_.size());
  for (ObjectId id : blockIds_) {
    const BlockRecord* b = get<BlockRecord>(id);
    if (b != nullptr && !b->erased) ids.push_back(id);
  }
  return ids;
}

ObjectId Database::findBlock(const std::wstring& name) const {
  for (ObjectId id : blockIds()) {
    if (platform::equalsIgnoreCase(get<BlockRecord>(id)->name, name)) return id;
  }
  return {};
}

std::vector<ObjectId> Database::blockEntities(ObjectId block) const {
  // Every search walks model space, often twice in a command; the list is
  // kept until the drawing changes rather than read off every entity again.
  if (keptContentsGeneration_ != generation_) {
    keptContents_.clear();
    keptContentsGeneration_ = generation_;
  }
  if (auto kept = keptContents_.find(block.value()); kept != keptContents_.end()) {
    return kept->second;
  }
  std::vector<ObjectId> ids;
  auto it = blockContents_.find(block.value());
  if (it == blockContents_.end()) return ids;
  ids.reserve(it->second.size());
  for (ObjectId id : it->second) {
    // An entity moved to another block stays listed here; its owner says where it is.
    const Entity* e = entity(id);
    if (e != nullptr && e->owner == block) ids.push_back(id);
  }
  keptContents_.emplace(block.value(), ids);
  return ids;
}

void Database::replaceEntity(ObjectId id, std::unique_ptr<Entity> replacement) {
  const Entity* old = entity(id);
  if (old == nullptr) return;
  objectForWrite(id);  // saved for undo as it was
  replacement->handle = old->handle;
  replacement->owner = old->owner;
  replacement->xdict = old->xdict;
  replacement->undoStamp = old->undoStamp;
  replacement->source = replacement->kind() == old->kind() ? old->source : SourceSpan{};
  replacement->erased = false;
  replacement->modified = true;
  slot(id) = std::move(replacement);
}

void Database::moveToBlock(ObjectId id, ObjectId block) {
  const Entity* e = entity(id);
  if (e == nullptr || e->owner == block) return;
  std::vector<ObjectId>& contents = blockContents_[block.value()];
  if (std::find(contents.begin(), contents.end(), id) == contents.end()) {
    // Kept in creation order, as the block's entities are listed.
    contents.insert(std::upper_bound(contents.begin(), contents.end(), id), id);
  }
  modify<Entity>(id)->owner = block;
}

ObjectId Database::addBlock(const std::wstring& name, const Point3d& basePoint) {
  auto block = std::make_unique<BlockRecord>();
  block->name = name;
  block->basePoint = basePoint;
  const ObjectId id = addObject(std::move(block));
  BlockRecord* record = modify<BlockRecord>(id);
  record->beginHandle = handleSeed_++;
  record->endHandle = handleSeed_++;
  blockIds_.push_back(id);
  return id;
}

std::size_t Database::blockSlotCount(ObjectId block) const {
  auto it = blockContents_.find(block.value());
  return it == blockContents_.end() ? 0 : it->second.size();
}

ObjectId Database::addEntity(std::unique_ptr<Entity> entity, ObjectId block) {
  // Attributes belong to their block reference rather than to a block.
  assert(get<BlockRecord>(block) != nullptr || get<BlockReferenceEntity>(block) != nullptr ||
         entity->kind() == EntityKind::Attribute);
  entity->owner = block;
  if (entity->layer.isNull()) entity->layer = currentLayer();
  const ObjectId id = addObject(std::move(entity));
  blockContents_[block.value()].push_back(id);
  return id;
}

const Entity* Database::entity(ObjectId id) const {
  const Entity* e = get<Entity>(id);
  return e != nullptr && !e->erased ? e : nullptr;
}

void Database::eraseEntity(ObjectId id) {
  if (entity(id) == nullptr) return;
  modify<Entity>(id)->erased = true;
}

void Database::setOpenFailure(ObjectId id, bool fails) {
  ++generation_;
  if (fails) {
    openFailures_.insert(id);
  } else {
    openFailures_.erase(id);
  }
}

const Entity* Database::openEntity(ObjectId id) const {
  return failsToOpen(id) ? nullptr : entity(id);
}

std::vector<std::wstring> Database::undoSteps(int count) {
  std::vector<std::wstring> names;
  auto& done = undo_.done();
  for (int i = 0; i < count && !done.empty(); ++i) {
    UndoJournal::Step step = std::move(done.back());
    done.pop_back();
    for (auto it = step.changes.rbegin(); it != step.changes.rend(); ++it) {
      std::swap(slot(it->id), it->saved);
    }
    names.push_back(step.name);
    undo_.undone().push_back(std::move(step));
  }
  handleIndex_.clear();
  bumpOdGeneration();
  ++generation_;
  return names;
}

std::vector<std::wstring> Database::redoSteps(int count) {
  std::vector<std::wstring> names;
  auto& undone = undo_.undone();
  for (int i = 0; i < count && !undone.empty(); ++i) {
    UndoJournal::Step step = std::move(undone.back());
    undone.pop_back();
    for (auto& change : step.changes) std::swap(slot(change.id), change.saved);
    names.push_back(step.name);
    undo_.done().push_back(std::move(step));
  }
  handleIndex_.clear();
  bumpOdGeneration();
  ++generation_;
  return names;
}

void Database::rollBackTo(const UndoJournal::Mark& mark) {
  std::vector<UndoJournal::Change>& changes = undo_.done().back().changes;
  while (changes.size() > mark.changeCount) {
    std::swap(slot(changes.back().id), changes.back().saved);
    changes.pop_back();
  }
  // The objects made since are gone, so their handles may be given again: the
  // drawing's next handle is as it was, and so is its file.
  handleSeed_ = mark.nextHandle;
  handleIndex_.clear();
  bumpOdGeneration();
  // What was worked out from the changes just taken back is stale too.
  ++generation_;
}

}  // namespace host
