// Set from coordinates. LUPREC stands at 8 from the dialog to the report, so
// that the closing tests of the vertex lists work to that precision.
#include "values/SetCoordinates.h"

#include <algorithm>
#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Precision.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "values/ODSelectXYZ.h"
#include "values/Rounding.h"
#include "values/ValueScope.h"
#include "values/VertexLists.h"

namespace zarvel {
namespace {

using platform::ObjectId;
using platform::Point3d;

// Writes points into the first record of the table on each entity. Which
// coordinate goes into which column is found once, by the columns' names:
// X, Y and Z are tried in that order, and an empty field matches nothing.
class PointWriter {
 public:
  PointWriter(const SetXyzChoices& c, const platform::OdTableDef& definition)
      : table_(c.setXYZTableName) {
    for (const platform::OdColumnDef& column : definition.columns) {
      if (!c.setXField.empty() && column.name == c.setXField) {
        coordinates_.push_back(&Point3d::x);
      } else if (!c.setYField.empty() && column.name == c.setYField) {
        coordinates_.push_back(&Point3d::y);
      } else if (!c.setZField.empty() && column.name == c.setZField) {
        coordinates_.push_back(&Point3d::z);
      } else {
        coordinates_.push_back(nullptr);
      }
    }
  }

  // False when the entity has no record of the table or no column of it was
  // chosen.
  bool write(platform::OdRecordIterator& it, ObjectId entity, const Point3d& point) {
    if (!firstRecordOfTable(it, entity, table_, record_)) return false;
    bool written = false;
    const std::size_t count = std::min(coordinates_.size(), record_.values().size());
    for (std::size_t i = 0; i < count; ++i) {
      if (coordinates_[i] == nullptr) continue;
      // The text of "%lf": six decimals, whatever the precision, so that the
      // text decides what each type of field takes from it.
      printDecimals(point.*coordinates_[i], 6, text_);
      setFieldFromText(record_, static_cast<int>(i), text_);
      written = true;
    }
    // The record is written as it was changed: the iterator holds it for write.
    if (written) platform::ignoreStatus(it.updateRecord(record_));
    return written;
  }

 private:
  const std::wstring& table_;
  std::vector<double Point3d::*> coordinates_;
  // Kept from one entity to the next, so that a million of them are read and
  // written without a million allocations.
  platform::OdRecord record_;
  std::wstring text_;
};

// The points of the entities that open, parallel to what is left of ids,
// which keeps its order and loses the others. Each entity is tested and
// measured in one visit, while the host has it at hand.
std::vector<Point3d> roundedPoints(std::vector<ObjectId>& ids, const SetXyzChoices& c) {
  const auto planMode = static_cast<PlanMode>(c.setXYMode);
  const auto heightMode = static_cast<HeightMode>(c.setZMode);
  const platform::Drawing& drawing = port().drawing();
  std::vector<Point3d> points;
  points.reserve(ids.size());
  std::size_t kept = 0;
  for (const ObjectId id : ids) {
    if (!drawing.canOpen(id)) continue;
    ids[kept++] = id;
    Point3d p = coordinatePoint(id, planMode, heightMode);
    p.x = roundToDecimals(p.x, c.setXYPrecision);
    p.y = roundToDecimals(p.y, c.setXYPrecision);
    p.z = roundToDecimals(p.z, c.setZPrecision);
    points.push_back(p);
  }
  ids.resize(kept);
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
  PointWriter writer(c, definition);
  int count = 0;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (writer.write(*it, ids[i], points[i])) ++count;
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
