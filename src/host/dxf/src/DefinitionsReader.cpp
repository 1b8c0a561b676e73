// A walk of the tags that reads only the header's version and code page,
// which decide how names decode, and the objects that define the tables: the
// root dictionary names the dictionary of tables, and that one the tables'
// XRECORDs. Those few objects are found by their type and handle in the text
// and read as tags; the rest of the objects and the other sections are
// stepped over to their end markers unread, since in a large drawing they are
// nearly all of the file. A fault inside them is the whole reader's to find.
#include "host/dxf/DefinitionsReader.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "GroupCodes.h"
#include "HeaderVersion.h"
#include "ObjectDataXrecords.h"
#include "ObjectScan.h"
#include "TagReader.h"
#include "TextCodec.h"
#include "host/dxf/ParseError.h"

namespace host::dxf {
namespace {

// The line that starts at the offset, without its line end, and the offset
// of the next line.
std::pair<std::string_view, std::size_t> lineAt(std::string_view data, std::size_t at) {
  std::size_t end = data.find('\n', at);
  const std::size_t next = end == std::string_view::npos ? data.size() : end + 1;
  if (end == std::string_view::npos) end = data.size();
  std::string_view line = data.substr(at, end - at);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return {line, next};
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// The offsets, in [from, to), of the group-code lines of the (0, value) tags
// for which wanted(offset of the line after the value) holds; the first of
// them only with firstOnly. A line holding the value after a line "0" can only
// be that tag in a well-formed file, since a group-code line holds a number.
template <typename Wanted>
std::vector<std::size_t> findTags(std::string_view data, std::size_t from, std::size_t to,
                                  std::string_view value, const Wanted& wanted,
                                  bool firstOnly = false) {
  std::vector<std::size_t> found;
  // Led by the value's first byte, not by the line end before it, which
  // begins every line: the search then stops only at likely places.
  for (std::size_t hit = data.find(value, from); hit != std::string_view::npos && hit < to;
       hit = data.find(value, hit + 1)) {
    if (hit < 2 || data[hit - 1] != '\n') continue;
    const std::size_t at = hit - 1;
    const auto [line, next] = lineAt(data, at + 1);
    if (line != value || at < 1) continue;
    const std::size_t lf = data.rfind('\n', at - 1);
    const std::size_t codeStart = lf == std::string_view::npos ? 0 : lf + 1;
    if (codeStart < from || trimmed(lineAt(data, codeStart).first) != "0") continue;
    if (!wanted(next)) continue;
    found.push_back(codeStart);
    if (firstOnly) break;
  }
  return found;
}

class DefinitionsScan {
 public:
  explicit DefinitionsScan(std::string_view text) : data_(text), tags_(text) {}

  std::vector<NamedTableDefinition> run();

 private:
  Tag nextTag();
  void readHeader();
  void readObjects();
  // The handle of the dictionary of tables that the root dictionary names; 0
  // when there is none.
  Handle readRoot();
  // Whether the object whose group 0 ends before the offset has one of the
  // handles (a set, or a map by handle) as its first tag.
  template <typename Handles>
  bool hasHandle(std::size_t at, const Handles& handles) const;
  // Reads the object at the offset, within the objects section, reaching it
  // from the nearer of the reader's place and the section's end.
  void readObjectAt(std::size_t offset, TagReader::Position end);
  // The object's tags up to the next group 0, into body_.
  void readBody();
  // Steps over the rest of the section, to the tag after its end marker.
  void skipSection();

  std::string_view data_;
  TagReader tags_;
  TextCodec codec_{"AC1032", "ANSI_1252"};
  std::size_t sectionLine_ = 0;
  std::string_view sectionName_;
  std::vector<Tag> body_;
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
  while (auto tag = tags_.next()) {
    if (tag->code == 999) continue;
    if (tag->code != 0) {
      throw ParseError(tag->line,
                       "a section is expected, found group " + std::to_string(tag->code));
    }
    if (tag->value == "EOF") return std::move(tables_);
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
      readObjects();
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

Handle DefinitionsScan::readRoot() {
  const std::optional<Tag> first = tags_.peek();
  if (!first || first->code != 0 || first->value != "DICTIONARY") return 0;
  nextTag();
  readBody();
  ObjectHead head;
  scanObject(body_, true, head);
  for (const auto& e : head.entries) {
    if (e.name == "ZARVEL_OD_TABLES") return e.handle;
  }
  return 0;
}

template <typename Handles>
bool DefinitionsScan::hasHandle(std::size_t at, const Handles& handles) const {
  const auto [code, next] = lineAt(data_, at);
  if (trimmed(code) != "5") return false;
  const std::optional<std::uint64_t> handle = parseHandle(trimmed(lineAt(data_, next).first));
  return handle && handles.count(*handle) > 0;
}

void DefinitionsScan::readObjectAt(std::size_t offset, TagReader::Position end) {
  const std::size_t here = tags_.position().offset;
  const std::size_t fromHere = offset > here ? offset - here : here - offset;
  if (end.offset - offset < fromHere) tags_.seek(end);
  tags_.moveTo(offset);
  nextTag();
  readBody();
}

void DefinitionsScan::readObjects() {
  const TagReader::Position start = tags_.position();
  const Handle odTables = readRoot();
  const std::size_t afterRoot = tags_.position().offset;
  // Where the objects end bounds the search; a section without an end is
  // refused here, as the whole reader refuses it.
  skipSection();
  const TagReader::Position end = tags_.position();
  if (odTables == 0) return;
  const std::unordered_set<Handle> dictionaryHandle{odTables};
  const std::vector<std::size_t> dictionary = findTags(
      data_, afterRoot, end.offset, "DICTIONARY",
      [&](std::size_t at) { return hasHandle(at, dictionaryHandle); }, true);
  if (dictionary.empty()) return;
  tags_.seek(start);
  readObjectAt(dictionary.front(), end);
  ObjectHead head;
  scanObject(body_, true, head);
  std::unordered_map<Handle, std::wstring> names;
  for (const auto& e : head.entries) names.emplace(e.handle, codec_.decode(e.name));
  // Read in the file's order, each from the last.
  const std::vector<std::size_t> xrecords =
      findTags(data_, afterRoot, end.offset, "XRECORD",
               [&](std::size_t at) { return hasHandle(at, names); });
  for (const std::size_t at : xrecords) {
    readObjectAt(at, end);
    scanObject(body_, false, head);
    auto name = names.find(head.handle);
    if (name == names.end()) continue;  // a second object of the same handle
    tables_.push_back(
        {name->second, readTableDefinition(body_, xrecordDataStart(body_), codec_, name->second)});
    names.erase(name);
  }
  tags_.seek(end);
}

void DefinitionsScan::readBody() {
  body_.clear();
  for (;;) {
    const TagReader::Position before = tags_.position();
    const Tag tag = nextTag();
    if (tag.code == 0) {
      tags_.seek(before);
      return;
    }
    body_.push_back(tag);
  }
}

void DefinitionsScan::skipSection() {
  const std::size_t from = tags_.position().offset;
  const std::vector<std::size_t> ends = findTags(
      data_, from == 0 ? 0 : from - 1, data_.size(), "ENDSEC", [](std::size_t) { return true; },
      true);
  if (ends.empty()) {
    // A broken file: the walk to its end finds the fault where the whole
    // reader finds it, be it a broken tag or the missing end.
    for (;;) nextTag();
  }
  tags_.moveTo(ends.front());
  nextTag();
}

}  // namespace

std::vector<NamedTableDefinition> readTableDefinitions(std::string_view text) {
  return DefinitionsScan(text).run();
}

}  // namespace host::dxf
