// Writing an entity: the standard structure from the model, with the original
// tags the model does not keep put back where they stood.
#include "EntityCommon.h"

#include <algorithm>

#include "GroupCodes.h"

namespace host::dxf::entity {
namespace {

bool isCommonCode(int code) {
  return isAnyOf(code, {67, 8, 6, 62, 370, 48, 60, 420, 430, 440, 390});
}

bool opensGroup(const Tag& t) {
  return !t.value.empty() && t.value.front() == '{';
}

// The closing tag of the 102 group opened at p, or the last tag before end.
const Tag* groupEnd(const Tag* p, const Tag* end) {
  int depth = 0;
  for (; p < end; ++p) {
    if (p->code != 102) continue;
    depth += opensGroup(*p) ? 1 : -1;
    if (depth <= 0) return p;
  }
  return end - 1;
}

bool sameLinks(const std::vector<Hyperlink>& a, const std::vector<Hyperlink>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i].url != b[i].url || a[i].description != b[i].description ||
        a[i].subLocation != b[i].subLocation) {
      return false;
    }
  }
  return true;
}

// A value must stay on its line.
std::string oneLine(std::string bytes) {
  std::replace_if(
      bytes.begin(), bytes.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return bytes;
}

}  // namespace

EntityWriter::EntityWriter(TagWriter& out, WriteContext& context, const KindInfo& kind,
                           const Tag* begin, const Tag* end, bool subEntity)
    : out_(out),
      context_(context),
      kind_(kind),
      begin_(begin != end ? begin : nullptr),
      end_(begin != end ? end : nullptr),
      subEntity_(subEntity) {
  if (begin_) splitOriginal();
}

void EntityWriter::splitOriginal() {
  const Tag* p = begin_ + 1;
  while (p < end_ && p->code != 100 && p->code != 101 && p->code != 1001) {
    if (p->code == 102 && opensGroup(*p)) p = groupEnd(p, end_);
    ++p;
  }
  preEnd_ = p;
  int lastKnown = kPreSlot;
  while (p < end_ && p->code != 1001) {
    Section section;
    section.marker = p;
    if (p->code == 100) {
      markerless_ = false;
      section.slot = slotOfMarker(p->value, lastKnown, kind_);
      if (section.slot != kForeignSlot) lastKnown = section.slot;
    }
    ++p;
    section.begin = p;
    while (p < end_ && p->code != 100 && p->code != 101 && p->code != 1001) {
      if (p->code == 102 && opensGroup(*p)) p = groupEnd(p, end_);
      ++p;
    }
    section.end = p;
    sections_.push_back(section);
  }
  xdataBegin_ = p;
}

bool EntityWriter::ownsTag(int code, int slot) const {
  if (slot == 0 || slot == kPreSlot) {
    const bool common = subEntity_ ? code == 8 || code == 67 : isCommonCode(code);
    if (common) return true;
    // Before the markers the reader gives the kind what it models.
    if (slot == 0) return false;
    return kind_.owns && kind_.owns(code, kPreSlot);
  }
  return slot > 0 && kind_.owns && kind_.owns(code, slot);
}

void EntityWriter::writeVerbatim(const Tag* begin, const Tag* end) {
  for (const Tag* p = begin; p < end; ++p) out_.write(p->code, p->value);
}

void EntityWriter::writeXdictGroup(Handle xdict, const Tag* original) {
  out_.write(102, "{ACAD_XDICTIONARY");
  const auto same = original ? parseHandle(original->value) : std::nullopt;
  if (same && *same == xdict) {
    out_.write(360, original->value);
  } else {
    out_.writeHandle(360, xdict);
  }
  out_.write(102, "}");
}

