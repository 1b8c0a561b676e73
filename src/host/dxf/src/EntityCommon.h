// What every entity kind's codec shares: value parsing that reports the line,
// text decoding, the walk over an entity's tags that reads the common
// properties, and the writer that puts a kind's modelled tags and the original
// tags it does not model back into one entity.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "EntityCodec.h"
#include "TagReader.h"
#include "TagWriter.h"
#include "TextCodec.h"
#include "host/db/Entities.h"

namespace host::dxf::entity {

// Where a tag stands in its entity: before any subclass marker, in a subclass
// this host does not model, or in one of the kind's subclasses (0 is
// AcDbEntity, 1.. the kind's own in file order).
inline constexpr int kPreSlot = -1;
inline constexpr int kForeignSlot = -2;

// A kind's subclass markers after AcDbEntity, and which group codes of each it
// models (slot kPreSlot asks about an entity written without markers).
struct KindInfo {
  const std::string_view* subclasses = nullptr;
  int subclassCount = 0;
  bool (*owns)(int code, int slot) = nullptr;
};

// The slot a subclass marker opens, given the last known slot passed.
int slotOfMarker(std::string_view marker, int lastKnown, const KindInfo& kind);

// ---- values ----------------------------------------------------------------

double realOf(const Tag& tag);
std::int16_t int16Of(const Tag& tag);
std::int32_t int32Of(const Tag& tag);
Handle handleOf(const Tag& tag);

// Files keep angles in degrees, the model in radians. The conversion back
// picks the value with the fewest decimals that converts to the same radians,
// so that an angle made from whole degrees is written in whole degrees.
double radiansOf(double degrees);
double degreesOf(double radians);

// Sets a coordinate of p when the tag is one of base, base + 10, base + 20.
inline bool readCoordinate(const Tag& tag, int base, Point3d& p) {
  const int d = tag.code - base;
  if (d == 0) {
    p.x = realOf(tag);
  } else if (d == 10) {
    p.y = realOf(tag);
  } else if (d == 20) {
    p.z = realOf(tag);
  } else {
    return false;
  }
  return true;
}

inline bool isAnyOf(int code, std::initializer_list<int> codes) {
  for (int c : codes) {
    if (c == code) return true;
  }
  return false;
}

inline bool isCoordinate(int code, int base) {
  return code == base || code == base + 10 || code == base + 20;
}

// Room for a count the file announces, but no more than its tags can hold, so
// that a wrong count cannot ask for a huge allocation.
inline std::size_t reserveFor(std::int64_t announced, const Tag* begin, const Tag* end) {
  if (announced <= 0) return 0;
  const auto room = static_cast<std::size_t>(end - begin);
  return static_cast<std::size_t>(announced) < room ? static_cast<std::size_t>(announced) : room;
}

// Decodes a string value into out, reusing out's storage.
void decodeInto(const TextCodec& codec, std::string_view bytes, std::wstring& out);
std::wstring decoded(const TextCodec& codec, std::string_view bytes);

bool equalsIgnoreCaseAscii(std::string_view a, std::string_view b);

// ---- reading -----------------------------------------------------------------

// Receives the tags of a kind's own subclasses (slot 1.. or kPreSlot).
class KindTags {
 public:
  virtual ~KindTags() = default;
  virtual void tag(const Tag& tag, int slot) = 0;
};

// A KindTags that hands each tag to a function.
template <typename F>
class TagsOf final : public KindTags {
 public:
  explicit TagsOf(F f) : f_(std::move(f)) {}
  void tag(const Tag& tag, int slot) override { f_(tag, slot); }

 private:
  F f_;
};

template <typename F>
TagsOf<F> tagsOf(F f) {
  return TagsOf<F>(std::move(f));
}

struct CommonRead {
  Handle handle = 0;
  Handle xdict = 0;
  Handle owner = 0;
  bool paperSpace = false;
};

// Reads the tags of one entity, [begin, end) with begin its group-0 tag: the
// common properties into entity (null for vertices and SEQENDs, which keep
// only their handle) and the hyperlinks of its XDATA; the kind's tags go to
// kindTags.
void readTags(const Tag* begin, const Tag* end, const KindInfo& kind, Entity* entity,
              ReadContext& context, CommonRead& common, KindTags* kindTags);

// The end of the entity that starts at begin: the next group-0 tag, or end.
const Tag* entityEnd(const Tag* begin, const Tag* end);

// The first group-5 handle before any subclass marker, 0 if none.
Handle handleOfEntity(const Tag* begin, const Tag* end);

// ---- writing -----------------------------------------------------------------

// Writes one entity. The kind calls, in order: start, the common subclass,
// each of its subclasses (beginSubclass, values, endSubclass), finish. Given
// the entity's original tags, every original tag the kind does not model is
// written again in its subclass, after the modelled tag it followed there (or
// at the end of the subclass when that tag is no longer written); subclasses
// the kind does not know keep their place among the kind's, and XDATA other
// than hyperlinks follows in its order. A numeric value equal to the original
// tag's is written with the original text, so an unchanged value keeps its
// formatting.
class EntityWriter {
 public:
  // subEntity: a vertex or SEQEND, whose common properties follow its parent
  // but for the layer and paper space.
  EntityWriter(TagWriter& out, WriteContext& context, const KindInfo& kind, const Tag* begin,
               const Tag* end, bool subEntity = false);
  EntityWriter(const EntityWriter&) = delete;
  EntityWriter& operator=(const EntityWriter&) = delete;

