// The drawing database of our host: objects by id and handle, layers, the two
// spaces, entities, Object Data tables and records, and undo.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/db/Entities.h"
#include "host/db/HandleIndex.h"
#include "host/db/KeptText.h"
#include "host/db/ObjectTable.h"
#include "host/db/Objects.h"
#include "host/db/UndoJournal.h"

namespace host {

class Database {
 public:
  // A new drawing: layer "0" (current), model space (current) and paper space.
  Database();
  // Nothing but the header, for a drawing about to be loaded from a file.
  struct Empty {};
  explicit Database(Empty);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // --- Objects -------------------------------------------------------------
  // The object of an id, erased ones included; null for ids that name nothing.
  const DbObject* object(ObjectId id) const;
  template <typename T>
  const T* get(ObjectId id) const {
    const DbObject* o = object(id);
    return isA<T>(o) ? static_cast<const T*>(o) : nullptr;
  }
  // The object for change: saved for undo first when a step is open.
  template <typename T>
  T* modify(ObjectId id) {
    if (!isA<T>(object(id))) return nullptr;
    return static_cast<T*>(objectForWrite(id));
  }
  // Whether the object is a T; for a kind of entity, of that kind.
  template <typename T>
  static bool isA(const DbObject* o) {
    if (o == nullptr || o->type() != T::kObjectType) return false;
    if constexpr (std::is_base_of_v<Entity, T> && !std::is_same_v<T, Entity>) {
      return static_cast<const Entity*>(o)->kind() == T::kEntityKind;
    }
    return true;
  }
  ObjectId idOfHandle(Handle handle) const;
  Handle nextHandle() const { return handleSeed_; }
  // Number of id slots handed out, for walks over every object.
  std::uint64_t idCount() const { return objects_.size(); }

  const DatabaseHeader& header() const { return *get<DatabaseHeader>(headerId_); }
  DatabaseHeader& modifyHeader() { return *modify<DatabaseHeader>(headerId_); }

  // --- Layers --------------------------------------------------------------
  // Layers in table order.
  std::vector<ObjectId> layerIds() const;
  // Exact name first, else the first match ignoring case; null if none.
  ObjectId findLayer(const std::wstring& name) const;
  ObjectId addLayer(const std::wstring& name);
  ObjectId currentLayer() const { return header().currentLayer; }

  // --- Blocks and entities ---------------------------------------------------
  ObjectId modelSpace() const { return modelSpaceId_; }
  ObjectId paperSpace() const { return paperSpaceId_; }
  ObjectId findBlock(const std::wstring& name) const;
  // Block records in table order; like layers, those whose creation was undone are left out.
  std::vector<ObjectId> blockIds() const;
  // Entity ids of a block in its order, erased ones left out.
  std::vector<ObjectId> blockEntities(ObjectId block) const;
  std::size_t blockSlotCount(ObjectId block) const;

  // Puts another entity in the place of one, under its id, handle, owner and
  // extension dictionary (a circle broken into an arc stays the same object).
  // One of the same kind keeps the source text, for what the host does not model.
  void replaceEntity(ObjectId id, std::unique_ptr<Entity> replacement);
  // Moves an entity into another block, as defining a block does.
  void moveToBlock(ObjectId id, ObjectId block);
  // A new block definition, empty.
  ObjectId addBlock(const std::wstring& name, const Point3d& basePoint);
  // A copy of an entity in a block, with new handles: its extension dictionary
  // (and so its Object Data), a block reference's attributes and the columns
  // of a multiline text come along, and what the host does not model of it
  // stays in the source text the copy shares with it.
  ObjectId copyEntity(ObjectId source, ObjectId block);
  // A copy of an object kept as text, under a new handle and owner; its text
  // stays the original's, read with the copy's handles.
  ObjectId addCopy(const TaggedObject& original, ObjectId owner);

  // Adds an entity to a block; a null layer becomes the current layer.
  ObjectId addEntity(std::unique_ptr<Entity> entity, ObjectId block);
  // The entity of an id, null if it is none or erased.
  const Entity* entity(ObjectId id) const;
  void eraseEntity(ObjectId id);

  // Fault injection: an entity that fails to open, as a damaged one would.
  void setOpenFailure(ObjectId id, bool fails);
  bool failsToOpen(ObjectId id) const { return !openFailures_.empty() && openFailures_.count(id) > 0; }
  // The entity as an open for read sees it: null if erased, missing or failing.
  const Entity* openEntity(ObjectId id) const;

  // --- Object Data -----------------------------------------------------------
  // Tables in creation order.
  std::vector<ObjectId> odTableIds() const;
  const OdTableObject* odTable(ObjectId id) const { return get<OdTableObject>(id); }
  const OdTableObject* odTableAt(std::uint32_t index) const;
  ObjectId findOdTable(const std::wstring& name) const;
  // Null when a table of exactly that name exists.
  ObjectId createOdTable(const std::wstring& name, const platform::OdTableDef& definition);
  bool removeOdTable(ObjectId table);
  bool renameOdTable(ObjectId table, const std::wstring& newName);
  bool updateOdTableDefinition(ObjectId table, const platform::OdTableDef& definition);

