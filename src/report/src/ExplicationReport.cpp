// The explication report's text: records copied once, grouped, and every
// statistic made in the one walk that writes the rows.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <map>
#include <memory>

#include "DistinctTexts.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "report/Explication.h"
#include "report/UnicodeFileText.h"

namespace zarvel {
namespace {

using platform::OdType;

// The largest double marks a statistic that has no value yet; the smallest
// (its negative) starts a maximum.
constexpr double kMark = std::numeric_limits<double>::max();

// Wide enough for "%.12lf" of the largest double.
constexpr std::size_t kNumberChars = 400;

// "%.12lf" with its trailing zeros cut, one decimal kept: the one form of
// every real in the report, whatever the drawing's precision.
std::string_view realText(double v, char* buffer) {
  char* out = buffer;
  if (std::signbit(v)) *out++ = '-';
  const double magnitude = std::fabs(v);
  if (!std::isfinite(magnitude)) {
    std::memcpy(out, std::isnan(magnitude) ? "nan" : "inf", 3);
    return {buffer, static_cast<std::size_t>(out + 3 - buffer)};
  }
  out = std::to_chars(out, buffer + kNumberChars, magnitude, std::chars_format::fixed, 12).ptr;
  while (out[-1] == '0' && out[-2] != '.') --out;
  return {buffer, static_cast<std::size_t>(out - buffer)};
}

std::string_view intText(long long v, char* buffer) {
  return {buffer,
          static_cast<std::size_t>(std::to_chars(buffer, buffer + kNumberChars, v).ptr - buffer)};
}

// Everything the report keeps of one of its columns. Kind 0 sums numbers,
// kind 1 counts values.
struct Column {
  std::wstring name;
  int kind = 0;
  double groupSum = kMark;
  double total = kMark;  // the sum of the groups' sums
  double min = kMark;
  double max = -kMark;
  int count = 0;
  bool counted = false;
  std::unique_ptr<DistinctTexts> distinct;
};

// Where a table's records keep each report column's value, -1 for nowhere.
struct TableLayout {
  std::size_t order = 0;  // among the tables, by name
  std::wstring quotedName;
  std::vector<int> cellIndex;
  int fieldIndex = -1;
};

// A copied record: its values, a run of the report's one array of values,
// and its table's layout in place of its table's name. One array for all keeps
// a million records from being a million allocations.
struct RecordCopy {
  std::size_t firstValue;
  std::size_t valueCount;
  const TableLayout* layout;
};

// An entity's records: a run of the report's records.
struct EntityRecords {
  ObjectId id;
  std::size_t firstRecord;
  std::size_t recordCount;
};

// An entity's records in a group: a run of the group's record indices.
struct GroupEntry {
  std::size_t entity;
  std::size_t first;
  std::size_t count;
};

// An entity's records all join their groups while it is visited, one entity
// after another; so an entity already in a group is its last entry.
struct Group {
  std::vector<GroupEntry> entries;
  std::vector<std::size_t> records;  // indices into the report's records, ascending

  void add(std::size_t entity, std::size_t record) {
    if (entries.empty() || entries.back().entity != entity) {
      entries.push_back(GroupEntry{entity, records.size(), 0});
    }
    records.push_back(record);
    ++entries.back().count;
  }
};

int kindOf(OdType type) {
  return type == OdType::Integer || type == OdType::Real ? 0 : 1;
}

class Report {
 public:
  explicit Report(const ExplicationOptions& options) : options_(options) {}

  UnicodeFileText build(const std::vector<ObjectId>& entities) {
    buildColumns();
    collectRecords(entities);
    formGroups();
    reserveText();
    writeHeader();
    for (const auto& [key, group] : groups_) writeGroup(key, group);
    writeTotals();
    return std::move(text_);
  }

