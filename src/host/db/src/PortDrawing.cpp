// The port's drawing queries, answered from our database, and the scratch
// entity a module may make and erase.
#include "host/db/PortDrawing.h"

#include <memory>

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

std::optional<ObjectId> DbDrawing::entityLayerId(ObjectId entity) const {
  const Entity* e = db_.openEntity(entity);
  if (e == nullptr) return std::nullopt;
  return e->layer;
}

std::optional<std::wstring> DbDrawing::entityLayerName(ObjectId entity) const {
  const Entity* e = db_.openEntity(entity);
  if (e == nullptr) return std::nullopt;
  const Layer* l = db_.get<Layer>(e->layer);
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

}  // namespace host
