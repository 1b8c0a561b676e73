// ZARVEL_STORE_ATTRS and ZARVEL_LOAD_ATTRS: values between Object Data and the
// attributes of block references, along an attribute map. The map is loaded
// whole before anything is selected, so that a faulty map changes nothing.
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "BlockReferences.h"
#include "attributes/AttributeCommands.h"
#include "attributes/AttributeMap.h"
#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"

namespace zarvel {
namespace {

struct Transfer {
  AttributeMap map;
  std::vector<ObjectId> references;
};

// The map file and then the references; nothing when the command ends here.
std::optional<Transfer> startTransfer(OdContainer& container) {
  platform::FileDialogRequest request;
  request.defaultExtension = L"txt";
  request.filter = loadString(kTxtTextOrAllFilesFilter);
  const std::wstring path = port().ui().fileDialog(request);
  if (path.empty()) return std::nullopt;
  Transfer transfer;
  if (!loadAttributeMap(container, path, transfer.map)) return std::nullopt;
  const SelectionResult selection = commandScope();
  if (!selection.ok) return std::nullopt;
  transfer.references = blockReferencesIn(selection.ids);
  return transfer;
}

// The block's entry of the map; null for a block the map doesn't name.
const BlockAttributeMap* mappedBlock(const AttributeMap& map, ObjectId reference) {
  const auto found = map.find(toLowerCopy(blockNameOfReference(reference)));
  return found != map.end() ? &found->second : nullptr;
}

// The tables and column indices of the map, each looked up once in a command:
// every reference asks for the same few.
class MappedColumns {
 public:
  explicit MappedColumns(OdContainer& container) : container_(container) {}

  // Null when the drawing has no such table.
  platform::OdTable* table(const std::wstring& name) {
    auto found = tables_.find(name);
    if (found == tables_.end()) found = tables_.emplace(name, container_.getTable(name)).first;
    return found->second.get();
  }
  // Negative when the table or the column can't be had.
  int index(const MappedColumn& mapped) {
    auto key = std::make_pair(mapped.table, mapped.column);
    auto found = indexes_.find(key);
    if (found == indexes_.end()) {
      platform::OdTable* t = table(mapped.table);
      const int index = t != nullptr ? t->definition().columnIndex(mapped.column) : -1;
      found = indexes_.emplace(std::move(key), index).first;
    }
    return found->second;
  }

