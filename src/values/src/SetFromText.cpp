// Setting a field from the texts in and near the entities: the texts are
// sorted out of the selection, every other entity is a target, and each
// target takes the one text that fits it or gets markers at the rivals.
#include <limits>
#include <memory>
#include <optional>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Precision.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "values/ErrorMarkers.h"
#include "values/SetFromText.h"
#include "values/TextMatching.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"
#include "values/VertexLists.h"

namespace zarvel {
namespace {

using platform::EntityClass;
using platform::Point3d;

// The markers' layer colour: yellow, which stands out on both a dark and a
// light background.
constexpr platform::RgbColor kErrorLayerColor{255, 255, 0};
constexpr double kMarkerBlockRadius = 1.0;

// A text stands at its insertion point when it is left-aligned, aligned or
// fitted on its base line, and otherwise at its alignment point.
Point3d textPoint(const platform::EntityGeometry& geometry, ObjectId id) {
  const Point3d position = geometry.position(id).value_or(Point3d{});
  const std::optional<platform::TextAlignment> alignment = geometry.textAlignment(id);
  if (!alignment) return position;
  const int h = alignment->horizontalMode;
  const bool atPosition = alignment->verticalMode == 0 && (h == 0 || h == 3 || h == 5);
  return atPosition ? position : alignment->alignmentPoint;
}

// An mtext's plain lines, joined by the paragraph code that the field then holds.
std::wstring mtextString(const std::wstring& contents) {
  std::wstring text;
  for (wchar_t c : contents) {
    if (c == L'\r') continue;
    if (c == L'\n') {
      text += L"\\P";
    } else {
      text += c;
    }
  }
  return text;
}

// Moves the texts of `ids` into `texts`, dropping what won't open, so that the
// targets remain in their order.
std::vector<TextItem> takeTexts(std::vector<ObjectId>& ids) {
  platform::Drawing& drawing = port().drawing();
  const platform::EntityGeometry& geometry = port().geometry();
  std::vector<TextItem> texts;
  std::size_t kept = 0;
  for (ObjectId id : ids) {
    if (!drawing.canOpen(id)) continue;
    const EntityClass kind = geometry.entityClass(id);
    if (kind == EntityClass::Text) {
      texts.push_back({textPoint(geometry, id), geometry.text(id).value_or(L"")});
    } else if (kind == EntityClass::MText) {
      texts.push_back({geometry.position(id).value_or(Point3d{}),
                       mtextString(geometry.plainText(id).value_or(L""))});
    } else {
      ids[kept++] = id;
    }
  }
  ids.resize(kept);
  for (TextItem& t : texts) t.point.z = 0.0;
  return texts;
}

TargetShape shapeOf(const platform::EntityGeometry& geometry, ObjectId id, EntityClass kind) {
  switch (kind) {
    case EntityClass::LwPolyline:
    case EntityClass::Polyline3d:
    case EntityClass::Line:
    case EntityClass::Mline:
      return vertexList(id);
    case EntityClass::Spline: {
      TargetShape points = geometry.vertices(id);
      const std::vector<Point3d> fit = geometry.fitPoints(id);
      points.insert(points.end(), fit.begin(), fit.end());
      return points;
    }
    case EntityClass::Point:
    case EntityClass::BlockReference: {
      const std::optional<Point3d> position = geometry.position(id);
      return position ? TargetShape{*position} : TargetShape{};
    }
    case EntityClass::Arc:
    case EntityClass::Circle:
    case EntityClass::Ellipse:
    case EntityClass::Polyline2d:
    case EntityClass::Text:
    case EntityClass::MText:
    case EntityClass::Attribute:
    case EntityClass::AttributeDefinition:
    case EntityClass::Solid3d:
    case EntityClass::Region:
    case EntityClass::Hatch:
    case EntityClass::Unknown:
      break;
  }
  // Any other entity stands at the middle of its box.
  const std::optional<platform::Extents> box = geometry.extents(id);
  if (!box || box->isEmpty()) return {};
  return {Point3d{(box->min.x + box->max.x) / 2.0, (box->min.y + box->max.y) / 2.0,
                  (box->min.z + box->max.z) / 2.0}};
}

// The shapes of the targets, in the plane; a target that won't open leaves.
std::vector<TargetShape> takeShapes(std::vector<ObjectId>& ids) {
  platform::Drawing& drawing = port().drawing();
  const platform::EntityGeometry& geometry = port().geometry();
  std::vector<TargetShape> shapes;
  std::size_t kept = 0;
  for (ObjectId id : ids) {
    if (!drawing.canOpen(id)) continue;
    TargetShape shape = shapeOf(geometry, id, geometry.entityClass(id));
    for (Point3d& p : shape) p.z = 0.0;
    shapes.push_back(std::move(shape));
    ids[kept++] = id;
  }
  ids.resize(kept);
  return shapes;
}

struct Counters {
  int completed = 0;
  int outOfRange = 0;
  int multiple = 0;
};

// What the targets share through a run: the texts, the choices made in the
// dialog, and where the markers go.
class Filler {
 public:
  Filler(const std::vector<TextItem>& texts, double tolerance, ObjectId markerBlock)
      : texts_(texts), matcher_(texts), tolerance_(tolerance), markerBlock_(markerBlock) {}