void EntityWriter::start(std::string_view dxfName, Handle handle, std::optional<Handle> xdict,
                         Handle owner) {
  out_.write(0, dxfName);
  bool hadHandle = false;
  if (begin_) {
    for (const Tag* p = begin_ + 1; p < preEnd_; ++p) {
      if (p->code == 102 && opensGroup(*p)) {
        p = groupEnd(p, preEnd_);
      } else if (p->code == 5) {
        hadHandle = true;
        break;
      }
    }
  }
  if (handle != 0 && !hadHandle) out_.writeHandle(5, handle);
  bool handleDone = false;
  bool xdictDone = !xdict || *xdict == 0;
  bool ownerDone = false;
  const auto writeHandleLike = [&](int code, Handle value, const Tag& original) {
    const auto same = parseHandle(original.value);
    if (same && *same == value) {
      out_.write(code, original.value);
    } else {
      out_.writeHandle(code, value);
    }
  };
  if (begin_) {
    for (const Tag* p = begin_ + 1; p < preEnd_; ++p) {
      const Tag& t = *p;
      if (t.code == 102 && opensGroup(t)) {
        const Tag* close = groupEnd(p, preEnd_);
        if (t.value == "{ACAD_XDICTIONARY" && xdict) {
          if (!xdictDone) {
            const Tag* old = nullptr;
            for (const Tag* q = p + 1; q < close && !old; ++q) {
              if (q->code == 360) old = q;
            }
            writeXdictGroup(*xdict, old);
            xdictDone = true;
          }
        } else {
          writeVerbatim(p, close + 1);
        }
        p = close;
      } else if (t.code == 5 && !handleDone) {
        handleDone = true;
        if (handle != 0) writeHandleLike(5, handle, t);
      } else if (t.code == 330 && !ownerDone) {
        if (!xdictDone) writeXdictGroup(*xdict, nullptr);
        xdictDone = true;
        ownerDone = true;
        writeHandleLike(330, owner, t);
      } else if (ownsTag(t.code, kPreSlot)) {
        // Written in its subclass.
      } else if (markerless_) {
        deferred_.push_back(p);
      } else {
        out_.write(t.code, t.value);
      }
    }
  }
  if (!xdictDone) writeXdictGroup(*xdict, nullptr);
  if (!ownerDone) out_.writeHandle(330, owner);
}

void EntityWriter::writeCommon(const Entity& e, bool paperSpace) {
  beginSubclass(0, "AcDbEntity");
  if (paperSpace || has(67)) integer(67, paperSpace ? 1 : 0);
  const std::wstring layer = context_.layerName(e.layer);
  text(8, layer.empty() ? std::wstring_view(L"0") : std::wstring_view(layer));
  if (!e.linetype().isNull()) {
    text(6, context_.linetypeName(e.linetype()));
  } else if (const Tag* t = originalTag(6); t && equalsIgnoreCaseAscii(t->value, "BYLAYER")) {
    raw(6, t->value);
  }
  if (e.color != kColorByLayer || has(62)) integer(62, e.color);
  if (e.lineweight != kLineweightByLayer || has(370)) integer(370, e.lineweight);
  const RareProperties* rare = e.rare.get();
  const double scale = rare ? rare->linetypeScale : 1.0;
  if (scale != 1.0 || has(48)) real(48, scale);
  if (e.invisible || has(60)) integer(60, e.invisible ? 1 : 0);
  if (rare) {
    if (rare->trueColor != -1) integer(420, rare->trueColor);
    if (!rare->colorName.empty()) text(430, rare->colorName);
    if (rare->transparency != -1) integer(440, rare->transparency);
    if (rare->plotStyle != 0) handle(390, rare->plotStyle);
  }
  endSubclass();
}

void EntityWriter::writeSubEntityCommon(std::string_view layer, bool paperSpace) {
  beginSubclass(0, "AcDbEntity");
  if (paperSpace || has(67)) integer(67, paperSpace ? 1 : 0);
  raw(8, layer.empty() ? std::string_view("0") : layer);
  endSubclass();
}

void EntityWriter::flushSections(std::size_t upTo) {
  for (std::size_t k = nextSection_; k < upTo && k < sections_.size(); ++k) {
    writeVerbatim(sections_[k].marker, sections_[k].end);
  }
  nextSection_ = std::max(nextSection_, upTo);
}

