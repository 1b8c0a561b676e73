// Picking an entity's kind by its name, and writing what surrounds every kind:
// the entity's start, its common subclass, its XDATA and its followers. Kinds
// the host keeps as text (solids, regions, hatches, unknown kinds) are here too.
#include "EntityCodec.h"

#include <optional>

#include "EntityKinds.h"
#include "GroupCodes.h"
#include "host/dxf/ParseError.h"

namespace host::dxf {
namespace {

using entity::CommonRead;
using entity::EntityWriter;
using entity::KindInfo;

// Kinds of which the model keeps only the common properties: all their own
// subclasses are kept as they were.
const KindInfo kBareKind{nullptr, 0, nullptr};

template <typename T>
std::unique_ptr<Entity> readBare(const Tag* begin, const Tag* end, ReadContext& context,
                                 CommonRead& common) {
  auto e = std::make_unique<T>();
  entity::readTags(begin, end, kBareKind, e.get(), context, common, nullptr);
  return e;
}

std::unique_ptr<Entity> readUnknown(const Tag* begin, const Tag* end, ReadContext& context,
                                    CommonRead& common) {
  auto e = readBare<UnknownEntity>(begin, end, context, common);
  static_cast<UnknownEntity&>(*e).dxfName = std::string(begin->value);
  return e;
}

// The name an entity is written under: its kind's, or its own for a kind the
// host does not model.
std::string_view nameOf(const Entity& e) {
  if (e.kind() == EntityKind::Unknown) return static_cast<const UnknownEntity&>(e).dxfName;
  return platform::dxfName(e.kind());
}

// The least the kinds kept as text need to be valid when there is no text.
void writeMinimalModelerBody(const Entity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbModelerGeometry");
  w.integer(70, 1);
  w.endSubclass();
  if (e.kind() == EntityKind::Solid3d) {
    w.beginSubclass(2, "AcDb3dSolid");
    w.handle(350, 0);
    w.endSubclass();
  }
}

void writeMinimalHatchBody(const Entity&, EntityWriter& w) {
  w.beginSubclass(1, "AcDbHatch");
  w.point(10, Point3d{});
  w.point(210, kUnitZ);
  w.raw(2, "SOLID");
  w.integer(70, 1);
  w.integer(71, 0);
  w.integer(91, 0);
  w.integer(75, 0);
  w.integer(76, 1);
  w.integer(98, 0);
  w.endSubclass();
}

bool startsWithIgnoreCase(std::wstring_view text, std::wstring_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    wchar_t a = text[i];
    wchar_t b = prefix[i];
    if (a >= L'a' && a <= L'z') a = static_cast<wchar_t>(a - L'a' + L'A');
    if (b >= L'a' && b <= L'z') b = static_cast<wchar_t>(b - L'a' + L'A');
    if (a != b) return false;
  }
  return true;
}

// Entities of a paper space layout carry group 67. The owning block tells,
// when the entity has one; else the original does.
bool inPaperSpace(const Entity& e, WriteContext& context, const EntityWriter& w) {
  if (!e.owner.isNull() && e.kind() != EntityKind::Attribute) {
    const std::wstring block = context.blockName(e.owner);
    if (!block.empty()) return startsWithIgnoreCase(block, L"*Paper_Space");
  }
  const Tag* t = w.originalEntityTag(67);
  const auto v = t ? parseInt(t->value) : std::nullopt;
  return v && *v != 0;
}

std::optional<Handle> xdictOf(const Entity& e, WriteContext& context) {
  if (!e.xdict.isNull()) return context.handleOf(e.xdict);
  // The reading of an attribute does not give its dictionary to the model; an
  // original one is kept as it was.
  if (e.kind() == EntityKind::Attribute) return std::nullopt;
  return Handle{0};
}

const std::vector<Hyperlink>* linksOf(const Entity& e) {
  static const std::vector<Hyperlink> kNone;
  return e.rare ? &e.rare->hyperlinks : &kNone;
}

entity::Parent parentOf(const Entity& e, WriteContext& context, bool paperSpace) {
  entity::Parent parent;
  parent.handle = e.handle;
  const std::wstring layer = context.layerName(e.layer);
  parent.layer = context.codec().encode(layer.empty() ? std::wstring_view(L"0") : layer);
  parent.paperSpace = paperSpace;
  return parent;
}

template <typename T, typename WriteKind>
void writeKind(const Entity& e, const KindInfo& kind, Handle owner, std::optional<bool> paperSpace,
               TagWriter& out, WriteContext& context, const Tag* begin, const Tag* end,
               WriteKind writeOwn) {
  EntityWriter w(out, context, kind, begin, end);
  w.start(nameOf(e), e.handle, xdictOf(e, context), owner);
  w.writeCommon(e, paperSpace ? *paperSpace : inPaperSpace(e, context, w));
  writeOwn(static_cast<const T&>(e), w);
  w.finish(linksOf(e));
}

// A kind kept as text; without its text, with the least body that makes it valid.
void writeKept(const Entity& e, void (*minimalBody)(const Entity&, EntityWriter&), Handle owner,
               std::optional<bool> paperSpace, TagWriter& out, WriteContext& context,
               const Tag* begin, const Tag* end) {
  const bool fresh = begin == end;
  writeKind<Entity>(e, kBareKind, owner, paperSpace, out, context, begin, end,
                    [fresh, minimalBody](const Entity& x, EntityWriter& w) {
                      if (fresh) minimalBody(x, w);
                    });
}

void writeOne(const Entity& e, Handle owner, std::optional<bool> paperSpace, TagWriter& out,
              WriteContext& context, const Tag* begin, const Tag* end) {
  using namespace entity;  // NOLINT(google-build-using-namespace): the kinds' codecs
  const auto none = [](const Entity&, EntityWriter&) {};
  switch (e.kind()) {
    case EntityKind::Point:
      return writeKind<PointEntity>(e, kPointKind, owner, paperSpace, out, context, begin, end,
                                    writePoint);
    case EntityKind::Line:
      return writeKind<LineEntity>(e, kLineKind, owner, paperSpace, out, context, begin, end,
                                   writeLine);
    case EntityKind::Arc:
      return writeKind<ArcEntity>(e, kArcKind, owner, paperSpace, out, context, begin, end,
                                  writeArc);
    case EntityKind::Circle:
      return writeKind<CircleEntity>(e, kCircleKind, owner, paperSpace, out, context, begin, end,
                                     writeCircle);
    case EntityKind::Ellipse:
      return writeKind<EllipseEntity>(e, kEllipseKind, owner, paperSpace, out, context, begin, end,
                                      writeEllipse);
    case EntityKind::LwPolyline:
      return writeKind<LwPolylineEntity>(e, kLwPolylineKind, owner, paperSpace, out, context, begin,
                                         end, writeLwPolyline);
    case EntityKind::Spline:
      return writeKind<SplineEntity>(e, kSplineKind, owner, paperSpace, out, context, begin, end,
                                     writeSpline);
    case EntityKind::Mline:
      return writeKind<MlineEntity>(e, kMlineKind, owner, paperSpace, out, context, begin, end,
                                    writeMline);
    case EntityKind::Text:
      return writeKind<TextEntity>(e, kTextKind, owner, paperSpace, out, context, begin, end,
                                   writeText);
    case EntityKind::MText:
      return writeKind<MTextEntity>(e, kMTextKind, owner, paperSpace, out, context, begin, end,
                                    writeMText);
    case EntityKind::Attribute:
      return writeKind<AttributeEntity>(e, kAttributeKind, owner, paperSpace, out, context, begin,
                                        end, writeAttribute);
    case EntityKind::AttributeDefinition:
      return writeKind<AttributeDefinitionEntity>(e, kAttributeDefinitionKind, owner, paperSpace,
                                                  out, context, begin, end,
                                                  writeAttributeDefinition);
    case EntityKind::Solid3d:
    case EntityKind::Region:
      return writeKept(e, writeMinimalModelerBody, owner, paperSpace, out, context, begin, end);
    case EntityKind::Hatch:
      return writeKept(e, writeMinimalHatchBody, owner, paperSpace, out, context, begin, end);
    case EntityKind::Unknown:
      // Nothing but the original text can say what such an entity is.
      if (begin == end) return;
      return writeKind<UnknownEntity>(e, kBareKind, owner, paperSpace, out, context, begin, end,
                                      none);
    case EntityKind::Polyline2d:
    case EntityKind::Polyline3d:
    case EntityKind::BlockReference:
      // Written with their followers by writeEntity.
      return;
  }
}

// Whether the entity's own tags say that followers come after it: the value of
// its group 66, when it has one.
std::optional<bool> followersFlag(const std::vector<Tag>& tags) {
  for (std::size_t i = 1; i < tags.size(); ++i) {
    const Tag& t = tags[i];
    if (t.code == 0 || t.code == 1001) break;
    if (t.code == 66) return entity::int16Of(t) != 0;
  }
  return std::nullopt;
}

// POLYLINE names 2D and 3D polylines and meshes alike; the entity's own tags,
// [begin, own), tell which it is. A mesh is kept as text, with the handles of
// its vertices, which a copy gives new ones.
std::unique_ptr<Entity> readPolylineOrMesh(const Tag* begin, const Tag* own, const Tag* end,
                                           ReadContext& context, entity::CommonRead& common) {
  const entity::PolylineForm form = entity::polylineForm(begin, own);
  if (form != entity::PolylineForm::Other) {
    return entity::readPolyline(begin, end, form == entity::PolylineForm::ThreeD, context,
                                common);
  }
  std::unique_ptr<Entity> mesh = readUnknown(begin, own, context, common);
  for (const Tag* p = own; p < end; p = entity::entityEnd(p, end)) {
    static_cast<UnknownEntity&>(*mesh).followers.push_back(
        entity::handleOfEntity(p, entity::entityEnd(p, end)));
  }
  return mesh;
}

}  // namespace

