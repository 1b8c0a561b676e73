// Our database behind the port's drawing interface.
#pragma once

#include <cstdint>
#include <map>
#include <variant>

#include "host/db/Database.h"
#include "platform/Drawing.h"

namespace host {

class DbDrawing : public platform::Drawing {
 public:
  explicit DbDrawing(Database& db) : db_(db) {}

  ObjectId modelSpaceId() const override { return db_.modelSpace(); }
  ObjectId paperSpaceId() const override { return db_.paperSpace(); }
  ObjectId blockIdByName(const std::wstring& name) const override { return db_.findBlock(name); }
  std::vector<ObjectId> blockEntityIds(ObjectId block) const override {
    return db_.blockEntities(block);
  }
  bool canOpen(ObjectId entity) const override;
  std::optional<ObjectId> entityLayerId(ObjectId entity) const override;
  std::optional<std::wstring> entityLayerName(ObjectId entity) const override;
  std::wstring handleText(ObjectId object) const override;
  std::vector<platform::LayerInfo> layers() const override;
  std::optional<platform::LayerInfo> layerByName(const std::wstring& name) const override;
  ObjectId addPoint(const platform::Point3d& position) override;
  platform::Status eraseEntity(ObjectId entity) override;
  std::optional<platform::EntityProperties> entityProperties(ObjectId entity) const override;
  platform::Status setEntityProperties(ObjectId entity,
                                       const platform::EntityProperties& properties) override;
  std::wstring blockNameOfReference(ObjectId reference) const override;
  std::vector<ObjectId> attributeIds(ObjectId reference) const override;
  std::optional<std::wstring> attributeTag(ObjectId attribute) const override;
  platform::Status setAttributeText(ObjectId attribute, const std::wstring& text) override;
  platform::Status copyEntityProperties(ObjectId target, ObjectId source) override;
  ObjectId addLayer(const std::wstring& name, const platform::RgbColor& color) override;
  ObjectId addBlock(const std::wstring& name, const platform::Point3d& origin) override;
  ObjectId addCircle(ObjectId block, const platform::Point3d& center, double radius,
                     std::int16_t colorIndex) override;
  ObjectId addBlockReference(ObjectId block, const platform::Point3d& position, double scale,
                             ObjectId layer, std::int16_t colorIndex) override;
  std::vector<platform::ExtensionEntryCopy> copyExtensionEntries(ObjectId entity) override;
  platform::Status putExtensionEntry(ObjectId entity, const std::wstring& name,
                                     std::uint64_t copy) override;
  void releaseExtensionEntry(std::uint64_t copy) override { keptEntries_.erase(copy); }

  // The names under which an extension dictionary offers its records and its
  // feature class as entries.
  static constexpr const wchar_t* kRecordsEntry = L"ZARVEL_OD";
  static constexpr const wchar_t* kFeatureClassEntry = L"ZARVEL_FEATURE_CLASS";

 private:
  struct FeatureClassName {
    std::wstring name;
  };
  // Another application's object, and how the dictionary owns it.
  struct ForeignObject {
    TaggedObject object;
    std::int16_t code = 350;
  };
  using KeptEntry = std::variant<OdRecordList, FeatureClassName, ForeignObject>;

  Database& db_;
  // Copies of extension-dictionary entries held for a module, by token.
  std::map<std::uint64_t, KeptEntry> keptEntries_;
  std::uint64_t nextEntryToken_ = 1;
};

// Handles print as upper-case hexadecimal.
std::wstring handleToText(Handle handle);
platform::LayerInfo layerInfo(const Database& db, ObjectId layer);

}  // namespace host
