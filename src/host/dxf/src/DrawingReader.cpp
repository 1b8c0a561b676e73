// The reader walks the sections once. Tables, blocks and entities become the
// database's objects; the objects section is read in two passes, since a
// dictionary's role (an entity's extension dictionary, the tables of Object
// Data) decides how its children are read, and children may come first.
#include "host/dxf/DrawingReader.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "EntityCodec.h"
#include "EntityCommon.h"
#include "FileHandles.h"
#include "FileImage.h"
#include "GroupCodes.h"
#include "HeaderVersion.h"
#include "KeptText.h"
#include "ObjectDataXrecords.h"
#include "ObjectScan.h"
#include "TagReader.h"
#include "host/db/PortDrawing.h"
#include "host/dxf/ParseError.h"
#include "platform/Text.h"

namespace host::dxf {
namespace {

using entity::handleOf;
using entity::realOf;

// The group 5 of the tags of an object after its group 0, 0 if none.
Handle handleBeforeSubclasses(const std::vector<Tag>& body) {
  for (const Tag& t : body) {
    if (t.code == 100) break;
    if (t.code == 5) return handleOf(t);
  }
  return 0;
}

class Reader : public ReadContext {
 public:
  Reader(std::shared_ptr<const std::string> text, const ProgressFunction& progress)
      : text_(std::move(text)),
        tags_(*text_),
        progress_(progress),
        db_(std::make_unique<Database>(Database::Empty{})),
        image_(new FileImage()) {
    image_->text = text_;
    if (text_->find("\r\n") < text_->find('\n') + 1) image_->lineEnd = LineEnd::CrLf;
  }

  LoadedDrawing run();

  // --- ReadContext ---------------------------------------------------------
  const TextCodec& codec() const override { return image_->codec; }
  ObjectId layer(std::wstring_view name) override;
  ObjectId linetype(std::wstring_view name) override;
  ObjectId block(std::wstring_view name) override;

 private:
  Tag nextTag(const char* what);
  ParseError endOfFile(const char* what) const;
  Tag expectCode(int code, const char* what);
  SourceSpan spanFrom(std::size_t offset) const {
    return {offset, static_cast<std::uint32_t>(tags_.position().offset - offset)};
  }
  // Reads the tags up to the next group-0 tag.
  void readBody(std::vector<Tag>& into);
  void noteHandle(const Tag& tag);
  Handle firstNewHandle() const;
  void skipToEndOfSection();
  void reportProgress();

  // Each section's reader stops after its ENDSEC and gives that tag's offset.
  std::size_t readHeader();
  std::size_t readTables();
  void readTableRecord(FileImage::Table& table, const Tag& first);
  // A layer of the table record in body_.
  std::unique_ptr<Layer> readLayer(const std::wstring& name);
  void noteDynamicBlock(ObjectId anonymous);
  std::size_t readBlocks();
  std::size_t readEntities();
  // Reads the entity that starts with `first`, owned by a block (null: from its tags).
  void readEntity(const Tag& first, ObjectId block);
  std::size_t readObjects();
  // The objects' section in two passes: the roles of the objects, then the objects.
  struct ObjectRoles;
  struct PendingRecords;
  ObjectRoles learnObjectRoles();
  std::size_t makeObjects(const ObjectRoles& roles, PendingRecords& records);
  // The object the tags in body_ make; null for the records of an extension
  // dictionary, which are no object of their own.
  std::unique_ptr<DbObject> makeObject(std::string_view dxfName, bool isRoot,
                                       const ObjectHead& head, const ObjectRoles& roles,
                                       ObjectId& entityOfXdict, std::size_t& tablesLeft);
  void placeRecords(ObjectId entity, SourceSpan span, TagReader::Position at,
                    PendingRecords& records);
  void readQueuedRecords(PendingRecords& records);
  // Reads the records in body_ into the dictionary's list.
  void readRecordsInto(PendingRecords& records, ObjectId dictId);
  // Two entities cannot own one extension dictionary; xdictOf_ is sorted.
  void checkXdictsUnshared() const;
  void finish();