ReadEntity readEntity(const std::vector<Tag>& tags, ReadContext& context) {
  using namespace entity;  // NOLINT(google-build-using-namespace): the kinds' codecs
  if (tags.empty()) throw ParseError(0, "an entity without tags");
  const Tag* begin = tags.data();
  const Tag* end = begin + tags.size();
  const Tag* own = entityEnd(begin, end);
  ReadEntity result;
  CommonRead common;
  switch (platform::entityClassOfDxfName(begin->value)) {
    case EntityKind::Point:
      result.entity = readPoint(begin, own, context, common);
      break;
    case EntityKind::Line:
      result.entity = readLine(begin, own, context, common);
      break;
    case EntityKind::Arc:
      result.entity = readArc(begin, own, context, common);
      break;
    case EntityKind::Circle:
      result.entity = readCircle(begin, own, context, common);
      break;
    case EntityKind::Ellipse:
      result.entity = readEllipse(begin, own, context, common);
      break;
    case EntityKind::LwPolyline:
      result.entity = readLwPolyline(begin, own, context, common);
      break;
    case EntityKind::Spline:
      result.entity = readSpline(begin, own, context, common);
      break;
    case EntityKind::Mline:
      result.entity = readMline(begin, own, context, common);
      break;
    case EntityKind::Text:
      result.entity = readText(begin, own, context, common);
      break;
    case EntityKind::MText:
      result.entity = readMText(begin, own, context, common);
      break;
    case EntityKind::Attribute:
      result.entity = readAttribute(begin, own, context, common);
      break;
    case EntityKind::AttributeDefinition:
      result.entity = readAttributeDefinition(begin, own, context, common);
      break;
    case EntityKind::BlockReference:
      result.entity = readBlockReference(begin, end, context, common, result.attributes);
      break;
    case EntityKind::Polyline2d:
    case EntityKind::Polyline3d:
      result.entity = readPolylineOrMesh(begin, own, end, context, common);
      break;
    case EntityKind::Solid3d:
      result.entity = readBare<Solid3dEntity>(begin, own, context, common);
      break;
    case EntityKind::Region:
      result.entity = readBare<RegionEntity>(begin, own, context, common);
      break;
    case EntityKind::Hatch:
      result.entity = readBare<HatchEntity>(begin, own, context, common);
      break;
    case EntityKind::Unknown:
      result.entity = readUnknown(begin, own, context, common);
      break;
  }
  result.xdictHandle = common.xdict;
  result.ownerHandle = common.owner;
  result.paperSpace = common.paperSpace;
  return result;
}

