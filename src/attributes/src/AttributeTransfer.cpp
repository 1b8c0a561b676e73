// ZARVEL_STORE_ATTRS and ZARVEL_LOAD_ATTRS: values between Object Data and the
// attributes of block references, along an attribute map. The map is loaded
// whole before anything is selected, so that a faulty map changes nothing.
#include <optional>
#include <set>

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
std::optional<OdValue> mappedValue(OdContainer& container, const std::vector<OdRecord>& records,
                                   const MappedColumn& mapped) {
  for (const OdRecord& record : records) {
    if (toLowerCopy(record.tableName()) != mapped.table) continue;
    const std::unique_ptr<platform::OdTable> table = container.getTable(mapped.table);
    if (table == nullptr) return std::nullopt;
    const int index = table->definition().columnIndex(mapped.column);
    if (index < 0 || index >= record.count()) return std::nullopt;
    return record.value(index);
  }
  return std::nullopt;
}

// Attributes written for one reference.
int storeReference(OdContainer& container, const AttributeMap& map, ObjectId reference) {
  const std::vector<OdRecord> records = recordsOfEntity(container, reference);
  if (records.empty()) return 0;
  const BlockAttributeMap* block = mappedBlock(map, reference);
  if (block == nullptr) return 0;
  int stored = 0;
  for (const ReferenceAttribute& attribute : attributesOf(reference)) {
    const auto mapped = block->find(attribute.tag);
    if (mapped == block->end()) continue;
    const std::optional<OdValue> value = mappedValue(container, records, mapped->second);
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
  int stored = 0;
  for (const ObjectId reference : transfer->references) {
    stored += storeReference(container, transfer->map, reference);
  }
  printMessage(kTxtLoadedAttributes, stored, static_cast<int>(transfer->references.size()));
}

namespace {

struct AttributeValue {
  std::wstring table;
  std::wstring column;
  std::wstring text;
};

// Sets a value from attribute text by the value's own type. Coordinates are
// read as whole numbers, as the points' counterpart in the map's other
// direction has always read them.
void assignAttributeText(OdValue& value, const std::wstring& text) {
  switch (value.type()) {
    case platform::OdType::Integer:
      value = platform::wtoi(text);
      break;
    case platform::OdType::Real:
      value = platform::wtof(text);
      break;
    case platform::OdType::Character:
      value = text;
      break;
    case platform::OdType::Point: {
      std::vector<std::wstring> parts;
      splitText(text, L",", parts);
      platform::Point3d p{0.0, 0.0, 0.0};
      if (parts.size() <= 3) {
        double* coordinates[] = {&p.x, &p.y, &p.z};
        for (std::size_t i = 0; i < parts.size(); ++i) *coordinates[i] = platform::wtoi(parts[i]);
      }
      value = p;
      break;
    }
    case platform::OdType::Unknown:
      break;
  }
}

// Writes one attribute's text into the first record of its table.
void loadValue(OdContainer& container, ObjectId reference, const AttributeValue& attribute) {
  const std::unique_ptr<platform::OdTable> table = container.getTable(attribute.table);
  if (table == nullptr) return;
  const std::unique_ptr<platform::OdRecordIterator> iterator = table->newIterator();
  initWalk(*iterator, reference, platform::OpenMode::Write);
  if (iterator->isDone()) return;
  OdRecord record;
  if (iterator->getRecord(record) != platform::Status::Ok) return;
  const int index = table->definition().columnIndex(attribute.column);
  if (index < 0 || index >= record.count()) return;
  assignAttributeText(record.value(index), attribute.text);
  // Written at once, so that of two attributes mapped to one column the
  // later one stands; a record that won't take it is passed over.
  platform::ignoreStatus(iterator->updateRecord(record));
}

// Whether the reference had a mapped attribute and so was loaded.
bool loadReference(OdContainer& container, const AttributeMap& map, ObjectId reference) {
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
    values.push_back({mapped->second.table, mapped->second.column, std::move(*text)});
  }
  if (tables.empty()) return false;
  for (const std::wstring& name : tables) {
    // The map holds names in lower case; records carry the table's own name.
    const std::unique_ptr<platform::OdTable> table = container.getTable(name);
    if (table != nullptr && !hasRecordOfTable(container, reference, table->name())) {
      attachDefaultRecord(container, table->name(), reference);
    }
  }
  for (const AttributeValue& value : values) loadValue(container, reference, value);
  return true;
}

}  // namespace

void commandLoadAttrs() {
  ResourceScope scope;
  OdContainer& container = getODContainer();
  const std::optional<Transfer> transfer = startTransfer(container);
  if (!transfer) return;
  int loaded = 0;
  for (const ObjectId reference : transfer->references) {
    if (loadReference(container, transfer->map, reference)) ++loaded;
  }
  printMessage(kTxtLoadedDefinitions, loaded, static_cast<int>(transfer->references.size()));
}

}  // namespace zarvel
