// Lightweight polylines, old-style 2D and 3D polylines with their vertices, and
// multilines.
#include <algorithm>

#include "EntityKinds.h"
#include "GroupCodes.h"

namespace host::dxf::entity {
namespace {

bool isNormal(int code) {
  return isCoordinate(code, 210);
}

constexpr std::string_view kLwPolylineSubclasses[] = {"AcDbPolyline"};
constexpr std::string_view kPolyline2dSubclasses[] = {"AcDb2dPolyline"};
constexpr std::string_view kPolyline3dSubclasses[] = {"AcDb3dPolyline"};
constexpr std::string_view kVertex2dSubclasses[] = {"AcDbVertex", "AcDb2dVertex"};
constexpr std::string_view kVertex3dSubclasses[] = {"AcDbVertex", "AcDb3dPolylineVertex"};
constexpr std::string_view kMlineSubclasses[] = {"AcDbMline"};

bool lwPolylineOwns(int code, int) {
  return isAnyOf(code, {90, 70, 43, 38, 10, 20, 40, 41, 42}) || isNormal(code);
}
bool polyline2dOwns(int code, int) {
  return code == 66 || code == 70 || isCoordinate(code, 10) || isNormal(code);
}
bool polyline3dOwns(int code, int) {
  return code == 66 || code == 70 || isCoordinate(code, 10);
}
bool vertex2dOwns(int code, int slot) {
  return slot != 1 && (isCoordinate(code, 10) || isAnyOf(code, {40, 41, 42, 70}));
}
bool vertex3dOwns(int code, int slot) {
  return slot != 1 && (isCoordinate(code, 10) || code == 70);
}
bool mlineOwns(int code, int) {
  return isAnyOf(code, {2, 340, 40, 70, 71, 72, 73, 74, 41, 75, 42}) || isCoordinate(code, 10) ||
         isCoordinate(code, 11) || isCoordinate(code, 12) || isCoordinate(code, 13) ||
         isNormal(code);
}

const KindInfo kVertex2dKind{kVertex2dSubclasses, 2, vertex2dOwns};
const KindInfo kVertex3dKind{kVertex3dSubclasses, 2, vertex3dOwns};

// The value of the original's tag, when it has a readable one.
double originalReal(const EntityWriter& w, int code, double otherwise) {
  const Tag* t = w.originalTag(code);
  const auto v = t ? parseDouble(t->value) : std::nullopt;
  return v ? *v : otherwise;
}

PolylineVertex readVertex(const Tag* begin, const Tag* end, bool threeD, ReadContext& context) {
  PolylineVertex v;
  CommonRead common;
  auto tags = tagsOf([&](const Tag& t, int slot) {
    if (slot == 1) return;
    switch (t.code) {
      case 70:
        v.flags = int16Of(t);
        return;
      case 40:
        if (!threeD) v.startWidth = realOf(t);
        return;
      case 41:
        if (!threeD) v.endWidth = realOf(t);
        return;
      case 42:
        if (!threeD) v.bulge = realOf(t);
        return;
      default:
        readCoordinate(t, 10, v.position);
    }
  });
  readTags(begin, end, threeD ? kVertex3dKind : kVertex2dKind, nullptr, context, common, &tags);
  v.handle = common.handle;
  return v;
}

// Vertices and the SEQEND after the polyline's own tags.
template <typename Polyline>
void readFollowers(const Tag* p, const Tag* end, bool threeD, ReadContext& context,
                   Polyline& polyline) {
  std::size_t count = 0;
  for (const Tag* q = p; q < end; ++q) count += q->code == 0 ? 1 : 0;
  polyline.vertices.reserve(count);
  while (p < end) {
    const Tag* next = entityEnd(p, end);
    if (p->value == "VERTEX") {
      polyline.vertices.push_back(readVertex(p, next, threeD, context));
    } else if (p->value == "SEQEND") {
      polyline.seqendHandle = handleOfEntity(p, next);
    }
    p = next;
  }
}

}  // namespace

const KindInfo kLwPolylineKind{kLwPolylineSubclasses, 1, lwPolylineOwns};
const KindInfo kPolyline2dKind{kPolyline2dSubclasses, 1, polyline2dOwns};
const KindInfo kPolyline3dKind{kPolyline3dSubclasses, 1, polyline3dOwns};
const KindInfo kMlineKind{kMlineSubclasses, 1, mlineOwns};

// ---- LWPOLYLINE --------------------------------------------------------------

std::unique_ptr<Entity> readLwPolyline(const Tag* begin, const Tag* end, ReadContext& context,
                                       CommonRead& common) {
  auto e = std::make_unique<LwPolylineEntity>();
  auto& vertices = e->vertices;
  auto& widths = e->widths;
  // Widths are per vertex when any vertex has one.
  const auto width = [&]() -> SegmentWidth& {
    if (widths.size() < vertices.size()) widths.resize(vertices.size());
    return widths[vertices.size() - 1];
  };
  auto tags = tagsOf([&](const Tag& t, int) {
    switch (t.code) {
      case 90:
        vertices.reserve(reserveFor(int32Of(t), begin, end));
        return;
      case 70:
        e->closed = (int16Of(t) & 1) != 0;
        return;
      case 43:
        e->constantWidth = realOf(t);
        return;
      case 38:
        e->elevation = realOf(t);
        return;
      case 10:
        vertices.emplace_back().x = realOf(t);
        return;
      default:
        break;
    }
    if (vertices.empty()) {
      readCoordinate(t, 210, e->normal);
      return;
    }
    switch (t.code) {
      case 20:
        vertices.back().y = realOf(t);
        return;
      case 40:
        width().start = realOf(t);
        return;
      case 41:
        width().end = realOf(t);
        return;
      case 42:
        vertices.back().bulge = realOf(t);
        return;
      default:
        readCoordinate(t, 210, e->normal);
    }
  });
  readTags(begin, end, kLwPolylineKind, e.get(), context, common, &tags);
  if (!widths.empty()) {
    widths.resize(vertices.size());
    const bool allZero = std::all_of(widths.begin(), widths.end(), [](const SegmentWidth& s) {
      return s.start == 0.0 && s.end == 0.0;
    });
    if (allZero) widths.clear();
  }
  return e;
}

void writeLwPolyline(const LwPolylineEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbPolyline");
  w.integer(90, static_cast<std::int64_t>(e.vertices.size()));
  // The model keeps only the closed bit; the others (linetype generation...)
  // stay as the original had them.
  std::int64_t flags = e.closed ? 1 : 0;
  if (const Tag* t = w.originalTag(70)) {
    if (const auto old = parseInt(t->value)) flags |= *old & ~std::int64_t{1};
  }
  w.integer(70, flags);
  if (e.constantWidth != 0.0 || w.has(43)) w.real(43, e.constantWidth);
  if (e.elevation != 0.0 || w.has(38)) w.real(38, e.elevation);
  // Which vertices of the original wrote their widths and bulge, even at zero.
  enum : unsigned char { kStart = 1, kEnd = 2, kBulge = 4 };
  std::vector<unsigned char> written;
  if (w.sectionBegin() != w.sectionEnd()) {
    written.reserve(e.vertices.size());
    for (const Tag* t = w.sectionBegin(); t < w.sectionEnd(); ++t) {
      if (t->code == 10) {
        written.push_back(0);
      } else if (!written.empty()) {
        written.back() |= t->code == 40   ? kStart
                          : t->code == 41 ? kEnd
                          : t->code == 42 ? kBulge
                                          : 0;
      }
    }
  }
  for (std::size_t i = 0; i < e.vertices.size(); ++i) {
    const LwVertex& v = e.vertices[i];
    const unsigned char had = i < written.size() ? written[i] : 0;
    const SegmentWidth width = i < e.widths.size() ? e.widths[i] : SegmentWidth{};
    const bool wide = width.start != 0.0 || width.end != 0.0;
    w.real(10, v.x);
    w.real(20, v.y);
    if (wide || (had & kStart)) w.real(40, width.start);
    if (wide || (had & kEnd)) w.real(41, width.end);
    if (v.bulge != 0.0 || (had & kBulge)) w.real(42, v.bulge);
  }
  w.normal(e.normal);
  w.endSubclass();
}

// ---- POLYLINE ----------------------------------------------------------------

PolylineForm polylineForm(const Tag* begin, const Tag* end) {
  bool foreign = false;
  for (const Tag* p = begin + 1; p < end && p->code != 0 && p->code != 1001; ++p) {
    if (p->code == 100) {
      if (p->value == "AcDbPolyFaceMesh" || p->value == "AcDbPolygonMesh") {
        return PolylineForm::Other;
      }
      foreign =
          p->value != "AcDbEntity" && p->value != "AcDb2dPolyline" && p->value != "AcDb3dPolyline";
    } else if (p->code == 70 && !foreign) {
      const std::int16_t flags = int16Of(*p);
      if ((flags & (16 | 64)) != 0) return PolylineForm::Other;
      return (flags & 8) != 0 ? PolylineForm::ThreeD : PolylineForm::TwoD;
    }
  }
  return PolylineForm::TwoD;
}

std::unique_ptr<Entity> readPolyline(const Tag* begin, const Tag* end, bool threeD,
                                     ReadContext& context, CommonRead& common) {
  const Tag* own = entityEnd(begin, end);
  if (threeD) {
    auto e = std::make_unique<Polyline3dEntity>();
    auto tags = tagsOf([&](const Tag& t, int) {
      if (t.code == 70) e->flags = int16Of(t);
    });
    readTags(begin, own, kPolyline3dKind, e.get(), context, common, &tags);
    readFollowers(own, end, true, context, *e);
    return e;
  }
  auto e = std::make_unique<Polyline2dEntity>();
  auto tags = tagsOf([&](const Tag& t, int) {
    if (t.code == 70) {
      e->flags = int16Of(t);
    } else if (t.code == 30) {
      e->elevation = realOf(t);
    } else {
      readCoordinate(t, 210, e->normal);
    }
  });
  readTags(begin, own, kPolyline2dKind, e.get(), context, common, &tags);
  readFollowers(own, end, false, context, *e);
  return e;
}

void writePolyline2d(const Polyline2dEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDb2dPolyline");
  w.integer(66, 1);
  // Only the Z of the point means anything (the elevation); X and Y stay as
  // the original wrote them.
  w.real(10, originalReal(w, 10, 0.0));
  w.real(20, originalReal(w, 20, 0.0));
  w.real(30, e.elevation);
  w.integer(70, e.flags);
  w.normal(e.normal);
  w.endSubclass();
}

void writePolyline3d(const Polyline3dEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDb3dPolyline");
  w.integer(66, 1);
  w.real(10, originalReal(w, 10, 0.0));
  w.real(20, originalReal(w, 20, 0.0));
  w.real(30, originalReal(w, 30, 0.0));
  w.integer(70, e.flags | 8);
  w.endSubclass();
}

void writeVertices(const std::vector<PolylineVertex>& vertices, bool threeD, Handle seqend,
                   const Parent& parent, Followers& original, TagWriter& out,
                   WriteContext& context) {
  for (const PolylineVertex& v : vertices) {
    const auto [begin, end] = original.take(v.handle, {});
    EntityWriter w(out, context, threeD ? kVertex3dKind : kVertex2dKind, begin, end, true);
    w.start("VERTEX", v.handle, std::nullopt, parent.handle);
    w.writeSubEntityCommon(parent.layer, parent.paperSpace);
    w.beginSubclass(1, "AcDbVertex");
    w.endSubclass();
    w.beginSubclass(2, threeD ? "AcDb3dPolylineVertex" : "AcDb2dVertex");
    w.point(10, v.position);
    if (!threeD) {
      if (v.startWidth != 0.0 || w.has(40)) w.real(40, v.startWidth);
      if (v.endWidth != 0.0 || w.has(41)) w.real(41, v.endWidth);
      if (v.bulge != 0.0 || w.has(42)) w.real(42, v.bulge);
    }
    // Every vertex of a 3D polyline says so.
    w.integer(70, threeD ? v.flags | 32 : v.flags);
    w.endSubclass();
    w.finish(nullptr);
  }
  writeSeqend(seqend, parent, original, out, context);
}

// ---- MLINE -------------------------------------------------------------------

std::unique_ptr<Entity> readMline(const Tag* begin, const Tag* end, ReadContext& context,
                                  CommonRead& common) {
  auto e = std::make_unique<MlineEntity>();
  auto& vertices = e->vertices;
  std::vector<double>* params = nullptr;  // the list that 41 or 42 values fill
  auto tags = tagsOf([&](const Tag& t, int) {
    switch (t.code) {
      case 2:
        decodeInto(context.codec(), t.value, e->styleName);
        return;
      case 340:
        e->styleHandle = handleOf(t);
        return;
      case 40:
        e->scale = realOf(t);
        return;
      case 70:
        e->justification = int16Of(t);
        return;
      case 71:
        e->flags = int16Of(t);
        return;
      case 72:
        vertices.reserve(reserveFor(int16Of(t), begin, end));
        return;
      case 73:
        e->styleElements = int16Of(t);
        return;
      case 11:
        vertices.emplace_back().position.x = realOf(t);
        vertices.back().elementParams.reserve(
            static_cast<std::size_t>(std::max<std::int16_t>(e->styleElements, 0)));
        params = nullptr;
        return;
      default:
        break;
    }
    if (readCoordinate(t, 10, e->start) || readCoordinate(t, 210, e->normal)) return;
    if (vertices.empty()) return;
    MlineVertex& v = vertices.back();
    switch (t.code) {
      case 74:
        params = &v.elementParams.emplace_back();
        params->reserve(reserveFor(int16Of(t), begin, end));
        return;
      case 75:
        params = &v.fillParams.emplace_back();
        params->reserve(reserveFor(int16Of(t), begin, end));
        return;
      case 41:
      case 42:
        if (params) params->push_back(realOf(t));
        return;
      default:
        if (!readCoordinate(t, 11, v.position) && !readCoordinate(t, 12, v.direction)) {
          readCoordinate(t, 13, v.miter);
        }
    }
  });
  readTags(begin, end, kMlineKind, e.get(), context, common, &tags);
  return e;
}

void writeMline(const MlineEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbMline");
  w.text(2, e.styleName);
  if (e.styleHandle != 0 || w.has(340)) w.handle(340, e.styleHandle);
  w.real(40, e.scale);
  w.integer(70, e.justification);
  w.integer(71, e.flags);
  w.integer(72, static_cast<std::int64_t>(e.vertices.size()));
  w.integer(73, e.styleElements);
  w.point(10, e.start);
  w.point(210, e.normal);
  static const std::vector<double> kNone;
  for (const MlineVertex& v : e.vertices) {
    w.point(11, v.position);
    w.point(12, v.direction);
    w.point(13, v.miter);
    const std::size_t elements = std::max(v.elementParams.size(), v.fillParams.size());
    for (std::size_t i = 0; i < elements; ++i) {
      const auto& params = i < v.elementParams.size() ? v.elementParams[i] : kNone;
      w.integer(74, static_cast<std::int64_t>(params.size()));
      for (double value : params) w.real(41, value);
      const auto& fill = i < v.fillParams.size() ? v.fillParams[i] : kNone;
      w.integer(75, static_cast<std::int64_t>(fill.size()));
      for (double value : fill) w.real(42, value);
    }
  }
  w.endSubclass();
}

}  // namespace host::dxf::entity