  std::shared_ptr<const std::string> text_;
  TagReader tags_;
  const ProgressFunction& progress_;
  std::unique_ptr<Database> db_;
  FileImagePtr image_;
  // The section being read, for a file that ends inside it: where it began and its name.
  std::size_t sectionLine_ = 0;
  std::string_view sectionName_;
  // Where the file ends, for what is missing from the whole drawing.
  std::size_t eofLine_ = 0;
  Handle headerSeed_ = 0;
  // The highest handle of any object or sub-entity, and its line.
  Handle highestHandle_ = 0;
  std::size_t highestHandleLine_ = 0;
  std::string currentLayerRaw_;
  std::wstring currentLayerName_;
  std::unordered_map<std::wstring, ObjectId> layers_;  // lower-cased names
  std::unordered_map<std::wstring, ObjectId> linetypes_;
  std::unordered_map<std::wstring, ObjectId> blocks_;
  std::unordered_map<Handle, ObjectId> blockHandles_;
  std::vector<std::pair<ObjectId, Handle>> dynamicOf_;  // anonymous block, dynamic block
  struct XdictOf {
    ObjectId entity;
    Handle handle;     // of its extension dictionary
    std::size_t line;  // where the entity names it
  };
  std::vector<XdictOf> xdictOf_;
  FileHandles handles_;
  std::vector<FileWarning> warnings_;
  std::vector<std::pair<ObjectId, Handle>> ownersToFind_;  // object, its owner's handle
  std::vector<Tag> body_;
  std::size_t nextProgress_ = 0;
};

std::wstring folded(std::wstring_view name) { return platform::lowerCase(name); }

ObjectId Reader::layer(std::wstring_view name) {
  const std::wstring key = folded(name);
  auto it = layers_.find(key);
  if (it != layers_.end()) return it->second;
  // A layer the entities name but the table lacks is made, as the host would on
  // an audit; it gets a handle when it is first written.
  auto made = std::make_unique<Layer>();
  made->name = std::wstring(name);
  const ObjectId id = db_->addLoaded(std::move(made));
  layers_.emplace(key, id);
  return id;
}

ObjectId Reader::linetype(std::wstring_view name) {
  auto it = linetypes_.find(folded(name));
  return it != linetypes_.end() ? it->second : ObjectId();
}

ObjectId Reader::block(std::wstring_view name) {
  auto it = blocks_.find(folded(name));
  return it != blocks_.end() ? it->second : ObjectId();
}

Tag Reader::nextTag(const char* what) {
  auto tag = tags_.next();
  if (!tag) throw endOfFile(what);
  return *tag;
}

// A file that ends too early is refused at the line where the unended section began, since that
// is what to look at; the message gives the last line too.
ParseError Reader::endOfFile(const char* what) const {
  std::string where = "the file ends at line " + std::to_string(tags_.lastLine());
  if (what != nullptr) where += std::string(", inside ") + what;
  if (sectionLine_ == 0) return ParseError(tags_.lastLine(), where);
  const std::string section =
      sectionName_.empty() ? "the section" : "the " + std::string(sectionName_) + " section";
  return ParseError(sectionLine_, section + " that begins here has no ENDSEC: " + where);
}

Tag Reader::expectCode(int code, const char* what) {
  Tag tag = nextTag(what);
  if (tag.code != code) {
    throw ParseError(tag.line, std::string("group ") + std::to_string(code) + " expected in " +
                                   what + ", found group " + std::to_string(tag.code));
  }
  return tag;
}

void Reader::readBody(std::vector<Tag>& into) {
  // Reads on and steps back over the group 0 that ends the body: a peek
  // before every tag would read each tag twice.
  for (;;) {
    const TagReader::Position before = tags_.position();
    auto tag = tags_.next();
    if (!tag) throw endOfFile(nullptr);
    if (tag->code == 0) {
      tags_.seek(before);
      return;
    }
    if (tag->code == 5 || tag->code == 105) noteHandle(*tag);
    into.push_back(*tag);
  }
}

// Every body passes here, so the handles of what the database keeps only as text (vertices,
// block ends, xrecords) count as much as those of its objects.
void Reader::noteHandle(const Tag& tag) {
  const std::optional<Handle> handle = parseHandle(tag.value);
  if (handle && *handle > highestHandle_) {
    highestHandle_ = *handle;
    highestHandleLine_ = tag.line;
  }
}

// New objects take handles above every handle in use: from the file's seed when it lies above
// them, else from right above the highest. A session makes far fewer than 2^32 objects, so a
// start with that much room above it can never run out of handles and wrap around to ones in use.
Handle Reader::firstNewHandle() const {
  constexpr Handle kLast = std::numeric_limits<Handle>::max();
  constexpr Handle kRoom = Handle{1} << 32;
  if (headerSeed_ > highestHandle_ && kLast - headerSeed_ >= kRoom) return headerSeed_;
  if (kLast - highestHandle_ > kRoom) return highestHandle_ + 1;
  throw ParseError(highestHandleLine_, "the handle " +
                                           platform::toUtf8(handleToText(highestHandle_)) +
                                           " leaves too few handles above it for new objects");
}

void Reader::reportProgress() {
  if (!progress_) return;
  const std::size_t at = tags_.position().offset;
  if (at >= nextProgress_) {
    progress_(static_cast<double>(at) / static_cast<double>(text_->size()));
    nextProgress_ = at + text_->size() / 100 + 1;
  }
}

void Reader::skipToEndOfSection() {
  for (;;) {
    const Tag tag = nextTag("a section");
    if (tag.code == 0 && tag.value == "ENDSEC") return;
  }
}

LoadedDrawing Reader::run() {
  std::size_t partStart = 0;
  std::unordered_set<std::string> sectionsSeen;
  bool sawEof = false;
  if (tags_.atEnd()) throw ParseError(1, "the file is empty");
  while (auto tag = tags_.next()) {
    if (tag->code == 999) continue;  // comments stay in the text of the part they precede
    if (tag->code != 0) {
      throw ParseError(tag->line,
                       "a section is expected, found group " + std::to_string(tag->code));
    }
    if (tag->value == "EOF") {
      FileImage::Part part;
      part.text = {partStart, static_cast<std::uint32_t>(text_->size() - partStart)};
      image_->parts.push_back(part);
      sawEof = true;
      eofLine_ = tag->line;
      break;
    }
    if (tag->value != "SECTION") {
      throw ParseError(tag->line,
                       "a section is expected, found '" + std::string(tag->value) + "'");
    }
    sectionLine_ = tag->line;
    sectionName_ = {};
    const Tag name = expectCode(2, "its name");
    sectionName_ = name.value;
    // Each section's objects are written back where its one section stood.
    if (!sectionsSeen.insert(std::string(name.value)).second) {
      throw ParseError(name.line, "a second " + std::string(name.value) + " section");
    }
    FileImage::Part part;
    part.head = spanFrom(partStart);
    std::size_t endsec = 0;
    if (name.value == "HEADER") {
      part.kind = FileImage::PartKind::Header;
      readHeader();
    } else if (name.value == "TABLES") {
      part.kind = FileImage::PartKind::Tables;
      endsec = readTables();
    } else if (name.value == "BLOCKS") {
      part.kind = FileImage::PartKind::Blocks;
      endsec = readBlocks();
    } else if (name.value == "ENTITIES") {
      part.kind = FileImage::PartKind::Entities;
      endsec = readEntities();
    } else if (name.value == "OBJECTS") {
      part.kind = FileImage::PartKind::Objects;
      endsec = readObjects();
    } else {
      skipToEndOfSection();
    }
    part.text = spanFrom(partStart);
    if (endsec != 0) part.tail = spanFrom(endsec);
    image_->parts.push_back(part);
    partStart = tags_.position().offset;
    sectionLine_ = 0;
    reportProgress();
  }
  if (!sawEof) {
    throw ParseError(tags_.lastLine(), "the file ends here without its end of file marker (EOF)");
  }
  finish();
  std::stable_sort(warnings_.begin(), warnings_.end(),
                   [](const FileWarning& a, const FileWarning& b) { return a.line < b.line; });
  return {std::move(db_), std::move(image_), std::move(warnings_)};
}

std::size_t Reader::readHeader() {
  std::string version;
  std::size_t versionLine = 0;
  std::string codePage;
  for (;;) {
    const Tag tag = nextTag("the header");
    if (tag.code == 0 && tag.value == "ENDSEC") break;
    if (tag.code != 9) continue;
    const std::string_view variable = tag.value;
    auto value = tags_.peek();
    if (!value || value->code == 9 || value->code == 0) continue;
    if (variable == "$ACADVER") {
      version = std::string(value->value);
      versionLine = value->line;
    }
    if (variable == "$DWGCODEPAGE") codePage = std::string(value->value);
    if (variable == "$HANDSEED") headerSeed_ = handleOf(*value);
    if (variable == "$CLAYER") currentLayerRaw_ = std::string(value->value);
    if (variable == "$LUPREC") {
      const std::int64_t v = entity::int32Of(*value);
      if (v >= 0 && v <= 8) db_->modifyHeader().luprec = static_cast<short>(v);
    }
    if (variable == "$TEXTSIZE") {
      const double v = realOf(*value);
      if (v > 0) db_->modifyHeader().textSize = v;
    }
  }
  image_->acadVersion = supportedVersion(version, versionLine, sectionLine_);
  if (!codePage.empty()) image_->codePage = codePage;
  image_->codec = TextCodec(image_->acadVersion, image_->codePage);
  currentLayerName_ = image_->codec.decode(currentLayerRaw_);
  return 0;
}


std::size_t Reader::readTables() {
  for (;;) {
    const Tag tag = nextTag("the tables");
    if (tag.code == 0 && tag.value == "ENDSEC") return tag.offset;
    if (tag.code != 0 || tag.value != "TABLE") {
      throw ParseError(tag.line, "a table is expected, found '" + std::string(tag.value) + "'");
    }
    FileImage::Table table;
    body_.clear();
    readBody(body_);
    for (const Tag& t : body_) {
      if (t.code == 2) table.name = std::string(t.value);
      if (t.code == 5) table.handle = handleOf(t);
    }
    handles_.add(table.handle);
    // The writer lists the layers and block records into their table; two
    // tables of one name would each get them all.
    for (const FileImage::Table& earlier : image_->tables) {
      if (earlier.name == table.name) {
        throw ParseError(tag.line, "a second " + table.name + " table begins here");
      }
    }
    table.head = spanFrom(tag.offset);
    for (;;) {
      const Tag record = nextTag("a table");
      if (record.code != 0) {
        throw ParseError(record.line, "a table record is expected, found group " +
                                          std::to_string(record.code));
      }
      if (record.value == "ENDTAB") {
        body_.clear();
        readBody(body_);
        table.tail = spanFrom(record.offset);
        break;
      }
      readTableRecord(table, record);
    }
    image_->tables.push_back(std::move(table));
  }
}

void Reader::readTableRecord(FileImage::Table& table, const Tag& first) {
  body_.clear();
  readBody(body_);
  const SourceSpan span = spanFrom(first.offset);
  Handle handle = 0;
  std::string_view name;
  bool hasName = false;
  for (const Tag& t : body_) {
    if ((t.code == 5 || t.code == 105) && handle == 0) handle = handleOf(t);
    if (t.code == 2 && !hasName) {
      name = t.value;
      hasName = true;
    }
  }
  handles_.add(handle);
  const std::wstring decoded = codec().decode(name);
  // A record counts for what its table holds; one in another table is kept as text there.
  if (first.value == "LAYER" && table.name == "LAYER") {
    std::unique_ptr<Layer> layer = readLayer(decoded);
    layer->handle = handle;
    layer->source = span;
    layers_.emplace(folded(decoded), db_->addLoaded(std::move(layer)));
    return;
  }
  if (first.value == "BLOCK_RECORD" && table.name == "BLOCK_RECORD") {
    auto record = std::make_unique<BlockRecord>();
    record->name = decoded;
    record->handle = handle;
    record->source = span;
    const ObjectId id = db_->addLoaded(std::move(record));
    blocks_.emplace(folded(decoded), id);
    blockHandles_.emplace(handle, id);
    noteDynamicBlock(id);
    return;
  }
  auto other = std::make_unique<TaggedObject>();
  other->dxfName = std::string(first.value);
  other->name = decoded;
  other->handle = handle;
  other->source = span;
  const ObjectId id = db_->addLoaded(std::move(other));
  table.records.push_back(id);
  if (first.value == "LTYPE") linetypes_.emplace(folded(decoded), id);
}

std::unique_ptr<Layer> Reader::readLayer(const std::wstring& name) {
  auto layer = std::make_unique<Layer>();
  layer->name = name;
  bool inXdata = false;
  bool ours = false;
  for (const Tag& t : body_) {
    if (t.code == 1001) {
      inXdata = true;
      ours = t.value == "ZARVEL";
      continue;
    }
    if (inXdata) {
      // The host's own XDATA says that the layer is hidden.
      if (ours && t.code == 1070 && entity::int32Of(t) != 0) layer->hidden = true;
      continue;
    }
    switch (t.code) {
      case 70: {
        const std::int64_t flags = entity::int32Of(t);
        layer->frozen = (flags & 1) != 0;
        layer->locked = (flags & 4) != 0;
        break;
      }
      case 62: {
        const std::int64_t color = entity::int32Of(t);
        layer->off = color < 0;
        layer->color = static_cast<short>(color < 0 ? -color : color);
        break;
      }
      case 6: layer->linetype = linetype(codec().decode(t.value)); break;
      case 370: layer->lineweight = static_cast<std::int16_t>(entity::int32Of(t)); break;
      case 420: layer->trueColor = entity::int32Of(t); break;
      default: break;
    }
  }
  return layer;
}

// The anonymous block of a dynamic block's reference names the dynamic block
// in its XDATA; the name is resolved once every block is known.
void Reader::noteDynamicBlock(ObjectId anonymous) {
  for (std::size_t i = 0; i + 1 < body_.size(); ++i) {
    if (body_[i].code == 1001 && body_[i].value == "AcDbBlockRepBTag") {
      for (std::size_t j = i + 1; j < body_.size() && body_[j].code != 1001; ++j) {
        if (body_[j].code == 1005) dynamicOf_.emplace_back(anonymous, handleOf(body_[j]));
      }
    }
  }
}

std::size_t Reader::readBlocks() {
  for (;;) {
    const Tag tag = nextTag("the blocks");
    if (tag.code == 0 && tag.value == "ENDSEC") return tag.offset;
    if (tag.code != 0 || tag.value != "BLOCK") {
      throw ParseError(tag.line, "a block is expected, found '" + std::string(tag.value) + "'");
    }
    body_.clear();
    readBody(body_);
    Handle owner = 0;
    std::string_view name;
    Point3d base;
    std::int16_t flags = 0;
    handles_.add(handleBeforeSubclasses(body_));
    for (const Tag& t : body_) {
      if (t.code == 330 && owner == 0) owner = handleOf(t);
      if (t.code == 2 && name.empty()) name = t.value;
      if (t.code == 10) base.x = realOf(t);
      if (t.code == 20) base.y = realOf(t);
      if (t.code == 30) base.z = realOf(t);
      if (t.code == 70) flags = static_cast<std::int16_t>(entity::int32Of(t));
    }
    ObjectId blockId;
    if (auto it = blockHandles_.find(owner); it != blockHandles_.end()) blockId = it->second;
    if (blockId.isNull()) blockId = block(codec().decode(name));
    if (blockId.isNull()) {
      throw ParseError(tag.line, "the block '" + std::string(name) + "' has no block record");
    }
    // One record, one definition: a second would be written twice over, its
    // entities and handles with it.
    if (image_->blockTexts.count(blockId.value()) > 0) {
      throw ParseError(tag.line, "a second definition of the block of '" +
                                     platform::toUtf8(db_->get<BlockRecord>(blockId)->name) +
                                     "' begins here");
    }
    FileImage::BlockText text;
    text.begin = spanFrom(tag.offset);
    BlockRecord* record = db_->loading<BlockRecord>(blockId);
    record->basePoint = base;
    record->flags = flags;
    for (;;) {
      const Tag inner = nextTag("a block");
      if (inner.code != 0) {
        throw ParseError(inner.line, "an entity is expected, found group " +
                                         std::to_string(inner.code));
      }
      if (inner.value == "ENDBLK") {
        body_.clear();
        readBody(body_);
        handles_.add(handleBeforeSubclasses(body_));
        text.end = spanFrom(inner.offset);
        break;
      }
      readEntity(inner, blockId);
      reportProgress();
    }
    image_->blockTexts[blockId.value()] = text;
    image_->blockOrder.push_back(blockId);
  }
}

std::size_t Reader::readEntities() {
  for (;;) {
    const Tag tag = nextTag("the entities");
    if (tag.code == 0 && tag.value == "ENDSEC") return tag.offset;
    if (tag.code != 0) {
      throw ParseError(tag.line, "an entity is expected, found group " + std::to_string(tag.code));
    }
    readEntity(tag, ObjectId());
    reportProgress();
  }
}

void Reader::readEntity(const Tag& first, ObjectId blockId) {
  const bool inEntitiesSection = blockId.isNull();
  body_.clear();
  body_.push_back(first);
  readBody(body_);
  if (endsWithSeqend(first.value, body_)) {
    // Vertices and attributes are entities of their own in the file, up to a SEQEND.
    for (;;) {
      const Tag sub = nextTag("a polyline or a block reference");
      body_.push_back(sub);
      readBody(body_);
      if (sub.value == "SEQEND") break;
    }
  }
  // Vertices, attributes and the SEQEND are entities of the file with handles of their own.
  for (std::size_t i = 0; i < body_.size(); ++i) {
    if (body_[i].code != 0) continue;
    const Tag* begin = body_.data() + i;
    const Tag* end = entity::entityEnd(begin, body_.data() + body_.size());
    handles_.addRequired(entity::handleOfEntity(begin, end), begin->line,
                         std::string(begin->value));
  }
  ReadEntity read = dxf::readEntity(body_, *this);
  Entity& entity = *read.entity;
  entity.source = spanFrom(first.offset);
  if (blockId.isNull()) {
    if (auto it = blockHandles_.find(read.ownerHandle); it != blockHandles_.end()) {
      blockId = it->second;
    } else {
      blockId = read.paperSpace ? db_->paperSpace() : db_->modelSpace();
    }
    if (blockId.isNull()) throw ParseError(first.line, "the drawing has no model space");
  }
  entity.owner = blockId;
  const Handle xdict = read.xdictHandle;
  auto* insert = entity.kind() == EntityKind::BlockReference
                     ? static_cast<BlockReferenceEntity*>(read.entity.get())
                     : nullptr;
  const ObjectId id = db_->addLoaded(std::move(read.entity));
  if (inEntitiesSection) {
    auto& marks = image_->inEntitiesSection;
    if (marks.size() <= id.value()) marks.resize(id.value() + 1, false);
    marks[id.value()] = true;
  }
  if (xdict != 0) {
    std::size_t line = first.line;
    for (const Tag& t : body_) {
      if (t.code == 100) break;
      if (t.code == 360) line = t.line;
    }
    xdictOf_.push_back({id, xdict, line});
  }
  for (auto& attribute : read.attributes) {
    attribute->owner = id;
    const ObjectId attributeId = db_->addLoaded(std::move(attribute));
    if (insert != nullptr) insert->attributes.push_back(attributeId);
  }
}

template <typename Pairs>
auto findIn(const Pairs& sorted, Handle handle) {
  auto it = std::lower_bound(sorted.begin(), sorted.end(), handle,
                             [](const auto& p, Handle h) { return p.first < h; });
  return it != sorted.end() && it->first == handle ? it : sorted.end();
}

// A dictionary's entries as the database keeps them; skipOd leaves out the
// entry of the Object Data records, which an extension dictionary holds inline.
std::vector<DictEntry> dictEntries(const ObjectHead& head, const TextCodec& codec, bool skipOd) {
  std::vector<DictEntry> entries;
  for (const auto& e : head.entries) {
    if (skipOd && e.name == "ZARVEL_OD") continue;
    entries.push_back({codec.decode(e.name), e.handle, static_cast<std::int16_t>(e.code)});
  }
  return entries;
}

// The roles of the objects, learnt from the dictionaries: the root names the
// dictionary of Object Data tables, that one the tables' xrecords, and
// entities' extension dictionaries their records' xrecords.
struct Reader::ObjectRoles {
  std::vector<std::pair<Handle, ObjectId>> xdictOwners;  // dictionary handle, entity; sorted
  std::vector<std::pair<Handle, Handle>> odXrecords;     // xrecord handle, its dictionary; sorted
  std::unordered_map<Handle, std::wstring> tableXrecords;
  Handle odTables = 0;
};

// Records are read once every table they may name is known: usually at once,
// else when the last table's xrecord has been read, else at the section's end.
struct Reader::PendingRecords {
  std::size_t tablesLeft = 0;
  std::vector<std::pair<ObjectId, TagReader::Position>> toRead;  // dictionary, its records
  // Records met before their dictionary: where they stand, whose they are.
  struct Early {
    std::size_t slot;
    ObjectId entity;
    SourceSpan span;
    TagReader::Position at;
  };
  std::vector<Early> early;
  std::unique_ptr<TableLookup> lookup;
};

std::size_t Reader::readObjects() {
  const TagReader::Position sectionStart = tags_.position();
  const ObjectRoles roles = learnObjectRoles();
  tags_.seek(sectionStart);
  PendingRecords records;
  records.tablesLeft = roles.tableXrecords.size();
  const std::size_t endsec = makeObjects(roles, records);
  const TagReader::Position afterSection = tags_.position();
  for (const PendingRecords::Early& e : records.early) {
    const ObjectId dictId = db_->loading<Entity>(e.entity)->xdict;
    image_->objects[e.slot].id = dictId;
    image_->setOdSource(dictId, e.span);
    records.toRead.emplace_back(dictId, e.at);
  }
  // Tables whose xrecords never came are missing for good by now.
  records.lookup.reset();
  readQueuedRecords(records);
  tags_.seek(afterSection);
  return endsec;
}

Reader::ObjectRoles Reader::learnObjectRoles() {
  std::sort(xdictOf_.begin(), xdictOf_.end(), [](const XdictOf& a, const XdictOf& b) {
    return a.handle != b.handle ? a.handle < b.handle : a.line < b.line;
  });
  checkXdictsUnshared();
  ObjectRoles roles;
  roles.xdictOwners.reserve(xdictOf_.size());
  for (const XdictOf& x : xdictOf_) roles.xdictOwners.emplace_back(x.handle, x.entity);
  ObjectHead head;
  for (bool first = true;; first = false) {
    const Tag tag = nextTag("the objects");
    if (tag.code == 0 && tag.value == "ENDSEC") break;
    if (tag.code != 0) {
      throw ParseError(tag.line, "an object is expected, found group " + std::to_string(tag.code));
    }
    body_.clear();
    readBody(body_);
    if (tag.value != "DICTIONARY") continue;
    scanObject(body_, true, head);
    if (first) {
      for (const auto& e : head.entries) {
        if (e.name == "ZARVEL_OD_TABLES") roles.odTables = e.handle;
      }
    } else if (head.handle == roles.odTables && roles.odTables != 0) {
      for (const auto& e : head.entries) {
        roles.tableXrecords.emplace(e.handle, codec().decode(e.name));
      }
    } else if (findIn(roles.xdictOwners, head.handle) != roles.xdictOwners.end()) {
      for (const auto& e : head.entries) {
        if (e.name == "ZARVEL_OD") roles.odXrecords.emplace_back(e.handle, head.handle);
      }
    }
  }
  std::sort(roles.odXrecords.begin(), roles.odXrecords.end());
  return roles;
}

std::size_t Reader::makeObjects(const ObjectRoles& roles, PendingRecords& records) {
  ObjectHead head;
  for (bool first = true;; first = false) {
    const TagReader::Position at = tags_.position();
    const Tag tag = nextTag("the objects");
    if (tag.code == 0 && tag.value == "ENDSEC") return tag.offset;
    body_.clear();
    readBody(body_);
    const bool dictionary = tag.value == "DICTIONARY";
    const bool isRoot = first && dictionary;
    scanObject(body_, dictionary, head);
    handles_.addRequired(head.handle, tag.line, std::string(tag.value));
    const SourceSpan span = spanFrom(tag.offset);
    ObjectId entityOfXdict;
    std::unique_ptr<DbObject> object =
        makeObject(tag.value, isRoot, head, roles, entityOfXdict, records.tablesLeft);
    if (!object) {
      // The records of an extension dictionary, which holds them; the entity
      // whose dictionary it is leads there.
      const Handle dictionaryHandle = findIn(roles.odXrecords, head.handle)->second;
      placeRecords(findIn(roles.xdictOwners, dictionaryHandle)->second, span, at, records);
      continue;
    }
    object->handle = head.handle;
    object->source = span;
    const ObjectId id = db_->addLoaded(std::move(object));
    if (isRoot) image_->rootDictionary = id;
    if (head.handle == roles.odTables && roles.odTables != 0) image_->odTablesDictionary = id;
    if (!entityOfXdict.isNull()) {
      db_->loading<Entity>(entityOfXdict)->xdict = id;
      db_->loadingObject(id)->owner = entityOfXdict;
    } else if (head.owner != 0) {
      ownersToFind_.emplace_back(id, head.owner);
    }
    image_->objects.push_back({id, false});
    if (records.tablesLeft == 0) readQueuedRecords(records);
    reportProgress();
  }
}

std::unique_ptr<DbObject> Reader::makeObject(std::string_view dxfName, bool isRoot,
                                             const ObjectHead& head, const ObjectRoles& roles,
                                             ObjectId& entityOfXdict, std::size_t& tablesLeft) {
  const bool dictionary = dxfName == "DICTIONARY";
  if (isRoot || (dictionary && head.handle == roles.odTables && roles.odTables != 0)) {
    auto dict = std::make_unique<Dictionary>();
    dict->entries = dictEntries(head, codec(), false);
    return dict;
  }
  if (auto owner = dictionary ? findIn(roles.xdictOwners, head.handle) : roles.xdictOwners.end();
      owner != roles.xdictOwners.end()) {
    auto dict = std::make_unique<ExtDictionary>();
    for (const auto& e : head.entries) {
      if (e.name == "ZARVEL_OD") dict->odHandle = e.handle;
    }
    std::vector<DictEntry> foreign = dictEntries(head, codec(), true);
    if (!foreign.empty()) dict->extras.make().entries = std::move(foreign);
    entityOfXdict = owner->second;
    return dict;
  }
  if (dxfName == "XRECORD") {
    if (auto table = roles.tableXrecords.find(head.handle); table != roles.tableXrecords.end()) {
      auto t = std::make_unique<OdTableObject>();
      t->name = table->second;
      t->definition = readTableDefinition(body_, xrecordDataStart(body_), codec(), t->name);
      --tablesLeft;
      return t;
    }
    if (findIn(roles.odXrecords, head.handle) != roles.odXrecords.end()) return nullptr;
  }
  auto other = std::make_unique<TaggedObject>();
  other->dxfName = std::string(dxfName);
  return other;
}

void Reader::placeRecords(ObjectId entity, SourceSpan span, TagReader::Position at,
                          PendingRecords& records) {
  const ObjectId dictId = db_->loading<Entity>(entity)->xdict;
  if (dictId.isNull()) {
    // Its dictionary comes later in the file; the slot names the entity until then.
    records.early.push_back({image_->objects.size(), entity, span, at});
    image_->objects.push_back({entity, true});
    return;
  }
  image_->setOdSource(dictId, span);
  image_->objects.push_back({dictId, true});
  if (records.tablesLeft == 0 && records.toRead.empty()) {
    // The tables are known: the records are read from the tags at hand.
    readRecordsInto(records, dictId);
  } else {
    records.toRead.emplace_back(dictId, at);
  }
}

void Reader::readQueuedRecords(PendingRecords& records) {
  for (const auto& [dictId, at] : records.toRead) {
    const TagReader::Position back = tags_.position();
    tags_.seek(at);
    body_.clear();
    body_.push_back(*tags_.next());
    readBody(body_);
    tags_.seek(back);
    readRecordsInto(records, dictId);
  }
  records.toRead.clear();
}

void Reader::readRecordsInto(PendingRecords& records, ObjectId dictId) {
  if (!records.lookup) records.lookup = std::make_unique<TableLookup>(*db_);
  readRecords(*records.lookup, body_, xrecordDataStart(body_), codec(), *text_,
              db_->loading<ExtDictionary>(dictId)->od, warnings_);
}

void Reader::checkXdictsUnshared() const {
  const XdictOf* twice = nullptr;
  for (std::size_t i = 1; i < xdictOf_.size(); ++i) {
    if (xdictOf_[i].handle != xdictOf_[i - 1].handle) continue;
    if (twice == nullptr || xdictOf_[i].line < twice->line) twice = &xdictOf_[i];
  }
  if (twice == nullptr) return;
  const XdictOf& owner = *std::find_if(xdictOf_.begin(), xdictOf_.end(),
                                       [&](const XdictOf& x) { return x.handle == twice->handle; });
  throw ParseError(twice->line,
                   "the extension dictionary " + platform::toUtf8(handleToText(twice->handle)) +
                       " is already the one of the entity on line " + std::to_string(owner.line));
}

void Reader::finish() {
  handles_.checkUnique(*text_);
  // Layers made for names the table lacked have no handle until they are saved.
  db_->setNextHandle(firstNewHandle());
  db_->reindexHandles();
  for (const auto& [id, handle] : ownersToFind_) {
    db_->loadingObject(id)->owner = db_->idOfHandle(handle);
  }
  for (const auto& [anonymous, handle] : dynamicOf_) {
    const ObjectId dynamic = db_->idOfHandle(handle);
    if (db_->get<BlockRecord>(dynamic) != nullptr) {
      db_->loading<BlockRecord>(anonymous)->dynamicBlock = dynamic;
    }
  }
  if (db_->modelSpace().isNull()) {
    throw ParseError(eofLine_, "the drawing ends here and has no model space (*Model_Space)");
  }
  if (db_->layerIds().empty())
    throw ParseError(eofLine_, "the drawing ends here and has no layers");
  DatabaseHeader& header = db_->modifyHeader();
  auto current = layers_.find(folded(currentLayerName_));
  auto zero = layers_.find(L"0");
  header.currentLayer = current != layers_.end() ? current->second
                        : zero != layers_.end()  ? zero->second
                                                 : db_->layerIds().front();
  header.currentSpace = db_->modelSpace();
  image_->loadedIdCount = db_->idCount();
  db_->setSourceText(text_, std::make_shared<DxfKeptText>());
  // Built for reading; a session builds it again only if it looks a handle up.
  db_->reindexHandles();
}

}  // namespace

LoadedDrawing readDrawing(std::shared_ptr<const std::string> text,
                          const ProgressFunction& progress) {
  Reader reader(std::move(text), progress);
  return reader.run();
}

void FileImageDeleter::operator()(FileImage* image) const { delete image; }

}  // namespace host::dxf
