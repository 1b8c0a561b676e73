// The port's drawing queries, answered from our database, the scratch entity
// a module may make and erase, and the display properties of entities.
#include "host/db/PortDrawing.h"

#include <cstdint>
#include <memory>
#include <optional>

#include "host/db/KeptById.h"

namespace host {

std::wstring handleToText(Handle handle) {
  static const wchar_t kDigits[] = L"0123456789ABCDEF";
  std::wstring text;
  do {
    text.insert(text.begin(), kDigits[handle & 0xF]);
    handle >>= 4;
  } while (handle != 0);
  return text;
}

platform::LayerInfo layerInfo(const Database& db, ObjectId id) {
  const Layer* l = db.get<Layer>(id);
  return platform::LayerInfo{id, l->name, l->frozen, l->locked, l->off, l->hidden};
}

namespace {

// Whether each entity opens and its layer, kept until the drawing changes:
// a command asks both of every entity of model space, one question after the
// other, and a search after it asks again. Answered from here, the entities
// themselves, spread over the heap, are not read again each time.
struct EntityFacts : KeptById<std::optional<ObjectId>> {};

std::optional<ObjectId> keptLayerOf(const Database& db, ObjectId entity) {
  if (entity.isNull() || entity.value() > db.idCount()) return std::nullopt;
  return db.derived<EntityFacts>().get(db, entity, [&db](ObjectId id) -> std::optional<ObjectId> {
    const Entity* e = db.openEntity(id);
    if (e == nullptr) return std::nullopt;
    return e->layer;
  });
}

}  // namespace

bool DbDrawing::canOpen(ObjectId entity) const {
  return keptLayerOf(db_, entity).has_value();
}

std::optional<ObjectId> DbDrawing::entityLayerId(ObjectId entity) const {
  return keptLayerOf(db_, entity);
}

std::optional<std::wstring> DbDrawing::entityLayerName(ObjectId entity) const {
  const std::optional<ObjectId> layer = keptLayerOf(db_, entity);
  if (!layer) return std::nullopt;
  const Layer* l = db_.get<Layer>(*layer);
  return l != nullptr ? l->name : std::wstring();
}

std::wstring DbDrawing::handleText(ObjectId object) const {
  const DbObject* o = db_.object(object);
  if (o == nullptr || o->erased || db_.failsToOpen(object)) return {};
  return handleToText(o->handle);
}

std::vector<platform::LayerInfo> DbDrawing::layers() const {
  std::vector<platform::LayerInfo> out;
  for (ObjectId id : db_.layerIds()) out.push_back(layerInfo(db_, id));
  return out;
}

std::optional<platform::LayerInfo> DbDrawing::layerByName(const std::wstring& name) const {
  const ObjectId id = db_.findLayer(name);
  if (id.isNull()) return std::nullopt;
  return layerInfo(db_, id);
}

ObjectId DbDrawing::addPoint(const platform::Point3d& position) {
  auto point = std::make_unique<PointEntity>();
  point->position = position;
  return db_.addEntity(std::move(point), db_.modelSpace());
}

platform::Status DbDrawing::eraseEntity(ObjectId entity) {
  // An entity that won't open can't be erased, as an open for write would fail.
  if (db_.openEntity(entity) == nullptr) return platform::Status::Failed;
  db_.eraseEntity(entity);
  return platform::Status::Ok;
}

namespace {

void applyProperties(Entity& e, const platform::EntityProperties& p) {
  e.color = p.color.index;
  e.layer = p.layer;
  e.lineweight = p.lineWeight;
  e.setLinetype(p.linetype);
  // The rare part is made only when a value differs from its default, so that
  // most entities stay as small as they were.
  const bool plain = p.color.trueColor == -1 && p.color.bookName.empty() && p.linetypeScale == 1.0;
  if (plain && !e.rare) return;
  RareProperties& rare = e.rare.make();
  rare.trueColor = p.color.trueColor;
  rare.colorName = p.color.bookName;
  rare.linetypeScale = p.linetypeScale;
}

// The colour index a layer shows where no true colour is drawn: the one of the
// seven standard colours that the colour is, else white.
std::int16_t standardColorIndex(const platform::RgbColor& c) {
  const bool r = c.red == 255;
  const bool g = c.green == 255;
  const bool b = c.blue == 255;
  const bool pure = (c.red == 0 || r) && (c.green == 0 || g) && (c.blue == 0 || b);
  if (!pure) return 7;
  static const std::int16_t kByBits[8] = {7, 5, 3, 4, 1, 6, 2, 7};  // bits: red 4, green 2, blue 1
  return kByBits[(r ? 4 : 0) | (g ? 2 : 0) | (b ? 1 : 0)];
}

}  // namespace

std::optional<platform::EntityProperties> DbDrawing::entityProperties(ObjectId entity) const {
  const Entity* e = db_.openEntity(entity);
  if (e == nullptr) return std::nullopt;
  platform::EntityProperties p;
  p.color.index = e->color;
  p.layer = e->layer;
  p.linetype = e->linetype();
  p.lineWeight = e->lineweight;
  if (e->rare) {
    p.color.trueColor = e->rare->trueColor;
    p.color.bookName = e->rare->colorName;
    p.linetypeScale = e->rare->linetypeScale;
  }
  return p;
}

platform::Status DbDrawing::setEntityProperties(ObjectId entity,
                                                const platform::EntityProperties& properties) {
  if (db_.openEntity(entity) == nullptr || db_.get<Layer>(properties.layer) == nullptr) {
    return platform::Status::Failed;
  }
  applyProperties(*db_.modify<Entity>(entity), properties);
  // A block reference's attributes are its own parts and follow it.
  if (const auto* ref = db_.get<BlockReferenceEntity>(entity)) {
    const std::vector<ObjectId> attributes = ref->attributes;
    for (ObjectId a : attributes) {
      if (Entity* attribute = db_.modify<Entity>(a)) applyProperties(*attribute, properties);
    }
  }
  return platform::Status::Ok;
}

namespace {

template <typename T>
const T* openEntityOf(const Database& db, ObjectId id) {
  const Entity* e = db.openEntity(id);
  return e != nullptr && e->kind() == T::kEntityKind ? static_cast<const T*>(e) : nullptr;
}

// A block record that opens: there, not erased, and not made to fail.
const BlockRecord* openBlock(const Database& db, ObjectId id) {
  const BlockRecord* block = db.get<BlockRecord>(id);
  return block != nullptr && !block->erased && !db.failsToOpen(id) ? block : nullptr;
}

}  // namespace

std::wstring DbDrawing::blockNameOfReference(ObjectId reference) const {
  const auto* ref = openEntityOf<BlockReferenceEntity>(db_, reference);
  const BlockRecord* block = ref != nullptr ? openBlock(db_, ref->block) : nullptr;
  if (block == nullptr) return {};
  // The anonymous block of a dynamic block's reference is an implementation
  // detail; users know the block by the dynamic block's name.
  if (const BlockRecord* dynamic = openBlock(db_, block->dynamicBlock)) return dynamic->name;
  return block->name;
}

std::vector<ObjectId> DbDrawing::attributeIds(ObjectId reference) const {
  const auto* ref = openEntityOf<BlockReferenceEntity>(db_, reference);
  return ref != nullptr ? ref->attributes : std::vector<ObjectId>();
}

std::optional<std::wstring> DbDrawing::attributeTag(ObjectId attribute) const {
  const auto* a = openEntityOf<AttributeEntity>(db_, attribute);
  if (a == nullptr) return std::nullopt;
  return a->tag;
}

platform::Status DbDrawing::setAttributeText(ObjectId attribute, const std::wstring& text) {
  if (openEntityOf<AttributeEntity>(db_, attribute) == nullptr) return platform::Status::Failed;
  db_.modify<AttributeEntity>(attribute)->data.text = text;
  return platform::Status::Ok;
}

platform::Status DbDrawing::copyEntityProperties(ObjectId target, ObjectId source) {
  const Entity* from = db_.openEntity(source);
  if (from == nullptr || db_.openEntity(target) == nullptr) return platform::Status::Failed;
  if (target != source) copyCommonProperties(*from, *db_.modify<Entity>(target));
  return platform::Status::Ok;
}

ObjectId DbDrawing::addLayer(const std::wstring& name, const platform::RgbColor& color) {
  if (name.empty() || !db_.findLayer(name).isNull()) return ObjectId();
  const ObjectId id = db_.addLayer(name);
  Layer* layer = db_.modify<Layer>(id);
  layer->color = standardColorIndex(color);
  layer->trueColor =
      (std::int32_t{color.red} << 16) | (std::int32_t{color.green} << 8) | color.blue;
  return id;
}

ObjectId DbDrawing::addBlock(const std::wstring& name, const platform::Point3d& origin) {
  if (name.empty() || !db_.findBlock(name).isNull()) return ObjectId();
  return db_.addBlock(name, origin);
}

ObjectId DbDrawing::addCircle(ObjectId block, const platform::Point3d& center, double radius,
                              std::int16_t colorIndex) {
  if (db_.get<BlockRecord>(block) == nullptr || db_.object(block)->erased) return ObjectId();
  auto circle = std::make_unique<CircleEntity>();
  circle->center = center;
  circle->radius = radius;
  circle->color = colorIndex;
  return db_.addEntity(std::move(circle), block);
}

ObjectId DbDrawing::addBlockReference(ObjectId block, const platform::Point3d& position,
                                      double scale, ObjectId layer, std::int16_t colorIndex) {
  if (db_.get<BlockRecord>(block) == nullptr || db_.object(block)->erased) return ObjectId();
  auto reference = std::make_unique<BlockReferenceEntity>();
  reference->block = block;
  reference->position = position;
  reference->scale = {scale, scale, scale};
  reference->layer = db_.get<Layer>(layer) != nullptr ? layer : ObjectId();
  reference->color = colorIndex;
  return db_.addEntity(std::move(reference), db_.modelSpace());
}

}  // namespace host