  // The records of an entity; null when it has none.
  const OdRecordList* odRecords(ObjectId entity) const;
  // The records for change; creates the extension dictionary if needed.
  OdRecordList* modifyOdRecords(ObjectId entity);
  // The entity's extension dictionary for change, created if it has none.
  ExtDictionary* modifyExtDictionary(ObjectId entity);
  // Whether the values already are what conformValues would make of them.
  static bool conformsTo(const platform::OdTableDef& definition,
                         const std::vector<platform::OdValue>& values);
  // Values completed with the columns' defaults, cut to the columns' count and
  // converted to the columns' types.
  static std::vector<platform::OdValue> conformValues(const platform::OdTableDef& definition,
                                                      std::vector<platform::OdValue> values);
  // Changes whenever any record or table changes, so iterators can revalidate.
  std::uint64_t odGeneration() const { return odGeneration_; }
  void bumpOdGeneration() { ++odGeneration_; }

  // --- Loading ---------------------------------------------------------------
  // Adds an object read from a file, under the handle it carries: no undo, and
  // layers, blocks, tables and entities join their lists in reading order. An
  // entity's owner is its block.
  ObjectId addLoaded(std::unique_ptr<DbObject> object);
  // New objects get handles from here on; never lowers the next handle.
  void setNextHandle(Handle handle);
  // An object being filled in while the drawing loads: no undo, and it keeps
  // counting as unchanged since it was read.
  template <typename T>
  T* loading(ObjectId id) {
    ++generation_;
    DbObject* o = id.isNull() || id.value() > objects_.size() ? nullptr : slot(id).get();
    return isA<T>(o) ? static_cast<T*>(o) : nullptr;
  }
  DbObject* loadingObject(ObjectId id) {
    ++generation_;
    return id.isNull() || id.value() > objects_.size() ? nullptr : slot(id).get();
  }
  // After handles were given while loading: look them up afresh.
  void reindexHandles() { handleIndex_.clear(); }
  // Hands out the next handle, for objects made outside the database's own calls.
  Handle takeHandle() { return handleSeed_++; }
  // The text of the file the drawing was read from, which objects' sources
  // index, and the reader of that text's form for the kinds kept as text.
  void setSourceText(std::shared_ptr<const std::string> text,
                     std::shared_ptr<const KeptTextReader> reader) {
    source_ = std::move(text);
    keptText_ = std::move(reader);
    ++generation_;
  }
  std::string_view sourceText(const DbObject& object) const;
  // What the text of an entity kept as text holds; nothing without a source.
  HatchPaths hatchPaths(const Entity& hatch) const;
  std::string acisText(const Entity& solid) const;
  TextPoints textPoints(const Entity& entity) const;

  // --- Undo ------------------------------------------------------------------
  UndoJournal& undo() { return undo_; }
  const UndoJournal& undo() const { return undo_; }
  // Undoes or redoes whole steps; returns the names of the steps done.
  std::vector<std::wstring> undoSteps(int count);
  std::vector<std::wstring> redoSteps(int count);
  // Marks the open step, for rolling back to.
  UndoJournal::Mark undoMark() { return undo_.mark(handleSeed_); }
  // Puts back every object changed since the mark and the handles given out
  // since; the step stays open, without those changes.
  void rollBackTo(const UndoJournal::Mark& mark);

  // --- Derived data ------------------------------------------------------------
  // Counts the changes to the drawing, undo and redo among them: what is worked
  // out from the drawing and kept stays good while the count stands. A pointer
  // that modify() gave is to be written through before the drawing is asked again.
  std::uint64_t generation() const { return generation_; }
  // What another library works out from the drawing and keeps beside it, one of
  // each type, made on first use; the database only owns it.
  class Derived {
   public:
    virtual ~Derived() = default;
  };
  template <typename T>
  T& derived() const {
    static_assert(std::is_base_of_v<Derived, T>);
    std::unique_ptr<Derived>& kept = derived_[std::type_index(typeid(T))];
    if (!kept) kept = std::make_unique<T>();
    return static_cast<T&>(*kept);
  }

 private:
  DbObject* objectForWrite(ObjectId id);
  void copyColumns(const MTextEntity& source, ObjectId copy, ObjectId block);
  // The extension dictionaries that hold records of the table of that index.
  std::vector<ObjectId> dictionariesWithRecordsOf(std::uint32_t index) const;
  ObjectId addObject(std::unique_ptr<DbObject> object);
  std::unique_ptr<DbObject>& slot(ObjectId id) { return objects_[id.value() - 1]; }

  ObjectTable objects_;
  std::shared_ptr<const std::string> source_;
  std::shared_ptr<const KeptTextReader> keptText_;
  Handle handleSeed_ = 1;
  mutable HandleIndex handleIndex_;
  ObjectId headerId_;
  ObjectId modelSpaceId_;
  ObjectId paperSpaceId_;
  std::vector<ObjectId> layerIds_;
  std::vector<ObjectId> blockIds_;
  std::unordered_map<std::uint64_t, std::vector<ObjectId>> blockContents_;
  // What blockEntities last answered per block, good while the generation stands.
  mutable std::unordered_map<std::uint64_t, std::vector<ObjectId>> keptContents_;
  mutable std::uint64_t keptContentsGeneration_ = ~std::uint64_t{0};
  std::vector<ObjectId> odTableIds_;
  std::unordered_set<ObjectId> openFailures_;
  std::uint64_t odGeneration_ = 0;
  std::uint64_t generation_ = 0;
  mutable std::unordered_map<std::type_index, std::unique_ptr<Derived>> derived_;
  UndoJournal undo_;
};

}  // namespace host