 private:
  OdContainer& container_;
  std::map<std::wstring, std::unique_ptr<platform::OdTable>> tables_;
  std::map<std::pair<std::wstring, std::wstring>, int> indexes_;
};

// The text an attribute takes of a value; nothing for a type without one.
std::optional<std::wstring> attributeTextOf(const OdValue& value) {
  switch (value.type()) {
    case platform::OdType::Integer:
      return platform::format(L"%i", value.asInt());
    case platform::OdType::Real:
      return trimTrailingZeros(platform::format(L"%.12lf", value.asReal()));
    case platform::OdType::Character:
      return value.asText();
    case platform::OdType::Point: {
      const platform::Point3d p = value.asPoint();
      return platform::format(L"%lf, %lf, %lf", p.x, p.y, p.z);
    }
    case platform::OdType::Unknown:
      break;
  }
  return std::nullopt;
}

// The value of the mapped column in the first of the records of its table;
// nothing when the reference has none or the column can't be had.
std::optional<OdValue> mappedValue(MappedColumns& columns, const std::vector<OdRecord>& records,
                                   const MappedColumn& mapped) {
  for (const OdRecord& record : records) {
    if (toLowerCopy(record.tableName()) != mapped.table) continue;
    const int index = columns.index(mapped);
    if (index < 0 || index >= record.count()) return std::nullopt;
    return record.value(index);
  }
  return std::nullopt;
}

// Attributes written for one reference.
int storeReference(MappedColumns& columns, const AttributeMap& map, ObjectId reference) {
  const std::vector<OdRecord> records = recordsOfEntity(getODContainer(), reference);
  if (records.empty()) return 0;
  const BlockAttributeMap* block = mappedBlock(map, reference);
  if (block == nullptr) return 0;
  int stored = 0;
  for (const ReferenceAttribute& attribute : attributesOf(reference)) {
    const auto mapped = block->find(attribute.tag);
    if (mapped == block->end()) continue;
    const std::optional<OdValue> value = mappedValue(columns, records, mapped->second);
    if (!value) continue;
    const std::optional<std::wstring> text = attributeTextOf(*value);
    // A value of no known type leaves the text as it was, and still counts.
    if (text && port().drawing().setAttributeText(attribute.id, *text) != platform::Status::Ok) {
      continue;
    }
    ++stored;
  }
  return stored;
}

}  // namespace

void commandStoreAttrs() {
  ResourceScope scope;
  OdContainer& container = getODContainer();
  const std::optional<Transfer> transfer = startTransfer(container);
  if (!transfer) return;
  MappedColumns columns(container);
  int stored = 0;
  for (const ObjectId reference : transfer->references) {
    stored += storeReference(columns, transfer->map, reference);
  }
  printMessage(kTxtLoadedAttributes, stored, static_cast<int>(transfer->references.size()));
}

namespace {

struct AttributeValue {
  MappedColumn column;
  std::wstring text;
};

// A point from attribute text: each coordinate read as a whole number, its
// decimals cut, as maps made for this command have always been read; more
// than three parts give the origin.
platform::Point3d pointOfAttribute(const std::vector<std::wstring>& parts) {
  platform::Point3d p{0.0, 0.0, 0.0};
  if (parts.size() <= 3) {
    double* coordinates[] = {&p.x, &p.y, &p.z};
    for (std::size_t i = 0; i < parts.size(); ++i) *coordinates[i] = platform::wtoi(parts[i]);
  }
  return p;
}

// Writes one attribute's text into the first record of its table.
void loadValue(MappedColumns& columns, ObjectId reference, const AttributeValue& attribute) {
  platform::OdTable* table = columns.table(attribute.column.table);
  if (table == nullptr) return;
  const std::unique_ptr<platform::OdRecordIterator> iterator = table->newIterator();
  initWalk(*iterator, reference, platform::OpenMode::Write);
  if (iterator->isDone()) return;
  OdRecord record;
  if (iterator->getRecord(record) != platform::Status::Ok) return;
  const int index = columns.index(attribute.column);
  if (index < 0 || index >= record.count()) return;
  assignTextByType(record.value(index), attribute.text, pointOfAttribute);
  // Written at once, so that of two attributes mapped to one column the
  // later one stands; a record that won't take it is passed over.
  platform::ignoreStatus(iterator->updateRecord(record));
}

// Whether the reference had a mapped attribute and so was loaded.
bool loadReference(MappedColumns& columns, const AttributeMap& map, ObjectId reference) {
  const BlockAttributeMap* block = mappedBlock(map, reference);
  if (block == nullptr) return false;
  std::set<std::wstring> tables;
  std::vector<AttributeValue> values;
  for (const ReferenceAttribute& attribute : attributesOf(reference)) {
    const auto mapped = block->find(attribute.tag);
    if (mapped == block->end()) continue;
    std::optional<std::wstring> text = port().geometry().text(attribute.id);
    if (!text) continue;
    tables.insert(mapped->second.table);
    values.push_back({mapped->second, std::move(*text)});
  }
  if (tables.empty()) return false;
  OdContainer& container = getODContainer();
  for (const std::wstring& name : tables) {
    // The map holds names in lower case; records carry the table's own name.
    platform::OdTable* table = columns.table(name);
    if (table != nullptr && !hasRecordOfTable(container, reference, table->name())) {
      attachDefaultRecord(container, table->name(), reference);
    }
  }
  for (const AttributeValue& value : values) loadValue(columns, reference, value);
  return true;
}

}  // namespace

void commandLoadAttrs() {
  ResourceScope scope;
  OdContainer& container = getODContainer();
  const std::optional<Transfer> transfer = startTransfer(container);
  if (!transfer) return;
  MappedColumns columns(container);
  int loaded = 0;
  for (const ObjectId reference : transfer->references) {
    if (loadReference(columns, transfer->map, reference)) ++loaded;
  }
  printMessage(kTxtLoadedDefinitions, loaded, static_cast<int>(transfer->references.size()));
}

}  // namespace zarvel
