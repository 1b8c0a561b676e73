// The writer follows the image of the file part by part. Objects that did not
// change since they were read are copied from the source text; changed ones
// are written from the database, keeping what the host does not model.
#include "host/dxf/DrawingWriter.h"

#include <algorithm>
#include <deque>
#include <optional>

#include "CopiedText.h"
#include "DrawingCheck.h"
#include "EntityCodec.h"
#include "ErasedReferences.h"
#include "FileImage.h"
#include "GroupCodes.h"
#include "ObjectDataXrecords.h"
#include "TagReader.h"
#include "host/db/PortObjectData.h"

namespace host::dxf {
namespace {

constexpr const wchar_t* kOdTablesEntry = L"ZARVEL_OD_TABLES";
constexpr const wchar_t* kOdEntry = L"ZARVEL_OD";
constexpr const char* kAppName = "ZARVEL";

// The tags of a span of the source, whose values point into the source.
std::vector<Tag> tagsOf(std::string_view text) {
  std::vector<Tag> tags;
  TagReader reader(text);
  while (auto tag = reader.next()) tags.push_back(*tag);
  return tags;
}

bool isEntryTag(const std::vector<Tag>& tags, std::size_t i) {
  return tags[i].code == 3 && i + 1 < tags.size() &&
         (tags[i + 1].code == 350 || tags[i + 1].code == 360);
}

class Writer : public WriteContext {
 public:
  Writer(Database& db, FileImage& image, const ProgressFunction& progress)
      : db_(db), image_(image), progress_(progress), out_(text_, image.lineEnd) {}

  std::string run();

  // --- WriteContext --------------------------------------------------------
  const TextCodec& codec() const override { return image_.codec; }
  Handle handleOf(ObjectId id) const override {
    const DbObject* o = db_.object(id);
    return o != nullptr ? o->handle : 0;
  }
  std::wstring layerName(ObjectId id) const override {
    const Layer* l = db_.get<Layer>(id);
    return l != nullptr ? l->name : L"0";
  }
  std::wstring linetypeName(ObjectId id) const override {
    const TaggedObject* t = db_.get<TaggedObject>(id);
    return t != nullptr ? t->name : L"ByLayer";
  }
  std::wstring blockName(ObjectId id) const override {
    const BlockRecord* b = db_.get<BlockRecord>(id);
    return b != nullptr ? b->name : std::wstring();
  }
  const Entity* entity(ObjectId id) const override { return db_.entity(id); }

 private:
  std::string_view source(const DbObject& o) const { return db_.sourceText(o); }
  std::string_view span(const SourceSpan& s) const {
    return std::string_view(*image_.text).substr(s.offset, s.length);
  }
  void progress();
  void prepare();

  void writeHeader(const FileImage::Part& part);
  void writeTables(const FileImage::Part& part);
  void writeLayer(ObjectId id, Handle table);
  void writeBlockRecord(ObjectId id, Handle table);
  void writeBlocks(const FileImage::Part& part);
  void writeEntities(const FileImage::Part& part);
  void writeEntityText(ObjectId id);
  void writeObjects(const FileImage::Part& part);
  void writeObject(ObjectId id);
  void writeTagged(const TaggedObject& o);
  void writeCopied(const TaggedObject& o, std::string_view text);
  void writeOdXrecord(ObjectId dictionary);
  void writeDictionary(const DbObject& dict, const std::vector<DictEntry>& entries,
                       Handle owner, bool hardOwner);
  void writeXrecordStart(Handle handle, Handle owner);

  bool alive(ObjectId id) const;
  bool odTablesDictionaryWritten() const;
  bool writtenInEntities(ObjectId id, const Entity& e) const;
  std::vector<DictEntry> odTableEntries(const std::vector<DictEntry>& before) const;
  const FileImage::Table* table(std::string_view name) const;