EntityWriter::CodeState* EntityWriter::stateOf(int code) {
  for (int i = 0; i < codeCount_; ++i) {
    if (codes_[i].code == code) return &codes_[i];
  }
  if (codeCount_ == kMaxCodes) return nullptr;
  codes_[codeCount_] = CodeState{code, 0, nullptr};
  return &codes_[codeCount_++];
}

void EntityWriter::beginSubclass(int slot, std::string_view marker) {
  curBegin_ = curEnd_ = nullptr;
  for (std::size_t k = nextSection_; k < sections_.size(); ++k) {
    if (sections_[k].slot != slot) continue;
    flushSections(k);
    nextSection_ = k + 1;
    curBegin_ = sections_[k].begin;
    curEnd_ = sections_[k].end;
    break;
  }
  slot_ = slot;
  out_.write(100, marker);

  runs_.clear();
  codeCount_ = 0;
  int anchor = kStartAnchor;
  int occurrence = 0;
  int depth = 0;
  for (const Tag* p = curBegin_; p < curEnd_; ++p) {
    bool kept = true;
    if (p->code == 102) {
      depth += opensGroup(*p) ? 1 : (depth > 0 ? -1 : 0);
    } else if (depth == 0) {
      kept = !ownsTag(p->code, slot);
    }
    if (!kept) {
      CodeState* state = stateOf(p->code);
      anchor = state ? p->code : kNoAnchor;
      occurrence = state ? state->written++ : 0;
      continue;
    }
    if (!runs_.empty() && runs_.back().end == p) {
      runs_.back().end = p + 1;
    } else {
      runs_.push_back(Run{anchor, occurrence, p, p + 1, false});
    }
  }
  // The counts above were the original's; from here they count what is written.
  for (int i = 0; i < codeCount_; ++i) codes_[i].written = 0;
  pendingRuns_ = runs_.size();
  for (Run& run : runs_) {
    if (run.anchorCode != kStartAnchor) break;
    writeVerbatim(run.begin, run.end);
    run.done = true;
    --pendingRuns_;
  }
}

void EntityWriter::endSubclass() {
  for (Run& run : runs_) {
    if (!run.done) writeVerbatim(run.begin, run.end);
  }
  runs_.clear();
  pendingRuns_ = 0;
  if (slot_ == 1 || (slot_ == 0 && kind_.subclassCount == 0)) emitDeferred();
  curBegin_ = curEnd_ = nullptr;
  codeCount_ = 0;
}

void EntityWriter::emitDeferred() {
  if (deferredDone_) return;
  deferredDone_ = true;
  for (const Tag* t : deferred_) out_.write(t->code, t->value);
}

const Tag* EntityWriter::nextOriginal(int code) {
  if (curBegin_ == curEnd_) return nullptr;
  CodeState* state = stateOf(code);
  if (!state) return nullptr;
  const Tag* p = state->lastOriginal ? state->lastOriginal + 1 : curBegin_;
  while (p < curEnd_ && p->code != code) ++p;
  if (p == curEnd_) {
    state->lastOriginal = curEnd_ - 1;
    return nullptr;
  }
  state->lastOriginal = p;
  return p;
}

void EntityWriter::emitted(int code) {
  if (curBegin_ == curEnd_) return;
  CodeState* state = stateOf(code);
  if (!state) return;
  const int occurrence = state->written++;
  if (pendingRuns_ == 0) return;
  for (Run& run : runs_) {
    if (!run.done && run.anchorCode == code && run.anchorOccurrence == occurrence) {
      writeVerbatim(run.begin, run.end);
      run.done = true;
      --pendingRuns_;
    }
  }
}

void EntityWriter::real(int code, double value) {
  const Tag* original = nextOriginal(code);
  const auto same = original ? parseDouble(original->value) : std::nullopt;
  if (same && *same == value) {
    out_.write(code, original->value);
  } else {
    out_.write(code, value);
  }
  emitted(code);
}