  // xdict: the extension dictionary the model gives (0 none); nullopt for one
  // the model does not know, whose original group is then kept.
  void start(std::string_view dxfName, Handle handle, std::optional<Handle> xdict, Handle owner);
  void writeCommon(const Entity& entity, bool paperSpace);
  // For vertices and SEQENDs: the parent's layer, already encoded.
  void writeSubEntityCommon(std::string_view layer, bool paperSpace);
  void beginSubclass(int slot, std::string_view marker);
  void endSubclass();
  // links: the hyperlinks the entity models; null when its XDATA is all kept
  // as it was.
  void finish(const std::vector<Hyperlink>* links);

  // Values of the open subclass.
  void real(int code, double value);
  void angle(int code, double radians);
  void integer(int code, std::int64_t value);
  void handle(int code, Handle value);
  void text(int code, std::wstring_view value);
  void raw(int code, std::string_view value);
  void point(int code, const Point3d& p);
  // 210 when it is not +Z or the original subclass had it.
  void normal(const Point3d& n);

  // Whether the original's open subclass holds the code, and its first such tag.
  bool has(int code) const { return originalTag(code) != nullptr; }
  const Tag* originalTag(int code) const;
  // The open subclass's original tags (empty without an original).
  const Tag* sectionBegin() const { return curBegin_; }
  const Tag* sectionEnd() const { return curEnd_; }
  // The first tag of the code among the original's common tags (before any
  // marker or in AcDbEntity).
  const Tag* originalEntityTag(int code) const;

  WriteContext& context() { return context_; }

 private:
  struct Section {
    const Tag* marker = nullptr;  // the 100 or 101 tag
    const Tag* begin = nullptr;
    const Tag* end = nullptr;
    int slot = kForeignSlot;
  };
  // Original tags not modelled, to be written after the modelled tag
  // (code, occurrence) they followed; code kStartAnchor: right after the marker.
  struct Run {
    int anchorCode = 0;
    int anchorOccurrence = 0;
    const Tag* begin = nullptr;
    const Tag* end = nullptr;
    bool done = false;
  };
  // Per group code of the open subclass: how many were written and the last
  // original tag matched to one of them.
  struct CodeState {
    int code = 0;
    int written = 0;
    const Tag* lastOriginal = nullptr;
  };
  static constexpr int kStartAnchor = -1;
  static constexpr int kNoAnchor = -3;
  static constexpr int kMaxCodes = 40;

  bool ownsTag(int code, int slot) const;
  void splitOriginal();
  void flushSections(std::size_t upTo);
  void writeVerbatim(const Tag* begin, const Tag* end);
  void writeXdictGroup(Handle xdict, const Tag* original);
  CodeState* stateOf(int code);
  const Tag* nextOriginal(int code);
  void emitted(int code);
  void emitDeferred();
  void writeHyperlinks(const std::vector<Hyperlink>& links);

  TagWriter& out_;
  WriteContext& context_;
  const KindInfo& kind_;
  const Tag* begin_;
  const Tag* end_;
  bool subEntity_;
  bool markerless_ = true;

  const Tag* preEnd_ = nullptr;
  const Tag* xdataBegin_ = nullptr;
  std::vector<Section> sections_;
  std::size_t nextSection_ = 0;
  std::vector<const Tag*> deferred_;  // unmodelled tags of an entity without markers
  bool deferredDone_ = false;

  int slot_ = kForeignSlot;
  const Tag* curBegin_ = nullptr;
  const Tag* curEnd_ = nullptr;
  std::vector<Run> runs_;
  std::size_t pendingRuns_ = 0;
  CodeState codes_[kMaxCodes];
  int codeCount_ = 0;
};

// The hyperlinks of a PE_URL XDATA group, [begin, end) after its 1001 tag.
void readHyperlinks(const Tag* begin, const Tag* end, const TextCodec& codec,
                    std::vector<Hyperlink>& into);

}  // namespace host::dxf::entity
