// Reading what all entities share: values that name their line when they do not
// parse, text, subclass slots, the common properties and hyperlinks.
#include "EntityCommon.h"

#include <cmath>
#include <limits>

#include "GroupCodes.h"
#include "host/dxf/ParseError.h"

namespace host::dxf::entity {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRadiansPerDegree = kPi / 180.0;

[[noreturn]] void badValue(const Tag& tag, const char* expected) {
  throw ParseError(tag.line, std::string(expected) + " is expected for group " +
                                 std::to_string(tag.code) + ", not '" + std::string(tag.value) +
                                 "'");
}

std::int64_t integerOf(const Tag& tag, std::int64_t low, std::int64_t high, const char* expected) {
  const auto v = parseInt(tag.value);
  if (!v || *v < low || *v > high) badValue(tag, expected);
  return *v;
}

// Whether the bytes read the same in every code page and need no escape
// decoding, so that they can be widened one by one.
bool isPlainAscii(std::string_view bytes) {
  for (char c : bytes) {
    if (static_cast<unsigned char>(c) >= 0x80 || c == '\\') return false;
  }
  return true;
}

// A symbol record's name looked up without a heap allocation in the usual
// case of a short plain name.
template <typename Lookup>
ObjectId lookUpName(ReadContext& context, std::string_view bytes, Lookup lookup) {
  constexpr std::size_t kInline = 96;
  if (bytes.size() <= kInline && isPlainAscii(bytes)) {
    wchar_t buffer[kInline];
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      buffer[i] = static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]));
    }
    return lookup(std::wstring_view(buffer, bytes.size()));
  }
  const std::wstring name = context.codec().decode(bytes);
  return lookup(std::wstring_view(name));
}

bool sameSubclass(std::string_view a, std::string_view b) {
  if (a == b) return true;
  // An array of block references is a block reference with another marker.
  const auto isInsert = [](std::string_view s) {
    return s == "AcDbBlockReference" || s == "AcDbMInsertBlock";
  };
  return isInsert(a) && isInsert(b);
}

// Skips a 102 group from its opening tag; returns its closing tag (or the last
// tag). Takes the extension dictionary's handle on the way.
const Tag* readGroup(const Tag* p, const Tag* end, CommonRead& common) {
  const bool xdict = p->value == "{ACAD_XDICTIONARY";
  int depth = 0;
  for (; p < end; ++p) {
    if (p->code == 102) {
      depth += !p->value.empty() && p->value.front() == '{' ? 1 : -1;
      if (depth <= 0) return p;
    } else if (xdict && p->code == 360 && common.xdict == 0) {
      common.xdict = handleOf(*p);
    }
  }
  return end - 1;
}

bool readCommonTag(const Tag& t, Entity* e, ReadContext& context, CommonRead& common,
                   bool& sawLayer) {
  switch (t.code) {
    case 67:
      common.paperSpace = int16Of(t) != 0;
      return true;
    case 8:
      sawLayer = true;
      if (e) {
        e->layer = lookUpName(context, t.value,
                              [&](std::wstring_view name) { return context.layer(name); });
      }
      return true;
    case 6:
      // By layer is the model's null linetype, not a record.
      if (e && !equalsIgnoreCaseAscii(t.value, "BYLAYER")) {
        e->setLinetype(lookUpName(context, t.value,
                                  [&](std::wstring_view name) { return context.linetype(name); }));
      }
      return true;
    case 62:
      if (e) e->color = int16Of(t);
      return true;
    case 370:
      if (e) e->lineweight = int16Of(t);
      return true;
    case 60:
      if (e) e->invisible = int16Of(t) != 0;
      return true;
    case 420:
      if (e) {
        const std::int32_t v = int32Of(t);
        if (v != -1 || e->rare) e->rare.make().trueColor = v;
      }
      return true;
    case 430:
      if (e && (!t.value.empty() || e->rare)) {
        decodeInto(context.codec(), t.value, e->rare.make().colorName);
      }
      return true;
    case 440:
      if (e) {
        const std::int32_t v = int32Of(t);
        if (v != -1 || e->rare) e->rare.make().transparency = v;
      }
      return true;
    case 48:
      if (e) {
        const double v = realOf(t);
        if (v != 1.0 || e->rare) e->rare.make().linetypeScale = v;
      }
      return true;
    case 390:
      if (e) {
        const Handle v = handleOf(t);
        if (v != 0 || e->rare) e->rare.make().plotStyle = v;
      }
      return true;
    default:
      return false;
  }
}

bool isHyperlinkApp(std::string_view name) {
  return equalsIgnoreCaseAscii(name, "PE_URL");
}

void readXdata(const Tag* p, const Tag* end, Entity& e, const TextCodec& codec) {
  while (p < end) {
    const Tag* group = p++;
    while (p < end && p->code != 1001) ++p;
    if (group->code == 1001 && isHyperlinkApp(group->value)) {
      std::vector<Hyperlink> links;
      readHyperlinks(group + 1, p, codec, links);
      if (!links.empty()) {
        auto& into = e.rare.make().hyperlinks;
        for (auto& link : links) into.push_back(std::move(link));
      }
    }
  }
}

}  // namespace