void writeEntity(const Entity& e, Handle owner, TagWriter& out, WriteContext& context,
                 const std::vector<Tag>* original) {
  using namespace entity;  // NOLINT(google-build-using-namespace): the kinds' codecs
  const Tag* begin = original && !original->empty() ? original->data() : nullptr;
  const Tag* end = begin ? begin + original->size() : nullptr;
  const Tag* own = begin ? entityEnd(begin, end) : nullptr;
  Followers followers(own, end);

  const auto writeWithFollowers = [&](const KindInfo& kind, const auto& writeOwn,
                                      const auto& writeFollowers) {
    EntityWriter w(out, context, kind, begin, own);
    const bool paperSpace = inPaperSpace(e, context, w);
    w.start(nameOf(e), e.handle, xdictOf(e, context), owner);
    w.writeCommon(e, paperSpace);
    writeOwn(w);
    w.finish(linksOf(e));
    writeFollowers(parentOf(e, context, paperSpace));
  };

  switch (e.kind()) {
    case EntityKind::Polyline2d: {
      const auto& p = static_cast<const Polyline2dEntity&>(e);
      writeWithFollowers(
          kPolyline2dKind, [&](EntityWriter& w) { writePolyline2d(p, w); },
          [&](const Parent& parent) {
            writeVertices(p.vertices, false, p.seqendHandle, parent, followers, out, context);
          });
      return;
    }
    case EntityKind::Polyline3d: {
      const auto& p = static_cast<const Polyline3dEntity&>(e);
      writeWithFollowers(
          kPolyline3dKind, [&](EntityWriter& w) { writePolyline3d(p, w); },
          [&](const Parent& parent) {
            writeVertices(p.vertices, true, p.seqendHandle, parent, followers, out, context);
          });
      return;
    }
    case EntityKind::BlockReference: {
      const auto& r = static_cast<const BlockReferenceEntity&>(e);
      writeWithFollowers(
          kBlockReferenceKind, [&](EntityWriter& w) { writeBlockReference(r, w); },
          [&](const Parent& parent) { writeAttributes(r, parent, followers, out, context); });
      return;
    }
    case EntityKind::Unknown:
      writeOne(e, owner, std::nullopt, out, context, begin, own);
      // What followed an entity this host does not model (the vertices of a
      // mesh) is written as it was.
      for (const Tag* p = own; p && p < end; ++p) out.write(p->code, p->value);
      return;
    case EntityKind::Point:
    case EntityKind::Line:
    case EntityKind::Arc:
    case EntityKind::Circle:
    case EntityKind::Ellipse:
    case EntityKind::LwPolyline:
    case EntityKind::Spline:
    case EntityKind::Mline:
    case EntityKind::Text:
    case EntityKind::MText:
    case EntityKind::Attribute:
    case EntityKind::AttributeDefinition:
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
      writeOne(e, owner, std::nullopt, out, context, begin, own);
      return;
  }
}

