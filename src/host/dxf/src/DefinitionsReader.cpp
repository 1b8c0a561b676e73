// A walk of the tags that looks only at the header's version and code page,
// which decide how names decode, and at the objects that define the tables:
// the root dictionary names the dictionary of tables, and that one the
// tables' XRECORDs. Everything else is stepped over tag by tag, which is what
// keeps the file's structure checked without building anything of it.
#include "host/dxf/DefinitionsReader.h"

#include <optional>
#include <string>
#include <unordered_map>

#include "HeaderVersion.h"
#include "ObjectDataXrecords.h"
#include "ObjectScan.h"
#include "TagReader.h"
#include "TextCodec.h"
#include "host/dxf/ParseError.h"

namespace host::dxf {
namespace {

class DefinitionsScan {
 public:
  explicit DefinitionsScan(std::string_view text) : tags_(text) {}

  std::vector<NamedTableDefinition> run();

 private:
  Tag nextTag();
  void readHeader();
  // Reads the objects' tags from the section's start; with findDictionaries
  // it also learns which XRECORDs define tables.
  void readObjects(bool findDictionaries);
  // The object's tags up to the next group 0: kept in body_ only when keep.
  void readBody(bool keep);
  void skipSection();

  TagReader tags_;
  TextCodec codec_{"AC1032", "ANSI_1252"};
  std::size_t sectionLine_ = 0;
  std::string_view sectionName_;
  std::vector<Tag> body_;
  Handle odTables_ = 0;
  bool odTablesSeen_ = false;
  // The XRECORDs of the tables not yet read, by handle, with their names.
  std::unordered_map<Handle, std::wstring> pending_;
  std::vector<NamedTableDefinition> tables_;
};

Tag DefinitionsScan::nextTag() {
  auto tag = tags_.next();
  if (tag) return *tag;
  const std::string where = "the file ends at line " + std::to_string(tags_.lastLine());
  if (sectionLine_ == 0) throw ParseError(tags_.lastLine(), where);
  throw ParseError(sectionLine_, "the " + std::string(sectionName_) +
                                     " section that begins here has no ENDSEC: " + where);
}

std::vector<NamedTableDefinition> DefinitionsScan::run() {
  if (tags_.atEnd()) throw ParseError(1, "the file is empty");
  std::optional<TagReader::Position> objects;
  std::size_t objectsLine = 0;
  while (auto tag = tags_.next()) {
    if (tag->code == 999) continue;
    if (tag->code != 0) {
      throw ParseError(tag->line,
                       "a section is expected, found group " + std::to_string(tag->code));
    }
    if (tag->value == "EOF") {
      // Tables whose XRECORDs came before their dictionary are read on a
      // second walk, which only such files need.
      if (objects && !pending_.empty()) {
        tags_.seek(*objects);
        sectionLine_ = objectsLine;
        sectionName_ = "OBJECTS";
        readObjects(false);
      }
      return std::move(tables_);
    }
    if (tag->value != "SECTION") {
      throw ParseError(tag->line, "a section is expected, found '" + std::string(tag->value) + "'");
    }
    sectionLine_ = tag->line;
    sectionName_ = "unnamed";
    const Tag name = nextTag();
    if (name.code != 2) {
      throw ParseError(name.line,
                       "group 2 expected in its name, found group " + std::to_string(name.code));
    }
    sectionName_ = name.value;
    if (name.value == "HEADER") {
      readHeader();
    } else if (name.value == "OBJECTS") {
      objects = tags_.position();
      objectsLine = sectionLine_;
      readObjects(true);
    } else {
      skipSection();
    }
    sectionLine_ = 0;
  }
  throw ParseError(tags_.lastLine(), "the file ends here without its end of file marker (EOF)");
}

void DefinitionsScan::readHeader() {
  std::string version;
  std::size_t versionLine = 0;
  std::string codePage = "ANSI_1252";
  for (;;) {
    const Tag tag = nextTag();
    if (tag.code == 0 && tag.value == "ENDSEC") break;
    if (tag.code != 9) continue;
    auto value = tags_.peek();
    if (!value || value->code == 9 || value->code == 0) continue;
    if (tag.value == "$ACADVER") {
      version = std::string(value->value);
      versionLine = value->line;
    }
    if (tag.value == "$DWGCODEPAGE" && !value->value.empty()) codePage = value->value;
  }
  codec_ = TextCodec(supportedVersion(version, versionLine, sectionLine_), codePage);
}

void DefinitionsScan::readObjects(bool findDictionaries) {
  ObjectHead head;
  for (bool first = true;; first = false) {
    const Tag tag = nextTag();
    if (tag.code == 0 && tag.value == "ENDSEC") return;
    if (tag.code != 0) {
      throw ParseError(tag.line, "an object is expected, found group " + std::to_string(tag.code));
    }
    const bool dictionary = findDictionaries && tag.value == "DICTIONARY";
    const bool xrecord = tag.value == "XRECORD" && !pending_.empty();
    readBody(dictionary || xrecord);
    if (!dictionary && !xrecord) continue;
    scanObject(body_, dictionary, head);
    if (dictionary && first) {
      for (const auto& e : head.entries) {
        if (e.name == "ZARVEL_OD_TABLES") odTables_ = e.handle;
      }
    } else if (dictionary && head.handle == odTables_ && odTables_ != 0 && !odTablesSeen_) {
      odTablesSeen_ = true;
      for (const auto& e : head.entries) pending_.emplace(e.handle, codec_.decode(e.name));
    } else if (xrecord) {
      auto found = pending_.find(head.handle);
      if (found == pending_.end()) continue;
      tables_.push_back({found->second, readTableDefinition(body_, xrecordDataStart(body_), codec_,
                                                            found->second)});
      pending_.erase(found);
    }
  }
}

void DefinitionsScan::readBody(bool keep) {
  body_.clear();
  for (;;) {
    const TagReader::Position before = tags_.position();
    const Tag tag = nextTag();
    if (tag.code == 0) {
      tags_.seek(before);
      return;
    }
    if (keep) body_.push_back(tag);
  }
}

void DefinitionsScan::skipSection() {
  for (;;) {
    const Tag tag = nextTag();
    if (tag.code == 0 && tag.value == "ENDSEC") return;
  }
}

}  // namespace

std::vector<NamedTableDefinition> readTableDefinitions(std::string_view text) {
  return DefinitionsScan(text).run();
}

}  // namespace host::dxf