int slotOfMarker(std::string_view marker, int lastKnown, const KindInfo& kind) {
  if (lastKnown < 0 && marker == "AcDbEntity") return 0;
  for (int i = lastKnown < 0 ? 0 : lastKnown; i < kind.subclassCount; ++i) {
    if (sameSubclass(kind.subclasses[i], marker)) return i + 1;
  }
  return kForeignSlot;
}

double realOf(const Tag& tag) {
  const auto v = parseDouble(tag.value);
  if (!v) badValue(tag, "a real number");
  return *v;
}

std::int16_t int16Of(const Tag& tag) {
  return static_cast<std::int16_t>(integerOf(tag, std::numeric_limits<std::int16_t>::min(),
                                             std::numeric_limits<std::int16_t>::max(),
                                             "a 16-bit integer"));
}

std::int32_t int32Of(const Tag& tag) {
  return static_cast<std::int32_t>(integerOf(tag, std::numeric_limits<std::int32_t>::min(),
                                             std::numeric_limits<std::int32_t>::max(),
                                             "a 32-bit integer"));
}

Handle handleOf(const Tag& tag) {
  const auto v = parseHandle(tag.value);
  if (!v) badValue(tag, "a handle");
  return *v;
}

double radiansOf(double degrees) {
  return degrees * kRadiansPerDegree;
}

double degreesOf(double radians) {
  const double degrees = radians / kRadiansPerDegree;
  if (!std::isfinite(degrees)) return degrees;
  double scale = 1.0;
  for (int digits = 0; digits <= 12; ++digits, scale *= 10.0) {
    const double candidate = std::round(degrees * scale) / scale;
    if (radiansOf(candidate) == radians) return candidate;
  }
  return degrees;
}

void decodeInto(const TextCodec& codec, std::string_view bytes, std::wstring& out) {
  if (isPlainAscii(bytes)) {
    out.assign(bytes.begin(), bytes.end());
  } else {
    out = codec.decode(bytes);
  }
}

std::wstring decoded(const TextCodec& codec, std::string_view bytes) {
  std::wstring out;
  decodeInto(codec, bytes, out);
  return out;
}

bool equalsIgnoreCaseAscii(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    char x = a[i];
    char y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 'a' + 'A');
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 'a' + 'A');
    if (x != y) return false;
  }
  return true;
}

void readTags(const Tag* begin, const Tag* end, const KindInfo& kind, Entity* entity,
              ReadContext& context, CommonRead& common, KindTags* kindTags) {
  int slot = kPreSlot;
  int lastKnown = kPreSlot;
  bool sawHandle = false;
  bool sawOwner = false;
  bool sawLayer = false;
  for (const Tag* p = begin + 1; p < end; ++p) {
    const Tag& t = *p;
    switch (t.code) {
      case 100:
        slot = slotOfMarker(t.value, lastKnown, kind);
        if (slot != kForeignSlot) lastKnown = slot;
        continue;
      case 101:
        // An embedded object: its tags are not the entity's own.
        slot = kForeignSlot;
        continue;
      case 102:
        if (!t.value.empty() && t.value.front() == '{') p = readGroup(p, end, common);
        continue;
      case 1001:
        if (entity) readXdata(p, end, *entity, context.codec());
        p = end - 1;
        continue;
      default:
        break;
    }
    if (slot == kForeignSlot) continue;
    if (slot == kPreSlot) {
      if (t.code == 5 && !sawHandle) {
        sawHandle = true;
        common.handle = handleOf(t);
        continue;
      }
      if (t.code == 330 && !sawOwner) {
        sawOwner = true;
        common.owner = handleOf(t);
        continue;
      }
    }
    if (slot <= 0) {
      if (readCommonTag(t, entity, context, common, sawLayer) || slot == 0) continue;
    }
    if (kindTags) kindTags->tag(t, slot);
  }
  if (entity) {
    entity->handle = common.handle;
    if (!sawLayer) entity->layer = context.layer(L"0");
  }
}

const Tag* entityEnd(const Tag* begin, const Tag* end) {
  const Tag* p = begin + 1;
  while (p < end && p->code != 0) ++p;
  return p;
}

Handle handleOfEntity(const Tag* begin, const Tag* end) {
  for (const Tag* p = begin + 1; p < end && p->code != 100; ++p) {
    if (p->code == 5) return handleOf(*p);
  }
  return 0;
}

void readHyperlinks(const Tag* begin, const Tag* end, const TextCodec& codec,
                    std::vector<Hyperlink>& into) {
  // Each URL at the top level starts a link; the braced list after it holds
  // its description and sub-location. Deeper lists are the writer's own.
  int depth = 0;
  int stringsInList = 0;
  for (const Tag* p = begin; p < end; ++p) {
    if (p->code == 1002) {
      if (!p->value.empty() && p->value.front() == '{') {
        if (++depth == 1) stringsInList = 0;
      } else if (depth > 0) {
        --depth;
      }
      continue;
    }
    if (p->code != 1000) continue;
    if (depth == 0) {
      into.emplace_back();
      decodeInto(codec, p->value, into.back().url);
    } else if (depth == 1 && !into.empty()) {
      if (stringsInList == 0) {
        decodeInto(codec, p->value, into.back().description);
      } else if (stringsInList == 1) {
        decodeInto(codec, p->value, into.back().subLocation);
      }
      ++stringsInList;
    }
  }
}

}  // namespace host::dxf::entity