bool endsWithSeqend(std::string_view dxfName, const std::vector<Tag>& tags) {
  // A polyline's vertices always follow it (the flag is optional there); an
  // INSERT's attributes only when it says so.
  if (dxfName == platform::dxfName(EntityKind::Polyline2d)) {
    return followersFlag(tags).value_or(true);
  }
  if (dxfName == platform::dxfName(EntityKind::BlockReference)) {
    return followersFlag(tags).value_or(false);
  }
  return false;
}

namespace entity {

Followers::Followers(const Tag* begin, const Tag* end) {
  for (const Tag* p = begin; p && p < end;) {
    const Tag* next = entityEnd(p, end);
    entries_.push_back(Entry{p, next, handleOfEntity(p, next), false});
    p = next;
  }
}

std::pair<const Tag*, const Tag*> Followers::take(Handle handle, std::string_view name) {
  const auto takeAt = [&](std::size_t i) {
    entries_[i].taken = true;
    hint_ = i + 1;
    return std::make_pair(entries_[i].begin, entries_[i].end);
  };
  if (handle != 0) {
    // Followers are usually written in the order they were read.
    if (hint_ < entries_.size() && !entries_[hint_].taken && entries_[hint_].handle == handle) {
      return takeAt(hint_);
    }
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (!entries_[i].taken && entries_[i].handle == handle) return takeAt(i);
    }
  }
  if (!name.empty()) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (!entries_[i].taken && entries_[i].begin->value == name) return takeAt(i);
    }
  }
  return {nullptr, nullptr};
}

void writeSeqend(Handle handle, const Parent& parent, Followers& original, TagWriter& out,
                 WriteContext& context) {
  const auto [begin, end] = original.take(handle, "SEQEND");
  EntityWriter w(out, context, kBareKind, begin, end, true);
  w.start("SEQEND", handle, std::nullopt, parent.handle);
  w.writeSubEntityCommon(parent.layer, parent.paperSpace);
  w.finish(nullptr);
}

void writeSingle(const Entity& entity, Handle owner, bool paperSpace, TagWriter& out,
                 WriteContext& context, const Tag* begin, const Tag* end) {
  writeOne(entity, owner, paperSpace, out, context, begin, end);
}

}  // namespace entity
}  // namespace host::dxf
