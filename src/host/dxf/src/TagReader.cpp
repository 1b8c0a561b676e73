// The tag reader's scanning: one pass over the bytes, a memchr per value line, no allocation
// unless an error message is built.
#include "TagReader.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace host::dxf {
namespace {

constexpr std::string_view kBinarySentinel = "AutoCAD Binary DXF";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Group codes are 16-bit in the binary form of the format; a larger number where a group code
// should be means the lines have slipped, which is worth an error of its own.
constexpr int kMaxCodeDigits = 5;
constexpr int kMaxCode = 32767;

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// What may follow the last tag without being taken for a broken one: line ends, blanks, and
// the NUL or Ctrl-Z some old programs pad files with.
bool isTrailingFiller(std::string_view rest) {
  for (char c : rest) {
    if (!(isBlank(c) || c == '\r' || c == '\n' || c == '\0' || c == '\x1a')) return false;
  }
  return true;
}

// A line quoted in an error: control bytes shown as '?', long lines cut short.
std::string quoteLine(std::string_view line) {
  constexpr std::size_t kMaxShown = 40;
  std::string shown;
  const std::size_t n = line.size() < kMaxShown ? line.size() : kMaxShown;
  for (std::size_t i = 0; i < n; ++i) {
    const auto c = static_cast<unsigned char>(line[i]);
    shown.push_back(c < 0x20 || c == 0x7F ? '?' : line[i]);
  }
  if (n < line.size()) shown += "...";
  return "'" + shown + "'";
}

std::string_view lineAt(std::string_view data, std::size_t offset) {
  std::string_view line = data.substr(offset);
  const std::size_t lf = line.find('\n');
  if (lf != std::string_view::npos) line = line.substr(0, lf);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

ParseError endsInsideTag(std::size_t line, int code) {
  return ParseError(
      line, "file ends inside a tag: group code " + std::to_string(code) + " has no value line");
}

// Line ends counted a block at a time into a byte, which a compiler turns
// into byte-wide vector sums: moving over a large file costs little more than
// reading it.
std::size_t countLineEnds(const char* from, const char* to) {
  constexpr std::ptrdiff_t kBlock = 255;
  std::size_t count = 0;
  for (; to - from >= kBlock; from += kBlock) {
    unsigned char inBlock = 0;
    for (std::ptrdiff_t i = 0; i < kBlock; ++i) inBlock += from[i] == '\n' ? 1 : 0;
    count += inBlock;
  }
  for (; from < to; ++from) count += *from == '\n' ? 1 : 0;
  return count;
}

}  // namespace

TagReader::TagReader(std::string_view data) : data_(data) {
  if (data_.substr(0, kBinarySentinel.size()) == kBinarySentinel) {
    throw ParseError(1, "this is a binary DXF file; only ASCII DXF files can be read");
  }
  if (data_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    pos_.offset = kByteOrderMark.size();
  }
}

std::optional<Tag> TagReader::next() {
  return read(pos_);
}

void TagReader::moveTo(std::size_t offset) {
  const char* data = data_.data();
  if (offset >= pos_.offset) {
    pos_.line += countLineEnds(data + pos_.offset, data + offset);
  } else {
    pos_.line -= countLineEnds(data + offset, data + pos_.offset);
  }
  pos_.offset = offset;
}

std::optional<Tag> TagReader::peek() const {
  Position pos = pos_;
  return read(pos);
}

bool TagReader::atEnd() const {
  return pos_.offset >= data_.size() || isTrailingFiller(data_.substr(pos_.offset));
}

std::size_t TagReader::lastLine() const {
  const auto breaks = static_cast<std::size_t>(std::count(data_.begin(), data_.end(), '\n'));
  const bool unended = !data_.empty() && data_.back() != '\n';
  return std::max<std::size_t>(1, breaks + (unended ? 1 : 0));
}

std::optional<Tag> TagReader::read(Position& pos) const {
  const char* const begin = data_.data();
  const char* const end = begin + data_.size();
  const char* const codeLine = begin + pos.offset;
  if (codeLine >= end) return std::nullopt;

  const char* p = codeLine;
  while (p != end && isBlank(*p)) ++p;
  const bool negative = p != end && *p == '-';
  if (negative) ++p;
  int code = 0;
  int digits = 0;
  while (p != end && isDigit(*p) && digits <= kMaxCodeDigits) {
    code = code * 10 + (*p - '0');
    ++p;
    ++digits;
  }
  while (p != end && isBlank(*p)) ++p;
  if (p != end && *p == '\r') ++p;
  const bool atLineEnd = p == end || *p == '\n';
  if (!atLineEnd || digits == 0 || digits > kMaxCodeDigits || code > kMaxCode + negative) {
    if (isTrailingFiller(std::string_view(codeLine, static_cast<std::size_t>(end - codeLine)))) {
      return std::nullopt;
    }
    const std::string_view line = lineAt(data_, pos.offset);
    throw ParseError(pos.line, line.empty() ? "group code expected, found an empty line"
                                            : "group code expected, found " + quoteLine(line));
  }
  if (negative) code = -code;
  if (p == end) throw endsInsideTag(pos.line, code);
  const char* const valueBegin = p + 1;
  if (valueBegin == end) throw endsInsideTag(pos.line, code);
  const auto* lf = static_cast<const char*>(
      std::memchr(valueBegin, '\n', static_cast<std::size_t>(end - valueBegin)));
  const char* valueEnd = lf ? lf : end;
  const char* const nextLine = lf ? lf + 1 : end;
  if (valueEnd != valueBegin && valueEnd[-1] == '\r') --valueEnd;

  Tag tag;
  tag.code = code;
  tag.value = std::string_view(valueBegin, static_cast<std::size_t>(valueEnd - valueBegin));
  tag.line = pos.line;
  tag.offset = pos.offset;
  pos.offset = static_cast<std::size_t>(nextLine - begin);
  pos.line += 2;
  return tag;
}

}  // namespace host::dxf