void EntityWriter::angle(int code, double radians) {
  const Tag* original = nextOriginal(code);
  const auto same = original ? parseDouble(original->value) : std::nullopt;
  if (same && radiansOf(*same) == radians) {
    out_.write(code, original->value);
  } else {
    out_.write(code, degreesOf(radians));
  }
  emitted(code);
}

void EntityWriter::integer(int code, std::int64_t value) {
  const Tag* original = nextOriginal(code);
  const auto same = original ? parseInt(original->value) : std::nullopt;
  if (same && *same == value) {
    out_.write(code, original->value);
  } else {
    out_.write(code, value);
  }
  emitted(code);
}

void EntityWriter::handle(int code, Handle value) {
  const Tag* original = nextOriginal(code);
  const auto same = original ? parseHandle(original->value) : std::nullopt;
  if (same && *same == value) {
    out_.write(code, original->value);
  } else {
    out_.writeHandle(code, value);
  }
  emitted(code);
}

void EntityWriter::text(int code, std::wstring_view value) {
  std::string bytes = context_.codec().encode(value);
  if (bytes.find_first_of("\r\n") != std::string::npos) bytes = oneLine(std::move(bytes));
  out_.write(code, bytes);
  emitted(code);
}

void EntityWriter::raw(int code, std::string_view value) {
  out_.write(code, value);
  emitted(code);
}

void EntityWriter::point(int code, const Point3d& p) {
  real(code, p.x);
  real(code + 10, p.y);
  real(code + 20, p.z);
}

void EntityWriter::normal(const Point3d& n) {
  if (n != kUnitZ || has(210)) point(210, n);
}

const Tag* EntityWriter::originalTag(int code) const {
  for (const Tag* p = curBegin_; p < curEnd_; ++p) {
    if (p->code == code) return p;
  }
  return nullptr;
}

const Tag* EntityWriter::originalEntityTag(int code) const {
  if (!begin_) return nullptr;
  for (const Tag* p = begin_ + 1; p < preEnd_; ++p) {
    if (p->code == code) return p;
  }
  for (const Section& section : sections_) {
    if (section.slot != 0) continue;
    for (const Tag* p = section.begin; p < section.end; ++p) {
      if (p->code == code) return p;
    }
  }
  return nullptr;
}

void EntityWriter::writeHyperlinks(const std::vector<Hyperlink>& links) {
  const TextCodec& codec = context_.codec();
  out_.write(1001, "PE_URL");
  for (const Hyperlink& link : links) {
    out_.write(1000, oneLine(codec.encode(link.url)));
    if (link.description.empty() && link.subLocation.empty()) continue;
    out_.write(1002, "{");
    out_.write(1000, oneLine(codec.encode(link.description)));
    if (!link.subLocation.empty()) out_.write(1000, oneLine(codec.encode(link.subLocation)));
    out_.write(1002, "}");
  }
}

void EntityWriter::finish(const std::vector<Hyperlink>* links) {
  flushSections(sections_.size());
  emitDeferred();
  static const std::vector<Hyperlink> kNone;
  const std::vector<Hyperlink>& wanted = links ? *links : kNone;
  bool linksDone = links == nullptr || wanted.empty();
  bool originalLinksSeen = false;
  if (begin_) {
    const Tag* p = xdataBegin_;
    while (p < end_) {
      const Tag* group = p++;
      while (p < end_ && p->code != 1001) ++p;
      if (links && group->code == 1001 && equalsIgnoreCaseAscii(group->value, "PE_URL")) {
        if (originalLinksSeen) continue;
        originalLinksSeen = true;
        std::vector<Hyperlink> old;
        readHyperlinks(group + 1, p, context_.codec(), old);
        if (sameLinks(old, wanted)) {
          writeVerbatim(group, p);
          linksDone = true;
        } else if (!wanted.empty()) {
          writeHyperlinks(wanted);
          linksDone = true;
        }
        continue;
      }
      writeVerbatim(group, p);
    }
  }
  if (!linksDone) writeHyperlinks(wanted);
}

}  // namespace host::dxf::entity
