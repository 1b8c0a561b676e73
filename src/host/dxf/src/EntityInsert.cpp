// Block references and the attributes that follow them.
#include "EntityKinds.h"

namespace host::dxf::entity {
namespace {

constexpr std::string_view kBlockReferenceSubclasses[] = {"AcDbBlockReference"};

bool blockReferenceOwns(int code, int) {
  return isAnyOf(code, {2, 41, 42, 43, 44, 45, 50, 66, 70, 71}) || isCoordinate(code, 10) ||
         isCoordinate(code, 210);
}

}  // namespace

const KindInfo kBlockReferenceKind{kBlockReferenceSubclasses, 1, blockReferenceOwns};

std::unique_ptr<Entity> readBlockReference(const Tag* begin, const Tag* end, ReadContext& context,
                                           CommonRead& common,
                                           std::vector<std::unique_ptr<Entity>>& attributes) {
  auto e = std::make_unique<BlockReferenceEntity>();
  const Tag* own = entityEnd(begin, end);
  auto tags = tagsOf([&](const Tag& t, int) {
    switch (t.code) {
      case 2: {
        const std::wstring name = decoded(context.codec(), t.value);
        e->block = context.block(name);
        return;
      }
      case 41:
        e->scale.x = realOf(t);
        return;
      case 42:
        e->scale.y = realOf(t);
        return;
      case 43:
        e->scale.z = realOf(t);
        return;
      case 50:
        e->rotation = radiansOf(realOf(t));
        return;
      case 70:
        e->columns = int16Of(t);
        return;
      case 71:
        e->rows = int16Of(t);
        return;
      case 44:
        e->columnSpacing = realOf(t);
        return;
      case 45:
        e->rowSpacing = realOf(t);
        return;
      default:
        if (!readCoordinate(t, 10, e->position)) readCoordinate(t, 210, e->normal);
    }
  });
  readTags(begin, own, kBlockReferenceKind, e.get(), context, common, &tags);
  for (const Tag* p = own; p < end;) {
    const Tag* next = entityEnd(p, end);
    if (p->value == platform::dxfName(EntityKind::Attribute)) {
      CommonRead attributeCommon;
      attributes.push_back(readAttribute(p, next, context, attributeCommon));
    } else if (p->value == "SEQEND") {
      e->seqendHandle = handleOfEntity(p, next);
    }
    p = next;
  }
  return e;
}

std::vector<const AttributeEntity*> attributesOf(const BlockReferenceEntity& e,
                                                 WriteContext& context) {
  std::vector<const AttributeEntity*> found;
  found.reserve(e.attributes.size());
  for (ObjectId id : e.attributes) {
    const Entity* a = context.entity(id);
    if (a && !a->erased && a->kind() == EntityKind::Attribute) {
      found.push_back(static_cast<const AttributeEntity*>(a));
    }
  }
  return found;
}

void writeBlockReference(const BlockReferenceEntity& e, EntityWriter& w) {
  const bool array = e.columns > 1 || e.rows > 1;
  w.beginSubclass(1, array ? "AcDbMInsertBlock" : "AcDbBlockReference");
  if (!attributesOf(e, w.context()).empty()) {
    w.integer(66, 1);
  } else if (w.has(66)) {
    w.integer(66, 0);
  }
  const std::wstring name = e.block.isNull() ? std::wstring() : w.context().blockName(e.block);
  const Tag* oldName = w.originalTag(2);
  if (name.empty() && oldName) {
    // A block the file named but never defined: its name is all there is of it.
    w.raw(2, oldName->value);
  } else {
    w.text(2, name);
  }
  w.point(10, e.position);
  if (e.scale.x != 1.0 || w.has(41)) w.real(41, e.scale.x);
  if (e.scale.y != 1.0 || w.has(42)) w.real(42, e.scale.y);
  if (e.scale.z != 1.0 || w.has(43)) w.real(43, e.scale.z);
  if (e.rotation != 0.0 || w.has(50)) w.angle(50, e.rotation);
  if (e.columns != 1 || w.has(70)) w.integer(70, e.columns);
  if (e.rows != 1 || w.has(71)) w.integer(71, e.rows);
  if (e.columnSpacing != 0.0 || w.has(44)) w.real(44, e.columnSpacing);
  if (e.rowSpacing != 0.0 || w.has(45)) w.real(45, e.rowSpacing);
  w.normal(e.normal);
  w.endSubclass();
}

void writeAttributes(const BlockReferenceEntity& e, const Parent& parent, Followers& original,
                     TagWriter& out, WriteContext& context) {
  const std::vector<const AttributeEntity*> attributes = attributesOf(e, context);
  if (attributes.empty()) return;
  for (const AttributeEntity* a : attributes) {
    const auto [begin, end] = original.take(a->handle, {});
    writeSingle(*a, parent.handle, parent.paperSpace, out, context, begin, end);
  }
  writeSeqend(e.seqendHandle, parent, original, out, context);
}

}  // namespace host::dxf::entity
