// Set from coordinates. LUPREC stands at 8 from the dialog to the report, so
// that the closing tests of the vertex lists work to that precision.
#include "values/SetCoordinates.h"

#include <charconv>
#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Precision.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "values/ODSelectXYZ.h"
#include "values/Rounding.h"
#include "values/ValueScope.h"
#include "values/VertexLists.h"

namespace zarvel {
namespace {

using platform::ObjectId;
using platform::Point3d;

// The coordinate written into a column of that name, if any: X, Y and Z are
// tried in that order. Empty fields match nothing.
const double* coordinateOfColumn(const SetXyzChoices& c, const std::wstring& column,
                                 const Point3d& point) {
  if (!c.setXField.empty() && column == c.setXField) return &point.x;
  if (!c.setYField.empty() && column == c.setYField) return &point.y;
  if (!c.setZField.empty() && column == c.setZField) return &point.z;
  return nullptr;
}

// The text of "%lf": six decimals, whatever the precision, so that the text
// decides what each type of field takes from it. Printed by the same exact
// route as the port's formatter, without its parsing of a format for each of
// a million values.
void sixDecimals(double value, std::wstring& text) {
  // The largest finite double has 309 digits before the point.
  char digits[330];
  const std::to_chars_result printed =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6);
  text.assign(digits, printed.ec == std::errc() ? printed.ptr : digits);
}

// What the record loop keeps from one entity to the next, so that a million
// of them are read and written without a million allocations.
struct Scratch {
  platform::OdRecord record;
  std::wstring text;
};

// Writes the point into the entity's first record of the table; false when
// it has none or no column of it was chosen.
bool writePoint(platform::OdRecordIterator& it, ObjectId entity, const SetXyzChoices& c,
                const platform::OdTableDef& definition, const Point3d& point, Scratch& scratch) {
  platform::OdRecord& record = scratch.record;
  std::wstring& text = scratch.text;
  if (!firstRecordOfTable(it, entity, c.setXYZTableName, record)) return false;
  bool written = false;
  for (int i = 0; i < record.count() && i < definition.count(); ++i) {
    const double* value = coordinateOfColumn(c, definition.column(i).name, point);
    if (value == nullptr) continue;
    sixDecimals(*value, text);
    setFieldFromText(record, i, text);
    written = true;
  }
  // The record is written as it was changed: the iterator holds it for write.
  if (written) platform::ignoreStatus(it.updateRecord(record));
  return written;
}

// The points of the entities that open, parallel to what is left of ids.
std::vector<Point3d> roundedPoints(std::vector<ObjectId>& ids, const SetXyzChoices& c) {
  eraseUnopenable(ids);
  const auto planMode = static_cast<PlanMode>(c.setXYMode);
  const auto heightMode = static_cast<HeightMode>(c.setZMode);
  std::vector<Point3d> points;
  points.reserve(ids.size());
  for (ObjectId id : ids) {
    Point3d p = coordinatePoint(id, planMode, heightMode);
    p.x = roundToDecimals(p.x, c.setXYPrecision);
    p.y = roundToDecimals(p.y, c.setXYPrecision);
    p.z = roundToDecimals(p.z, c.setZPrecision);
    points.push_back(p);
  }
  return points;
}

}  // namespace

void setFromCoordinates(std::vector<ObjectId>& ids) {
  const short drawingPrecision = getLuprec();
  LuprecGuard luprec;
  SetXyzChoices& c = ODSelectXYZ::choices();
  // The dialog opens with the drawing's precision every time.
  c.setXYPrecision = c.setZPrecision = drawingPrecision;
  ODSelectXYZ dialog(tablesInUse(ids));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (c.setXYZTableName.empty()) return;
  if (c.setXField.empty() && c.setYField.empty() && c.setZField.empty()) return;

  selectWhenEmpty(ids);
  if (ids.empty()) return;
  const std::vector<Point3d> points = roundedPoints(ids, c);
  lockDoc();
  OdContainer& container = getODContainer();
  const std::unique_ptr<platform::OdTable> table = container.getTable(c.setXYZTableName);
  const platform::OdTableDef definition = table ? table->definition() : platform::OdTableDef();
  const std::unique_ptr<platform::OdRecordIterator> it = container.newIterator();
  int count = 0;
  Scratch scratch;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (writePoint(*it, ids[i], c, definition, points[i], scratch)) ++count;
  }
  // Nothing is left to undo should the host refuse: the changes are made.
  platform::ignoreStatus(unlockDoc());
  printMessage(kMsgCompletedOutOf, count, static_cast<int>(ids.size()));
}

void commandSetXyz() {
  ResourceScope scope;
  std::vector<ObjectId> ids;
  setFromCoordinates(ids);
}

}  // namespace zarvel