  Database& db_;
  FileImage& image_;
  const ProgressFunction& progress_;
  std::string text_;
  TagWriter out_;
  bool needAppId_ = false;
  // Whether any object is erased, once something asks.
  std::optional<bool> erasedAny_;
  std::uint64_t step_ = 0;
};

void Writer::progress() {
  if (progress_ && (++step_ & 0xFFFF) == 0) {
    progress_(static_cast<double>(step_) / static_cast<double>(db_.idCount() + 1));
  }
}

const FileImage::Table* Writer::table(std::string_view name) const {
  for (const auto& t : image_.tables) {
    if (t.name == name) return &t;
  }
  return nullptr;
}

std::vector<DictEntry> Writer::odTableEntries(const std::vector<DictEntry>& before) const {
  std::vector<std::pair<std::wstring, Handle>> tables;
  for (ObjectId id : db_.odTableIds()) {
    tables.emplace_back(db_.odTable(id)->name, db_.odTable(id)->handle);
  }
  std::sort(tables.begin(), tables.end());
  // Entries that still name their table keep their place; new tables follow.
  std::vector<DictEntry> entries;
  for (const DictEntry& e : before) {
    auto it = std::find(tables.begin(), tables.end(), std::make_pair(e.name, e.handle));
    if (it != tables.end()) {
      entries.push_back(e);
      tables.erase(it);
    }
  }
  for (auto& [name, handle] : tables) entries.push_back({name, handle, 350});
  return entries;
}

void Writer::prepare() {
  // Objects the file must gain get their handles before the header is
  // written, so that its handle seed covers them.
  if (!db_.odTableIds().empty() && image_.odTablesDictionary.isNull()) {
    auto dict = std::make_unique<Dictionary>();
    dict->handle = db_.takeHandle();
    dict->owner = image_.rootDictionary;
    image_.odTablesDictionary = db_.addLoaded(std::move(dict));
  }
  for (ObjectId id : db_.layerIds()) {
    const Layer& layer = *db_.get<Layer>(id);
    needAppId_ = needAppId_ || layer.hidden;
    // A layer made for a name the file's table lacked gets its handle when it
    // first goes into the file.
    if (layer.handle == 0 && layer.modified) {
      db_.loadingObject(id)->handle = db_.takeHandle();
      db_.reindexHandles();
    }
  }
  if (needAppId_) {
    if (const FileImage::Table* appids = table("APPID")) {
      for (ObjectId id : appids->records) {
        const TaggedObject* t = db_.get<TaggedObject>(id);
        if (t != nullptr && t->name == L"ZARVEL") needAppId_ = false;
      }
    }
  }
  if (needAppId_ && image_.appIdHandle == 0) image_.appIdHandle = db_.takeHandle();
}

std::string Writer::run() {
  prepare();
  text_.reserve(image_.text->size() + image_.text->size() / 8);
  for (const FileImage::Part& part : image_.parts) {
    switch (part.kind) {
      case FileImage::PartKind::Verbatim: out_.writeRaw(span(part.text)); break;
      case FileImage::PartKind::Header: writeHeader(part); break;
      case FileImage::PartKind::Tables: writeTables(part); break;
      case FileImage::PartKind::Blocks: writeBlocks(part); break;
      case FileImage::PartKind::Entities: writeEntities(part); break;
      case FileImage::PartKind::Objects: writeObjects(part); break;
    }
  }
  return std::move(text_);
}

// --- Header -----------------------------------------------------------------

void Writer::writeHeader(const FileImage::Part& part) {
  const std::string_view text = span(part.text);
  const std::vector<Tag> tags = tagsOf(text);
  const DatabaseHeader& header = db_.header();
  std::size_t copied = 0;
  bool sawSeed = false;
  // Replaces the value tag at index i, if the drawing's value differs.
  auto replace = [&](std::size_t i, auto write) {
    const std::size_t end = i + 1 < tags.size() ? tags[i + 1].offset : text.size();
    out_.writeRaw(text.substr(copied, tags[i].offset - copied));
    write(tags[i].code);
    copied = end;
  };
  for (std::size_t i = 0; i + 1 < tags.size(); ++i) {
    if (tags[i].code != 9) continue;
    const std::string_view name = tags[i].value;
    const Tag& value = tags[i + 1];
    if (name == "$HANDSEED") {
      sawSeed = true;
      if (parseHandle(value.value) != db_.nextHandle()) {
        replace(i + 1, [&](int code) { out_.writeHandle(code, db_.nextHandle()); });
      }
    } else if (name == "$CLAYER") {
      const std::wstring current = layerName(header.currentLayer);
      if (codec().decode(value.value) != current) {
        replace(i + 1, [&](int code) { out_.write(code, codec().encode(current)); });
      }
    } else if (name == "$LUPREC") {
      if (parseInt(value.value) != header.luprec) {
        replace(i + 1, [&](int code) { out_.write(code, static_cast<int>(header.luprec)); });
      }
    } else if (name == "$TEXTSIZE") {
      if (parseDouble(value.value) != header.textSize) {
        replace(i + 1, [&](int code) { out_.write(code, header.textSize); });
      }
    }
  }
  if (!sawSeed && !tags.empty()) {
    // Before the header's ENDSEC.
    const std::size_t endsec = tags.back().offset;
    out_.writeRaw(text.substr(copied, endsec - copied));
    out_.write(9, "$HANDSEED");
    out_.writeHandle(5, db_.nextHandle());
    copied = endsec;
  }
  out_.writeRaw(text.substr(copied));
}

// --- Tables -------------------------------------------------------------------

void Writer::writeTables(const FileImage::Part& part) {
  out_.writeRaw(span(part.head));
  for (const FileImage::Table& t : image_.tables) {
    out_.writeRaw(span(t.head));
    if (t.name == "LAYER") {
      for (ObjectId id : db_.layerIds()) writeLayer(id, t.handle);
    } else if (t.name == "BLOCK_RECORD") {
      for (ObjectId id : db_.blockIds()) writeBlockRecord(id, t.handle);
    } else {
      for (ObjectId id : t.records) {
        const DbObject* o = db_.object(id);
        if (o != nullptr && !o->erased) out_.writeRaw(source(*o));
      }
      if (t.name == "APPID" && needAppId_) {
        out_.write(0, "APPID");
        out_.writeHandle(5, image_.appIdHandle);
        out_.writeHandle(330, t.handle);
        out_.write(100, "AcDbSymbolTableRecord");
        out_.write(100, "AcDbRegAppTableRecord");
        out_.write(2, kAppName);
        out_.write(70, 0);
      }
    }
    out_.writeRaw(span(t.tail));
  }
  out_.writeRaw(span(part.tail));
}

void Writer::writeLayer(ObjectId id, Handle tableHandle) {
  const Layer& layer = *db_.get<Layer>(id);
  if (!layer.source.empty() && !layer.modified) {
    out_.writeRaw(source(layer));
    return;
  }
  // A layer that entities of the file named but its table lacked stays out of
  // the table, as it was, until the user changes it.
  if (layer.source.empty() && !layer.modified && id.value() <= image_.loadedIdCount) return;
  const std::int16_t color = static_cast<std::int16_t>(layer.off ? -layer.color : layer.color);
  auto stateFlags = [&](std::int64_t flags) {
    flags &= ~std::int64_t{1 | 4};
    return flags | (layer.frozen ? 1 : 0) | (layer.locked ? 4 : 0);
  };
  if (!layer.source.empty()) {
    // Only the states change on a layer read from a file; every other tag stays.
    const std::vector<Tag> tags = tagsOf(source(layer));
    bool inOurXdata = false;
    for (const Tag& t : tags) {
      if (t.code == 1001) inOurXdata = t.value == kAppName;
      if (inOurXdata) continue;
      if (t.code == 70) {
        out_.write(70, stateFlags(parseInt(t.value).value_or(0)));
      } else if (t.code == 62) {
        out_.write(62, color);
      } else {
        out_.write(t.code, t.value);
      }
    }
  } else {
    out_.write(0, "LAYER");
    out_.writeHandle(5, layer.handle);
    out_.writeHandle(330, tableHandle);
    out_.write(100, "AcDbSymbolTableRecord");
    out_.write(100, "AcDbLayerTableRecord");
    out_.write(2, codec().encode(layer.name));
    out_.write(70, stateFlags(0));
    out_.write(62, color);
    if (layer.trueColor != -1) out_.write(420, layer.trueColor);
    out_.write(6, codec().encode(layer.linetype.isNull() ? std::wstring(L"Continuous")
                                                         : linetypeName(layer.linetype)));
    out_.write(370, layer.lineweight);
  }
  if (layer.hidden) {
    out_.write(1001, kAppName);
    out_.write(1070, 1);
  }
}

void Writer::writeBlockRecord(ObjectId id, Handle tableHandle) {
  const BlockRecord& block = *db_.get<BlockRecord>(id);
  if (!block.source.empty() && !block.modified) {
    out_.writeRaw(source(block));
    return;
  }
  out_.write(0, "BLOCK_RECORD");
  out_.writeHandle(5, block.handle);
  out_.writeHandle(330, tableHandle);
  out_.write(100, "AcDbSymbolTableRecord");
  out_.write(100, "AcDbBlockTableRecord");
  out_.write(2, codec().encode(block.name));
}

// --- Blocks and entities ----------------------------------------------------------

bool Writer::writtenInEntities(ObjectId id, const Entity& e) const {
  const bool inLayout = e.owner == db_.modelSpace() || e.owner == db_.paperSpace();
  if (id.value() <= image_.loadedIdCount) {
    // One read there goes back there, unless it has since been moved into a block definition.
    const bool readThere =
        id.value() < image_.inEntitiesSection.size() && image_.inEntitiesSection[id.value()];
    return readThere && (inLayout || !e.modified);
  }
  return inLayout;
}

void Writer::writeBlocks(const FileImage::Part& part) {
  out_.writeRaw(span(part.head));
  std::vector<ObjectId> order = image_.blockOrder;
  for (ObjectId id : db_.blockIds()) {
    if (image_.blockTexts.count(id.value()) == 0) order.push_back(id);
  }
  for (ObjectId blockId : order) {
    const BlockRecord* block = db_.get<BlockRecord>(blockId);
    if (block == nullptr || block->erased) continue;
    auto text = image_.blockTexts.find(blockId.value());
    const bool hasText = text != image_.blockTexts.end();
    if (hasText) {
      out_.writeRaw(span(text->second.begin));
    } else {
      out_.write(0, "BLOCK");
      out_.writeHandle(5, block->beginHandle);
      out_.writeHandle(330, block->handle);
      out_.write(100, "AcDbEntity");
      out_.write(8, "0");
      out_.write(100, "AcDbBlockBegin");
      out_.write(2, codec().encode(block->name));
      out_.write(70, block->flags);
      out_.write(10, block->basePoint.x);
      out_.write(20, block->basePoint.y);
      out_.write(30, block->basePoint.z);
      out_.write(3, codec().encode(block->name));
      out_.write(1, "");
    }
    for (ObjectId id : db_.blockEntities(blockId)) {
      if (!writtenInEntities(id, *db_.entity(id))) writeEntityText(id);
    }
    if (hasText) {
      out_.writeRaw(span(text->second.end));
    } else {
      out_.write(0, "ENDBLK");
      out_.writeHandle(5, block->endHandle);
      out_.writeHandle(330, block->handle);
      out_.write(100, "AcDbEntity");
      out_.write(8, "0");
      out_.write(100, "AcDbBlockEnd");
    }
  }
  out_.writeRaw(span(part.tail));
}

void Writer::writeEntities(const FileImage::Part& part) {
  out_.writeRaw(span(part.head));
  for (std::uint64_t i = 1; i <= db_.idCount(); ++i) {
    const ObjectId id(i);
    const Entity* e = db_.entity(id);
    if (e != nullptr && writtenInEntities(id, *e)) writeEntityText(id);
    progress();
  }
  out_.writeRaw(span(part.tail));
}

// The handle of the extension dictionary an entity's text names, 0 for none;
// and where its reference group starts and ends.
struct XdictGroup {
  Handle handle = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
};

XdictGroup findXdictGroup(const std::vector<Tag>& tags, std::string_view text) {
  for (std::size_t i = 0; i + 3 < tags.size(); ++i) {
    if (tags[i].code == 102 && tags[i].value == "{ACAD_XDICTIONARY" && tags[i + 1].code == 360) {
      const std::size_t end = i + 3 < tags.size() ? tags[i + 3].offset : text.size();
      return {parseHandle(tags[i + 1].value).value_or(0), tags[i].offset, end};
    }
    if (tags[i].code == 100) break;  // past the groups that come before the subclasses
  }
  return {};
}

void Writer::writeEntityText(ObjectId id) {
  const Entity& e = *db_.entity(id);
  const Handle owner = handleOf(e.owner);
  bool attributesChanged = false;
  if (e.kind() == EntityKind::BlockReference) {
    for (ObjectId a : static_cast<const BlockReferenceEntity&>(e).attributes) {
      const DbObject* attribute = db_.object(a);
      attributesChanged = attributesChanged || (attribute != nullptr && attribute->modified);
    }
  }
  const std::string_view text = source(e);
  if (!text.empty() && id.value() > image_.loadedIdCount) {
    // Made since the file was read, yet with text from it: a copy.
    std::deque<std::string> storage;
    const std::vector<Tag> copied = tagsForCopy(tagsOf(text), e, *this, storage);
    writeEntity(e, owner, out_, *this, &copied);
    return;
  }
  if (!text.empty() && !e.modified && !attributesChanged) {
    // The text names the dictionary the entity was read with; only one made
    // since needs its group written in.
    if (e.xdict.isNull() || e.xdict.value() <= image_.loadedIdCount) {
      out_.writeRaw(text);
      return;
    }
    const std::vector<Tag> tags = tagsOf(text);
    const XdictGroup group = findXdictGroup(tags, text);
    std::size_t cut = group.begin;
    std::size_t resume = group.end;
    if (group.handle == 0) {
      // The group goes right after the handle.
      cut = resume = tags.size() > 2 ? tags[2].offset : text.size();
    }
    out_.writeRaw(text.substr(0, cut));
    out_.write(102, "{ACAD_XDICTIONARY");
    out_.writeHandle(360, handleOf(e.xdict));
    out_.write(102, "}");
    out_.writeRaw(text.substr(resume));
    return;
  }
  if (!text.empty()) {
    const std::vector<Tag> original = tagsOf(text);
    writeEntity(e, owner, out_, *this, &original);
  } else {
    writeEntity(e, owner, out_, *this, nullptr);
  }
}

// --- Objects -----------------------------------------------------------------

bool Writer::alive(ObjectId id) const {
  for (int depth = 0; depth < 16 && !id.isNull(); ++depth) {
    const DbObject* o = db_.object(id);
    if (o == nullptr || o->erased) return false;
    id = o->owner;
  }
  return true;
}

// The dictionary of Object Data tables is written while a table needs it, or because the file
// had it: one this writer made for tables that were all undone or removed since is left out.
bool Writer::odTablesDictionaryWritten() const {
  const ObjectId dict = image_.odTablesDictionary;
  if (dict.isNull()) return false;
  return dict.value() <= image_.loadedIdCount || !db_.odTableIds().empty();
}

void Writer::writeObjects(const FileImage::Part& part) {
  out_.writeRaw(span(part.head));
  for (const FileImage::ObjectSlot& slot : image_.objects) {
    if (slot.odXrecord) {
      writeOdXrecord(slot.id);
    } else {
      writeObject(slot.id);
    }
    progress();
  }
  for (std::uint64_t i = image_.loadedIdCount + 1; i <= db_.idCount(); ++i) {
    const DbObject* o = db_.object(ObjectId(i));
    if (o == nullptr) continue;
    switch (o->type()) {
      case ObjectType::ExtDictionary:
        writeObject(ObjectId(i));
        writeOdXrecord(ObjectId(i));
        break;
      case ObjectType::OdTable:
      case ObjectType::Dictionary:
      case ObjectType::Tagged:
        writeObject(ObjectId(i));
        break;
      default:
        break;
    }
    progress();
  }
  out_.writeRaw(span(part.tail));
}

void Writer::writeXrecordStart(Handle handle, Handle owner) {
  out_.write(0, "XRECORD");
  out_.writeHandle(5, handle);
  out_.write(102, "{ACAD_REACTORS");
  out_.writeHandle(330, owner);
  out_.write(102, "}");
  out_.writeHandle(330, owner);
  out_.write(100, "AcDbXrecord");
  out_.write(280, 1);
}

void Writer::writeDictionary(const DbObject& dict, const std::vector<DictEntry>& entries,
                             Handle owner, bool hardOwner) {
  auto writeEntries = [&] {
    for (const DictEntry& e : entries) {
      out_.write(3, codec().encode(e.name));
      out_.writeHandle(e.code, e.handle);
    }
  };
  const std::string_view text = source(dict);
  if (text.empty()) {
    out_.write(0, "DICTIONARY");
    out_.writeHandle(5, dict.handle);
    if (!hardOwner) {
      out_.write(102, "{ACAD_REACTORS");
      out_.writeHandle(330, owner);
      out_.write(102, "}");
    }
    out_.writeHandle(330, owner);
    out_.write(100, "AcDbDictionary");
    if (hardOwner) out_.write(280, 1);
    out_.write(281, 1);
    writeEntries();
    return;
  }
  // Every tag but the entries stays; the entries go where the first one was.
  const std::vector<Tag> tags = tagsOf(text);
  bool written = false;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (isEntryTag(tags, i)) {
      if (!written) writeEntries();
      written = true;
      ++i;
      continue;
    }
    if (tags[i].code == 1001 && !written) {
      writeEntries();
      written = true;
    }
    out_.write(tags[i].code, tags[i].value);
  }
  if (!written) writeEntries();
}

void Writer::writeObject(ObjectId id) {
  const DbObject* o = db_.object(id);
  if (o == nullptr || !alive(id)) return;
  switch (o->type()) {
    case ObjectType::Dictionary: {
      const auto& dict = static_cast<const Dictionary&>(*o);
      std::vector<DictEntry> entries = dict.entries;
      if (id == image_.odTablesDictionary) {
        if (!odTablesDictionaryWritten()) break;
        entries = odTableEntries(dict.entries);
      } else if (id == image_.rootDictionary && odTablesDictionaryWritten()) {
        const bool listed = std::any_of(entries.begin(), entries.end(), [](const DictEntry& e) {
          return e.name == kOdTablesEntry;
        });
        if (!listed) entries.push_back({kOdTablesEntry, handleOf(image_.odTablesDictionary), 350});
      }
      const bool same = entries.size() == dict.entries.size() &&
                        std::equal(entries.begin(), entries.end(), dict.entries.begin(),
                                   [](const DictEntry& a, const DictEntry& b) {
                                     return a.name == b.name && a.handle == b.handle;
                                   });
      if (same && !source(dict).empty() && !dict.modified) {
        out_.writeRaw(source(dict));
      } else {
        writeDictionary(dict, entries, handleOf(dict.owner), false);
      }
      break;
    }
    case ObjectType::ExtDictionary: {
      const auto& dict = static_cast<const ExtDictionary&>(*o);
      if (!source(dict).empty() && !dict.modified) {
        out_.writeRaw(source(dict));
        break;
      }
      std::vector<DictEntry> entries;
      if (dict.extras) entries = dict.extras->entries;
      if (!dict.od.empty()) entries.push_back({kOdEntry, dict.odHandle, 360});
      writeDictionary(dict, entries, handleOf(dict.owner), true);
      break;
    }
    case ObjectType::OdTable: {
      const auto& t = static_cast<const OdTableObject&>(*o);
      if (!source(t).empty() && !t.modified) {
        out_.writeRaw(source(t));
        break;
      }
      writeXrecordStart(t.handle, handleOf(image_.odTablesDictionary));
      writeTableDefinition(t.definition, out_, codec());
      break;
    }
    case ObjectType::Tagged:
      writeTagged(static_cast<const TaggedObject&>(*o));
      break;
    default:
      break;
  }
}

void Writer::writeTagged(const TaggedObject& o) {
  const std::string_view text = source(o);
  if (o.textHandle != 0) {
    writeCopied(o, text);
    return;
  }
  if (!erasedAny_) {
    erasedAny_ = false;
    for (std::uint64_t i = 1; i <= db_.idCount() && !*erasedAny_; ++i) {
      const DbObject* object = db_.object(ObjectId(i));
      *erasedAny_ = object != nullptr && object->erased;
    }
  }
  const auto gone = [this](Handle handle) {
    const ObjectId id = db_.idOfHandle(handle);
    return !id.isNull() && !alive(id);
  };
  if (*erasedAny_ && writeWithoutGone(text, o.dxfName, gone, out_)) return;
  out_.writeRaw(text);
}

// A copy's text is the original's: its own handle and its owner's are
// written as the copy's, every other tag as it was.
void Writer::writeCopied(const TaggedObject& o, std::string_view text) {
  std::size_t copied = 0;
  for (const Tag& tag : tagsOf(text)) {
    const auto handle = tag.code == 5 || tag.code == 330 ? parseHandle(tag.value) : std::nullopt;
    Handle replacement = 0;
    if (handle && tag.code == 5 && *handle == o.textHandle) replacement = o.handle;
    if (handle && tag.code == 330 && *handle == o.textOwner) replacement = handleOf(o.owner);
    if (replacement == 0) continue;
    out_.writeRaw(text.substr(copied, tag.offset - copied));
    out_.writeHandle(tag.code, replacement);
    copied = text.find('\n', text.find('\n', tag.offset) + 1);
    copied = copied == std::string_view::npos ? text.size() : copied + 1;
  }
  out_.writeRaw(text.substr(copied));
}

void Writer::writeOdXrecord(ObjectId dictionary) {
  const ExtDictionary* dict = db_.get<ExtDictionary>(dictionary);
  if (dict == nullptr || !alive(dictionary) || dict->od.empty()) return;
  const SourceSpan odSource = image_.odSource(dictionary);
  if (!odSource.empty() && !dict->modified) {
    out_.writeRaw(span(odSource));
    return;
  }
  writeXrecordStart(dict->odHandle, dict->handle);
  writeRecords(db_, dict->od, out_, codec());
}

}  // namespace

std::string writeDrawing(Database& db, FileImage& image, const ProgressFunction& progress) {
  if (auto problem = findInconsistency(db)) {
    throw InconsistentDrawing("the drawing is inconsistent and was not saved: " + *problem);
  }
  Writer writer(db, image, progress);
  return writer.run();
}

}  // namespace host::dxf
