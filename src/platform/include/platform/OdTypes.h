// Definitions and records of Object Data tables, as value types.
#pragma once

#include <string>
#include <vector>

#include "platform/OdValue.h"

namespace platform {

struct OdColumnDef {
  std::wstring name;
  OdType type = OdType::Character;
  std::wstring description;
  OdValue defaultValue{std::wstring()};

  friend bool operator==(const OdColumnDef& a, const OdColumnDef& b) {
    return a.name == b.name && a.type == b.type && a.description == b.description &&
           a.defaultValue == b.defaultValue;
  }
  friend bool operator!=(const OdColumnDef& a, const OdColumnDef& b) { return !(a == b); }
};

struct OdTableDef {
  std::wstring description;
  std::vector<OdColumnDef> columns;

  int count() const { return static_cast<int>(columns.size()); }
  const OdColumnDef& column(int index) const { return columns.at(index); }
  // Index of a column by name: an exact match first, else the first match
  // ignoring case; negative if there is none.
  int columnIndex(const std::wstring& name) const;

  friend bool operator==(const OdTableDef& a, const OdTableDef& b) {
    return a.description == b.description && a.columns == b.columns;
  }
  friend bool operator!=(const OdTableDef& a, const OdTableDef& b) { return !(a == b); }
};

// One record: the name of its table and its values in column order.
class OdRecord {
 public:
  OdRecord() = default;
  OdRecord(std::wstring tableName, std::vector<OdValue> values)
      : tableName_(std::move(tableName)), values_(std::move(values)) {}

  const std::wstring& tableName() const { return tableName_; }
  void setTableName(std::wstring name) { tableName_ = std::move(name); }
  int count() const { return static_cast<int>(values_.size()); }
  OdValue& value(int index) { return values_.at(index); }
  const OdValue& value(int index) const { return values_.at(index); }
  std::vector<OdValue>& values() { return values_; }
  const std::vector<OdValue>& values() const { return values_; }

  friend bool operator==(const OdRecord& a, const OdRecord& b) {
    return a.tableName_ == b.tableName_ && a.values_ == b.values_;
  }

 private:
  std::wstring tableName_;
  std::vector<OdValue> values_;
};

}  // namespace platform
