// Single-line texts, attributes, attribute definitions and multiline texts.
#include "EntityKinds.h"

namespace host::dxf::entity {
namespace {

constexpr std::string_view kTextSubclasses[] = {"AcDbText", "AcDbText"};
constexpr std::string_view kAttributeSubclasses[] = {"AcDbText", "AcDbAttribute"};
constexpr std::string_view kAttributeDefinitionSubclasses[] = {"AcDbText",
                                                               "AcDbAttributeDefinition"};
constexpr std::string_view kMTextSubclasses[] = {"AcDbMText"};

// Longest piece of a multiline text's value in one tag.
constexpr std::size_t kChunk = 250;

bool isNormal(int code) {
  return isCoordinate(code, 210);
}

// The codes of the first AcDbText subclass, which all single-line texts share.
bool textDataOwns(int code) {
  return isAnyOf(code, {1, 7, 40, 41, 50, 51, 71, 72}) || isCoordinate(code, 10) ||
         isCoordinate(code, 11) || isNormal(code);
}

// The second subclass's codes are taken in the first too, where some writers
// put them; they are written back in the second.
bool textOwns(int code, int slot) {
  const bool own = code == 73;
  return own || (slot != 2 && textDataOwns(code));
}

bool attributeOwns(int code, int slot) {
  const bool own = isAnyOf(code, {2, 70, 74});
  return own || (slot != 2 && textDataOwns(code));
}

bool attributeDefinitionOwns(int code, int slot) {
  const bool own = isAnyOf(code, {3, 2, 70, 74});
  return own || (slot != 2 && textDataOwns(code));
}

bool mtextOwns(int code, int) {
  return isAnyOf(code, {1, 3, 7, 40, 41, 44, 50, 71}) || isCoordinate(code, 10) ||
         isCoordinate(code, 11) || isNormal(code);
}

// A tag of the first AcDbText subclass; false for any other.
bool readTextData(const Tag& t, TextData& d, const TextCodec& codec) {
  switch (t.code) {
    case 1:
      decodeInto(codec, t.value, d.text);
      return true;
    case 7:
      decodeInto(codec, t.value, d.styleName);
      return true;
    case 40:
      d.height = realOf(t);
      return true;
    case 41:
      d.widthFactor = realOf(t);
      return true;
    case 50:
      d.rotation = radiansOf(realOf(t));
      return true;
    case 51:
      d.oblique = radiansOf(realOf(t));
      return true;
    case 71:
      d.generation = int16Of(t);
      return true;
    case 72:
      d.horizontalAlignment = int16Of(t);
      return true;
    default:
      return readCoordinate(t, 10, d.position) || readCoordinate(t, 11, d.alignmentPoint) ||
             readCoordinate(t, 210, d.normal);
  }
}

void writeTextData(const TextData& d, EntityWriter& w) {
  w.point(10, d.position);
  w.real(40, d.height);
  w.text(1, d.text);
  if (d.rotation != 0.0 || w.has(50)) w.angle(50, d.rotation);
  if (d.widthFactor != 1.0 || w.has(41)) w.real(41, d.widthFactor);
  if (d.oblique != 0.0 || w.has(51)) w.angle(51, d.oblique);
  if (d.styleName != L"Standard" || w.has(7)) w.text(7, d.styleName);
  if (d.generation != 0 || w.has(71)) w.integer(71, d.generation);
  if (d.horizontalAlignment != 0 || w.has(72)) w.integer(72, d.horizontalAlignment);
  // Readers place an aligned text by this point, a left-aligned one by the first.
  if (d.horizontalAlignment != 0 || d.verticalAlignment != 0 || d.alignmentPoint != Point3d{} ||
      w.has(11)) {
    w.point(11, d.alignmentPoint);
  }
  w.normal(d.normal);
}

}  // namespace

const KindInfo kTextKind{kTextSubclasses, 2, textOwns};
const KindInfo kAttributeKind{kAttributeSubclasses, 2, attributeOwns};
const KindInfo kAttributeDefinitionKind{kAttributeDefinitionSubclasses, 2, attributeDefinitionOwns};
const KindInfo kMTextKind{kMTextSubclasses, 1, mtextOwns};

std::unique_ptr<Entity> readText(const Tag* begin, const Tag* end, ReadContext& context,
                                 CommonRead& common) {
  auto e = std::make_unique<TextEntity>();
  const TextCodec& codec = context.codec();
  auto tags = tagsOf([&](const Tag& t, int slot) {
    if (slot != 2 && readTextData(t, e->data, codec)) return;
    if (t.code == 73) e->data.verticalAlignment = int16Of(t);
  });
  readTags(begin, end, kTextKind, e.get(), context, common, &tags);
  return e;
}

void writeText(const TextEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbText");
  writeTextData(e.data, w);
  w.endSubclass();
  w.beginSubclass(2, "AcDbText");
  if (e.data.verticalAlignment != 0 || w.has(73)) w.integer(73, e.data.verticalAlignment);
  w.endSubclass();
}

// Attributes and their definitions read alike: text data, then a tag and
// flags in their own subclass; a definition has a prompt too.
template <typename T>
std::unique_ptr<Entity> readAttributeLike(const Tag* begin, const Tag* end, ReadContext& context,
                                          CommonRead& common, const KindInfo& kind,
                                          std::wstring T::*prompt) {
  auto e = std::make_unique<T>();
  const TextCodec& codec = context.codec();
  auto tags = tagsOf([&](const Tag& t, int slot) {
    if (slot != 2 && readTextData(t, e->data, codec)) return;
    switch (t.code) {
      case 2:
        decodeInto(codec, t.value, e->tag);
        break;
      case 3:
        if (prompt != nullptr) decodeInto(codec, t.value, (*e).*prompt);
        break;
      case 70:
        e->flags = int16Of(t);
        break;
      case 74:
        e->data.verticalAlignment = int16Of(t);
        break;
      default:
        break;
    }
  });
  readTags(begin, end, kind, e.get(), context, common, &tags);
  return e;
}

std::unique_ptr<Entity> readAttribute(const Tag* begin, const Tag* end, ReadContext& context,
                                      CommonRead& common) {
  return readAttributeLike<AttributeEntity>(begin, end, context, common, kAttributeKind, nullptr);
}

void writeAttribute(const AttributeEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbText");
  writeTextData(e.data, w);
  w.endSubclass();
  w.beginSubclass(2, "AcDbAttribute");
  w.text(2, e.tag);
  w.integer(70, e.flags);
  if (e.data.verticalAlignment != 0 || w.has(74)) w.integer(74, e.data.verticalAlignment);
  w.endSubclass();
}

std::unique_ptr<Entity> readAttributeDefinition(const Tag* begin, const Tag* end,
                                                ReadContext& context, CommonRead& common) {
  return readAttributeLike<AttributeDefinitionEntity>(begin, end, context, common,
                                                      kAttributeDefinitionKind,
                                                      &AttributeDefinitionEntity::prompt);
}

void writeAttributeDefinition(const AttributeDefinitionEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbText");
  writeTextData(e.data, w);
  w.endSubclass();
  w.beginSubclass(2, "AcDbAttributeDefinition");
  w.text(3, e.prompt);
  w.text(2, e.tag);
  w.integer(70, e.flags);
  if (e.data.verticalAlignment != 0 || w.has(74)) w.integer(74, e.data.verticalAlignment);
  w.endSubclass();
}

std::unique_ptr<Entity> readMText(const Tag* begin, const Tag* end, ReadContext& context,
                                  CommonRead& common) {
  auto e = std::make_unique<MTextEntity>();
  // The value comes in pieces that are joined before decoding, since a piece
  // may end inside a character or an escape.
  std::string_view first;
  std::string joined;
  int pieces = 0;
  bool sawRotation = false;
  auto tags = tagsOf([&](const Tag& t, int) {
    switch (t.code) {
      case 1:
      case 3:
        if (pieces == 1) joined.assign(first);
        if (pieces == 0) {
          first = t.value;
        } else {
          joined.append(t.value);
        }
        ++pieces;
        return;
      case 7:
        decodeInto(context.codec(), t.value, e->styleName);
        return;
      case 40:
        e->height = realOf(t);
        return;
      case 41:
        e->referenceWidth = realOf(t);
        return;
      case 44:
        e->lineSpacing = realOf(t);
        return;
      case 71:
        e->attachment = int16Of(t);
        return;
      case 50:
        // Later ones are column heights.
        if (!sawRotation) e->rotation = radiansOf(realOf(t));
        sawRotation = true;
        return;
      default:
        if (!readCoordinate(t, 10, e->position) && !readCoordinate(t, 11, e->direction)) {
          readCoordinate(t, 210, e->normal);
        }
    }
  });
  readTags(begin, end, kMTextKind, e.get(), context, common, &tags);
  if (pieces > 0) decodeInto(context.codec(), pieces > 1 ? joined : first, e->text);
  e->columns = mtextColumnHandles(begin, end);
  return e;
}

std::vector<Handle> mtextColumnHandles(const Tag* begin, const Tag* end) {
  std::vector<Handle> handles;
  bool inAcad = false;
  bool inColumns = false;
  for (const Tag* p = begin; p < end; ++p) {
    if (p->code == 1001) {
      inAcad = p->value == "ACAD";
      inColumns = false;
    } else if (inAcad && p->code == 1000) {
      inColumns = p->value == "ACAD_MTEXT_COLUMNS_BEGIN";
    } else if (inColumns && p->code == 1005) {
      handles.push_back(handleOf(*p));
    }
  }
  return handles;
}

void writeMText(const MTextEntity& e, EntityWriter& w) {
  w.beginSubclass(1, "AcDbMText");
  w.point(10, e.position);
  w.real(40, e.height);
  if (e.referenceWidth != 0.0 || w.has(41)) w.real(41, e.referenceWidth);
  w.integer(71, e.attachment);
  std::wstring_view rest = e.text;
  while (rest.size() > kChunk) {
    std::size_t n = kChunk;
    // A surrogate pair stays whole where wchar_t is 16 bits.
    if (rest[n - 1] >= 0xD800 && rest[n - 1] <= 0xDBFF) --n;
    w.text(3, rest.substr(0, n));
    rest.remove_prefix(n);
  }
  w.text(1, rest);
  if (e.styleName != L"Standard" || w.has(7)) w.text(7, e.styleName);
  w.normal(e.normal);
  if (e.direction != Point3d{1.0, 0.0, 0.0} || w.has(11)) w.point(11, e.direction);
  if (e.rotation != 0.0 || w.has(50)) w.angle(50, e.rotation);
  if (e.lineSpacing != 1.0 || w.has(44)) w.real(44, e.lineSpacing);
  w.endSubclass();
}

}  // namespace host::dxf::entity