  void fill(ObjectId target, const TargetShape& shape, platform::OdRecordIterator& it);
  const Counters& counters() const { return counters_; }

 private:
  // The text the target takes, or nothing when it takes none.
  std::optional<int> choose(const TargetShape& shape);
  int fieldIndex(const std::wstring& table);
  void markAll(const std::vector<int>& rivals);

  const std::vector<TextItem>& texts_;
  TextMatcher matcher_;
  double tolerance_;
  ObjectId markerBlock_;
  Counters counters_;
  // The field's column in the one table that a run fills; looked up once.
  std::optional<int> column_;
};

void Filler::fill(ObjectId target, const TargetShape& shape, platform::OdRecordIterator& it) {
  OdRecord record;
  if (!firstRecordOfTable(it, target, ODSelect::tableName(), record)) return;
  const int column = fieldIndex(record.tableName());
  if (column < 0) return;
  const std::optional<int> chosen = choose(shape);
  if (!chosen) return;
  setFieldFromText(record, column, texts_[static_cast<std::size_t>(*chosen)].text);
  // The iterator stands on the record it read, held for write on an entity that
  // opened: the update has nothing left to refuse.
  platform::ignoreStatus(it.updateRecord(record));
}

std::optional<int> Filler::choose(const TargetShape& shape) {
  if (isClosedShape(shape, luprecTolerance())) {
    const Point3d outside = outsidePointOf(shape);
    const std::vector<int> inside = matcher_.textsInside(shape, outside, 2);
    if (inside.size() == 1) {
      ++counters_.completed;
      return inside.front();
    }
    markAll(matcher_.textsInside(shape, outside, std::numeric_limits<std::size_t>::max()));
    ++counters_.multiple;
    return std::nullopt;
  }
  const std::vector<int> near = matcher_.textsWithin(shape, tolerance_);
  if (near.size() > 1) {
    markAll(near);
    ++counters_.multiple;
    return std::nullopt;
  }
  const NearestText nearest = matcher_.nearestWithin(shape, tolerance_);
  if (nearest.index < 0 || nearest.distance > tolerance_) {
    ++counters_.outOfRange;
    return std::nullopt;
  }
  ++counters_.completed;
  return nearest.index;
}

int Filler::fieldIndex(const std::wstring& table) {
  if (!column_) {
    std::unique_ptr<platform::OdTable> t = getODContainer().getTable(table);
    const platform::OdTableDef definition = t ? t->definition() : platform::OdTableDef();
    column_ = exactColumnIndex(definition, ODSelect::fieldName());
  }
  return *column_;
}

void Filler::markAll(const std::vector<int>& rivals) {
  for (int i : rivals) {
    placeMarker(markerBlock_, kErrorMarkerName, texts_[static_cast<std::size_t>(i)].point,
                tolerance_);
  }
}

void report(const Counters& c, int targets) {
  if (c.outOfRange == 0 && c.multiple == 0) {
    printMessage(kMsgCompletedOutOf, c.completed, targets);
  } else if (c.outOfRange == 0) {
    printMessage(kMsgCompletedMultiple, c.completed, targets, c.multiple);
  } else if (c.multiple == 0) {
    printMessage(kMsgCompletedOutOfRange, c.completed, targets, c.outOfRange);
  } else {
    printMessage(kMsgCompletedOutOfRangeMultiple, c.completed, targets, c.outOfRange, c.multiple);
  }
}

}  // namespace

void setFromText(std::vector<ObjectId>& ids) {
  ResourceScope scope;
  ODSelect dialog(tablesInUse(ids));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (ODSelect::tableName().empty() || ODSelect::fieldName().empty()) return;
  selectWhenEmpty(ids);
  if (ids.empty()) return;

  ensureLayer(kErrorMarkerName, kErrorLayerColor);
  const ObjectId markerBlock = ensureBlock(kErrorMarkerName, kMarkerBlockRadius);
  lockDoc();
  const std::vector<TextItem> texts = takeTexts(ids);
  const std::vector<TargetShape> shapes = takeShapes(ids);
  Filler filler(texts, dialog.tolerance, markerBlock);
  std::unique_ptr<platform::OdRecordIterator> it = getODContainer().newIterator();
  for (std::size_t i = 0; i < ids.size(); ++i) filler.fill(ids[i], shapes[i], *it);
  // Nothing is left to undo if the unlock fails: every change is made.
  platform::ignoreStatus(unlockDoc());
  report(filler.counters(), static_cast<int>(ids.size()));
}

void commandSetText() {
  std::vector<ObjectId> ids;
  setFromText(ids);
}

}  // namespace zarvel
