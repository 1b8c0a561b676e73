// The objects of a drawing database other than entities: the header, layers,
// block records, Object Data table definitions and extension dictionaries.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/db/DeepPtr.h"
#include "host/db/OdRecordList.h"
#include "platform/Geometry.h"
#include "platform/ObjectId.h"
#include "platform/OdTypes.h"

namespace host {

using platform::ObjectId;
using Handle = std::uint64_t;

enum class ObjectType : std::uint8_t {
  Header,
  Layer,
  BlockRecord,
  OdTable,
  ExtDictionary,
  Entity,
  Dictionary,
  Tagged,
};

// Where an object's text stands in the drawing file it was read from, so that
// an object nobody changed is written back byte for byte.
struct SourceSpan {
  std::uint64_t offset = 0;
  std::uint32_t length = 0;
  bool empty() const { return length == 0; }
};

// Every object has a handle, an owner and possibly an extension dictionary.
// Objects are copied whole for undo, so they stay small and cheap to clone.
class DbObject {
 public:
  explicit DbObject(ObjectType type) : type_(type) {}
  virtual ~DbObject() = default;
  virtual std::unique_ptr<DbObject> clone() const = 0;

  ObjectType type() const { return type_; }

  Handle handle = 0;
  ObjectId owner;
  ObjectId xdict;
  SourceSpan source;
  // The undo step that last saved this object, so a step saves it once.
  std::uint32_t undoStamp = 0;
  bool erased = false;
  // Changed since it was read or made; an unchanged object keeps its source.
  bool modified = false;

 protected:
  DbObject(const DbObject&) = default;
  DbObject& operator=(const DbObject&) = default;

 private:
  ObjectType type_;
};

template <typename Derived, ObjectType kType>
class DbObjectOf : public DbObject {
 public:
  static constexpr ObjectType kObjectType = kType;
  DbObjectOf() : DbObject(kType) {}
  std::unique_ptr<DbObject> clone() const override {
    return std::make_unique<Derived>(static_cast<const Derived&>(*this));
  }
};

// Drawing-wide settings that undo restores with everything else.
class DatabaseHeader : public DbObjectOf<DatabaseHeader, ObjectType::Header> {
 public:
  ObjectId currentLayer;
  ObjectId currentSpace;
  short luprec = 4;
  double textSize = 2.5;
  // Feature classes of the project: name and display name.
  std::map<std::wstring, std::wstring> featureClasses;
};

class Layer : public DbObjectOf<Layer, ObjectType::Layer> {
 public:
  std::wstring name;
  short color = 7;
  ObjectId linetype;  // null: continuous
  std::int16_t lineweight = -3;
  std::int32_t trueColor = -1;
  bool frozen = false;
  bool locked = false;
  bool off = false;
  bool hidden = false;
};

class BlockRecord : public DbObjectOf<BlockRecord, ObjectType::BlockRecord> {
 public:
  std::wstring name;
  platform::Point3d basePoint;
  std::int16_t flags = 0;  // 1 anonymous, 2 has attributes, 4 external
  // For the anonymous block of a dynamic block's reference: the dynamic block.
  ObjectId dynamicBlock;
  // Handles of the entities that open and close the definition in a file.
  Handle beginHandle = 0;
  Handle endHandle = 0;
};

// The definition of one Object Data table. Records refer to it by index.
class OdTableObject : public DbObjectOf<OdTableObject, ObjectType::OdTable> {
 public:
  std::wstring name;
  platform::OdTableDef definition;
  std::uint32_t index = 0;
};

// An entry of a dictionary: its name and the handle it names, with the group
// code that says how (350 soft owner, 360 hard owner).
struct DictEntry {
  std::wstring name;
  Handle handle = 0;
  std::int16_t code = 350;
};

// A dictionary of named objects, such as the drawing's root dictionary.
class Dictionary : public DbObjectOf<Dictionary, ObjectType::Dictionary> {
 public:
  std::vector<DictEntry> entries;
};

// An object this host does not model (a table record, an object of another
// application, an xrecord): it is kept as the text it was read from.
class TaggedObject : public DbObjectOf<TaggedObject, ObjectType::Tagged> {
 public:
  std::string dxfName;
  // The name of a table record (a linetype's, a text style's...); empty otherwise.
  std::wstring name;
  // For a copy made since the drawing was read: the handles its text gives as
  // its own and as its owner's, which stand for the copy's when it is written.
  Handle textHandle = 0;
  Handle textOwner = 0;
};

// An entity's extension dictionary. Its ZARVEL_OD entry, an xrecord with the
// entity's Object Data records, is held inline; the xrecord keeps its own handle.
class ExtDictionary : public DbObjectOf<ExtDictionary, ObjectType::ExtDictionary> {
 public:
  struct Extras {
    // The feature class the entity is classified under; empty for none.
    std::wstring featureClass;
    // Entries of other applications, kept in their order.
    std::vector<DictEntry> entries;
  };

  Handle odHandle = 0;
  OdRecordList od;
  DeepPtr<Extras> extras;
};

}  // namespace host