 private:
  void collectRecords(const std::vector<ObjectId>& entities);
  void buildColumns();
  void formGroups();
  void groupByField(const std::vector<std::vector<std::size_t>>& tableEntities);
  void reserveText();
  void writeHeader();
  void writeGroup(const std::wstring& key, const Group& group);
  void writeRecord(const std::wstring& handle, const std::wstring& quotedKey,
                   const RecordCopy& record);
  void writeCell(const OdValue& value);
  void writeSum(double value, int kind);
  void writeQuoted(const std::wstring& text);
  void writeTotals();
  void startTotalsLine(const wchar_t* label);

  void field(std::wstring_view text) {
    separate();
    text_.append(text);
  }
  void separate() {
    if (!lineStart_) text_.append(options_.separator);
    lineStart_ = false;
  }
  void endLine() {
    text_.newLine();
    lineStart_ = true;
  }
  // A number that also stays in the line's scratch text, which a count
  // without a value repeats.
  void scratchField(std::string_view number) {
    scratch_.assign(number);
    separate();
    text_.appendAscii(scratch_);
  }
  void numberField(std::string_view number) {
    separate();
    text_.appendAscii(number);
  }

  const ExplicationOptions& options_;
  std::vector<EntityRecords> entities_;  // ascending by id
  std::vector<RecordCopy> records_;
  std::vector<OdValue> values_;
  std::vector<Column> columns_;  // ascending by name
  std::map<std::wstring, TableLayout> layouts_;
  std::map<std::wstring, Group> groups_;
  UnicodeFileText text_;
  bool lineStart_ = true;
  std::string scratch_;
  char number_[kNumberChars];
};

void Report::collectRecords(const std::vector<ObjectId>& entities) {
  OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdRecordIterator> iterator = container.newIterator();
  OdRecord record;  // one for every copy, which keeps only the values
  for (const ObjectId id : entities) {
    const std::size_t first = records_.size();
    initWalk(*iterator, id, platform::OpenMode::Read);
    for (; !iterator->isDone(); iterator->next()) {
      const auto layout = layouts_.find(iterator->recordTableName());
      if (layout == layouts_.end() || iterator->getRecord(record) != platform::Status::Ok) {
        continue;
      }
      records_.push_back(RecordCopy{values_.size(), record.values().size(), &layout->second});
      for (OdValue& value : record.values()) values_.push_back(std::move(value));
    }
    if (records_.size() > first) entities_.push_back({id, first, records_.size() - first});
  }
  // Keyed by id: the first of an entity named twice stands.
  const auto byId = [](const EntityRecords& a, const EntityRecords& b) { return a.id < b.id; };
  if (!std::is_sorted(entities_.begin(), entities_.end(), byId)) {
    std::stable_sort(entities_.begin(), entities_.end(), byId);
  }
  entities_.erase(
      std::unique(entities_.begin(), entities_.end(),
                  [](const EntityRecords& a, const EntityRecords& b) { return a.id == b.id; }),
      entities_.end());
}

void Report::buildColumns() {
  OdContainer& container = getODContainer();
  std::map<std::wstring, platform::OdTableDef> definitions;
  std::map<std::wstring, int> kinds;
  for (const std::wstring& table : options_.tables) {
    std::unique_ptr<platform::OdTable> found = container.getTable(table);
    if (!found) continue;
    const platform::OdTableDef& definition = definitions[table] = found->definition();
    for (const platform::OdColumnDef& column : definition.columns) {
      if (options_.typeField && column.name == options_.field) continue;
      int& kind = kinds.try_emplace(column.name, 0).first->second;
      kind = std::max(kind, kindOf(column.type));
    }
  }
  for (const auto& [name, kind] : kinds) {
    Column column;
    column.name = name;
    column.kind = kind;
    column.distinct = std::make_unique<DistinctTexts>(text_);
    columns_.push_back(std::move(column));
  }
  for (const auto& [table, definition] : definitions) {
    TableLayout& layout = layouts_[table];
    layout.order = layouts_.size() - 1;
    layout.quotedName = csvQuote(table);
    for (const Column& column : columns_) {
      const auto at =
          std::find_if(definition.columns.begin(), definition.columns.end(),
                       [&column](const platform::OdColumnDef& c) { return c.name == column.name; });
      layout.cellIndex.push_back(
          at == definition.columns.end() ? -1 : static_cast<int>(at - definition.columns.begin()));
    }
    if (options_.typeField) layout.fieldIndex = definition.columnIndex(options_.field);
  }
}

void Report::formGroups() {
  // Each table's entities, the tables in name order.
  std::vector<std::vector<std::size_t>> tableEntities(layouts_.size());
  for (std::size_t e = 0; e < entities_.size(); ++e) {
    const EntityRecords& entity = entities_[e];
    for (std::size_t r = entity.firstRecord; r < entity.firstRecord + entity.recordCount; ++r) {
      tableEntities[records_[r].layout->order].push_back(e);
    }
  }
  if (options_.typeField) {
    groupByField(tableEntities);
    return;
  }
  for (const auto& [table, layout] : layouts_) {
    const std::vector<std::size_t>& list = tableEntities[layout.order];
    if (list.empty()) continue;  // a table without records has no group
    Group& group = groups_[table];
    for (const std::size_t e : list) {
      // An entity stands once per record in its table's list, one after the
      // other: its first place has taken all its records of the table.
      if (!group.entries.empty() && group.entries.back().entity == e) continue;
      const EntityRecords& entity = entities_[e];
      for (std::size_t r = entity.firstRecord; r < entity.firstRecord + entity.recordCount; ++r) {
        if (records_[r].layout == &layout) group.add(e, r);
      }
    }
  }
}

// Every record of an entity goes to the group of its field's value, at the
// entity's first place in the tables' lists; its later places add nothing.
void Report::groupByField(const std::vector<std::vector<std::size_t>>& tableEntities) {
  std::vector<bool> placed(entities_.size(), false);
  for (const std::vector<std::size_t>& list : tableEntities) {
    for (const std::size_t e : list) {
      if (placed[e]) continue;
      placed[e] = true;
      const EntityRecords& entity = entities_[e];
      for (std::size_t r = entity.firstRecord; r < entity.firstRecord + entity.recordCount; ++r) {
        const RecordCopy& record = records_[r];
        const int index = record.layout->fieldIndex;
        const std::size_t column = static_cast<std::size_t>(index);
        const bool hasValue = index >= 0 && column < record.valueCount;
        Group& group =
            groups_[hasValue ? valueToText(values_[record.firstValue + column]) : std::wstring()];
        group.add(e, r);
      }
    }
  }
}

// Some eight characters a field: a hint, so that the text is not copied over
// and over as it grows.
void Report::reserveText() {
  constexpr std::size_t kBytesPerField = 16;
  text_.reserve(records_.size() * (columns_.size() + 4) * kBytesPerField);
}

void Report::writeHeader() {
  field(L"ID");
  field(L"TableName");
  if (options_.typeField) field(options_.field);
  field(L"Count");
  for (const Column& column : columns_) field(column.name);
  endLine();
}

void Report::writeGroup(const std::wstring& key, const Group& group) {
  for (Column& column : columns_) column.groupSum = kMark;
  const std::wstring quotedKey = csvQuote(key);
  for (const GroupEntry& entry : group.entries) {
    const EntityRecords& entity = entities_[entry.entity];
    const std::wstring handle = handleTextOfId(entity.id);
    for (std::size_t i = entry.first; i < entry.first + entry.count; ++i) {
      writeRecord(handle, quotedKey, records_[group.records[i]]);
    }
  }
  field(L"Sum");
  field(options_.typeField ? std::wstring() : quotedKey);
  if (options_.typeField) field(quotedKey);
  scratchField(intText(static_cast<long long>(group.entries.size()), number_));
  for (const Column& column : columns_) writeSum(column.groupSum, column.kind);
  endLine();
  endLine();
  for (Column& column : columns_) {
    if (column.groupSum == kMark) continue;
    if (column.total == kMark) column.total = 0.0;
    column.total += column.groupSum;
  }
}

void Report::writeRecord(const std::wstring& handle, const std::wstring& quotedKey,
                         const RecordCopy& record) {
  const TableLayout& layout = *record.layout;
  field(handle);
  field(layout.quotedName);
  if (options_.typeField) field(quotedKey);
  field(L"");
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    separate();
    const int index = layout.cellIndex[c];
    if (index < 0 || static_cast<std::size_t>(index) >= record.valueCount) continue;
    const OdValue& value = values_[record.firstValue + static_cast<std::size_t>(index)];
    Column& column = columns_[c];
    const double number = fieldNumber(column.kind, value);
    if (column.groupSum == kMark) column.groupSum = 0.0;
    column.groupSum += number;
    ++column.count;
    column.counted = true;
    column.min = std::min(column.min, number);
    column.max = std::max(column.max, number);
    const std::size_t start = text_.size();
    writeCell(value);
    column.distinct->insert(start, text_.size() - start);
  }
  endLine();
}

void Report::writeCell(const OdValue& value) {
  switch (value.type()) {
    case OdType::Integer:
      text_.appendAscii(intText(value.asInt(), number_));
      break;
    case OdType::Real:
      text_.appendAscii(realText(value.asReal(), number_));
      break;
    case OdType::Character:
      writeQuoted(value.asText());
      break;
    case OdType::Point:
      // The coordinates are printed one over the other: the cell keeps Z.
      text_.appendAscii(realText(value.asPoint().z, number_));
      break;
    case OdType::Unknown:
      break;
  }
}

void Report::writeQuoted(const std::wstring& text) {
  // Most texts hold no quote to double, and need no quoted copy.
  if (text.find(L'"') != std::wstring::npos) {
    text_.append(csvQuote(text));
    return;
  }
  text_.appendAscii("\"");
  text_.append(text);
  text_.appendAscii("\"");
}

void Report::writeSum(double value, int kind) {
  if (value == kMark) {
    separate();
  } else if (kind == 0) {
    scratchField(realText(value, number_));
  } else {
    scratchField(intText(static_cast<int>(value), number_));
  }
}

void Report::startTotalsLine(const wchar_t* label) {
  field(label);
  field(L"");
  if (options_.typeField) field(L"");
  field(L"");
}

void Report::writeTotals() {
  startTotalsLine(L"SumCount");
  for (const Column& column : columns_) {
    // A column without values repeats what the scratch text last held.
    if (column.counted) scratch_.assign(intText(column.count, number_));
    numberField(scratch_);
  }
  endLine();
  startTotalsLine(L"SumSum");
  for (const Column& column : columns_) writeSum(column.total, column.kind);
  endLine();
  startTotalsLine(L"Min");
  for (const Column& column : columns_) {
    const bool shown = column.min != kMark && column.kind == 0;
    numberField(shown ? realText(column.min, number_) : std::string_view());
  }
  endLine();
  startTotalsLine(L"Max");
  for (const Column& column : columns_) {
    const bool shown = column.max != -kMark && column.kind == 0;
    numberField(shown ? realText(column.max, number_) : std::string_view());
  }
  endLine();
  startTotalsLine(L"Average");
  for (const Column& column : columns_) {
    const bool shown = column.counted && column.kind == 0 && column.total != kMark;
    numberField(shown ? realText(column.total / column.count, number_) : std::string_view());
  }
  endLine();
  startTotalsLine(L"Unique");
  for (const Column& column : columns_) {
    numberField(intText(static_cast<long long>(column.distinct->size()), number_));
  }
}

}  // namespace

UnicodeFileText explicationReport(const std::vector<ObjectId>& entities,
                                  const ExplicationOptions& options) {
  return Report(options).build(entities);
}

}  // namespace zarvel
