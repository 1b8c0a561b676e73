// Set from geometric properties. Every entity is measured before any record
// changes; a measure of 0 is never written, so a field keeps what it held.
#include "values/SetProperties.h"

#include <cstdint>
#include <limits>
#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Precision.h"
#include "oddata/Selection.h"
#include "platform/Text.h"
#include "values/Measures.h"
#include "values/OptionsSetProp.h"
#include "values/Rounding.h"
#include "values/ValueScope.h"

namespace zarvel {
namespace {

using platform::ObjectId;
using platform::OdType;
using platform::OdValue;

enum class Measure { Length, Area, Volume, None };

struct Counts {
  int length = 0;
  int area = 0;
  int volume = 0;
};

// Whole numbers are cut towards zero; beyond an integer field's range they
// stop at its ends.
std::int32_t cutToInteger(double value) {
  constexpr double kMin = std::numeric_limits<std::int32_t>::min();
  constexpr double kMax = std::numeric_limits<std::int32_t>::max();
  if (!(value >= kMin)) return std::numeric_limits<std::int32_t>::min();
  if (value >= kMax) return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(value);
}

// What a column takes: the first measure that is above 0 and chose it.
Measure measureOfColumn(const OptionsSetProp& dialog, const std::wstring& column,
                        const Measures& m) {
  if (m.length > 0.0 && column == dialog.lengthField) return Measure::Length;
  if (m.area > 0.0 && column == dialog.areaField) return Measure::Area;
  if (m.volume > 0.0 && column == dialog.volumeField) return Measure::Volume;
  return Measure::None;
}

// The value as the column's type takes it; false for types that take none.
// A length in text keeps the chosen decimals; an area or volume shows all
// that tell it apart.
bool valueOfType(OdType type, Measure measure, double value, const std::wstring& lengthFormat,
                 OdValue& out) {
  switch (type) {
    case OdType::Character:
      out = measure == Measure::Length ? platform::format(lengthFormat, value)
                                       : platform::format(L"%.16g", value);
      return true;
    case OdType::Integer:
      out = cutToInteger(value);
      return true;
    case OdType::Real:
      out = value;
      return true;
    case OdType::Point:
    case OdType::Unknown:
      break;
  }
  return false;
}

class RecordWriter {
 public:
  RecordWriter(const OptionsSetProp& dialog, int precision)
      : dialog_(dialog),
        lengthFormat_(platform::format(L"%%.%ilf", precision)),
        container_(getODContainer()),
        it_(container_.newIterator()) {
    const std::unique_ptr<platform::OdTable> table = container_.getTable(dialog.tableName);
    if (table) definition_ = table->definition();
  }

  void write(ObjectId entity, const Measures& m) {
    platform::OdRecord record;
    if (!firstRecordOfTable(*it_, entity, dialog_.tableName, record)) return;
    bool written = false;
    for (int i = 0; i < record.count() && i < definition_.count(); ++i) {
      const platform::OdColumnDef& column = definition_.column(i);
      const Measure measure = measureOfColumn(dialog_, column.name, m);
      if (measure == Measure::None) continue;
      const double value = measure == Measure::Length ? m.length
                           : measure == Measure::Area ? m.area
                                                      : m.volume;
      if (!valueOfType(column.type, measure, value, lengthFormat_, record.value(i))) continue;
      ++(measure == Measure::Length ? counts_.length
         : measure == Measure::Area ? counts_.area
                                    : counts_.volume);
      written = true;
    }
    // The record is written as it was changed: the iterator holds it for write.
    if (written) platform::ignoreStatus(it_->updateRecord(record));
  }

  const Counts& counts() const { return counts_; }

 private:
  const OptionsSetProp& dialog_;
  std::wstring lengthFormat_;
  OdContainer& container_;
  std::unique_ptr<platform::OdRecordIterator> it_;
  platform::OdTableDef definition_;
  Counts counts_;
};

bool isChoiceComplete(const OptionsSetProp& d) {
  if (d.tableName.empty()) return false;
  if (d.lengthField.empty() && d.areaField.empty() && d.volumeField.empty()) return false;
  // A field chosen for two measures ends the run as if nothing were chosen.
  if (!d.lengthField.empty() && (d.lengthField == d.areaField || d.lengthField == d.volumeField)) {
    return false;
  }
  return d.areaField.empty() || d.areaField != d.volumeField;
}

std::vector<Measures> roundedMeasures(const std::vector<ObjectId>& ids, int precision) {
  std::vector<Measures> measures;
  measures.reserve(ids.size());
  for (ObjectId id : ids) {
    Measures m = measuresOf(id);
    m.length = roundToDecimals(m.length, precision);
    m.area = roundToDecimals(m.area, precision);
    m.volume = roundToDecimals(m.volume, precision);
    measures.push_back(m);
  }
  return measures;
}

}  // namespace

void setFromProperties(std::vector<ObjectId>& ids) {
  const short drawingPrecision = getLuprec();
  LuprecGuard luprec;
  OptionsSetProp dialog(tablesInUse(ids));
  int& precision = OptionsSetProp::setPropPrecision();
  precision = drawingPrecision;
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (!isChoiceComplete(dialog)) return;
  selectWhenEmpty(ids);
  if (ids.empty()) return;

  lockDoc();
  eraseUnopenable(ids);
  const std::vector<Measures> measures = roundedMeasures(ids, precision);
  RecordWriter writer(dialog, precision);
  for (std::size_t i = 0; i < ids.size(); ++i) writer.write(ids[i], measures[i]);
  // Nothing is left to undo should the host refuse: the changes are made.
  platform::ignoreStatus(unlockDoc());
  const Counts& n = writer.counts();
  printMessage(kMsgCompletedLengthAreaVolume, n.length, n.area, n.volume,
               static_cast<int>(ids.size()));
}

void commandSetProp() {
  ResourceScope scope;
  std::vector<ObjectId> ids;
  setFromProperties(ids);
}

}  // namespace zarvel
