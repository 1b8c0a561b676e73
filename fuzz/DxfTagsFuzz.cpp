// Fuzz target for the drawing-file tag layer: any bytes must end in tags or a ParseError, never
// a crash; every tag must lie inside the input; peeking must agree with reading; the tags must
// write back to text that reads as the same tags; value parsing and text decoding must cope
// with whatever the values hold.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "GroupCodes.h"
#include "TagReader.h"
#include "TagWriter.h"
#include "TextCodec.h"
#include "host/dxf/ParseError.h"

namespace {

using host::dxf::ParseError;
using host::dxf::Tag;
using host::dxf::TagReader;
using host::dxf::TagWriter;
using host::dxf::ValueType;

void check(bool condition) {
  if (!condition) std::abort();
}

bool sameTag(const Tag& a, const Tag& b) {
  return a.code == b.code && a.value == b.value && a.line == b.line && a.offset == b.offset;
}

void exerciseValue(const Tag& tag) {
  switch (host::dxf::valueType(tag.code)) {
    case ValueType::Double:
      if (auto value = host::dxf::parseDouble(tag.value)) {
        std::string text;
        TagWriter(text).write(tag.code, *value);
        TagReader reader(text);
        check(host::dxf::parseDouble(reader.next()->value) == *value);
      }
      break;
    case ValueType::Int16:
    case ValueType::Int32:
    case ValueType::Int64:
    case ValueType::Bool:
      (void)host::dxf::parseInt(tag.value);
      break;
    case ValueType::Handle:
      if (auto handle = host::dxf::parseHandle(tag.value)) {
        std::string text;
        TagWriter(text).writeHandle(tag.code, *handle);
        TagReader reader(text);
        check(host::dxf::parseHandle(reader.next()->value) == *handle);
      }
      break;
    default: {
      static const host::dxf::TextCodec utf8("AC1027", "");
      static const host::dxf::TextCodec shiftJis("AC1015", "ANSI_932");
      (void)utf8.encode(utf8.decode(tag.value));
      (void)shiftJis.encode(shiftJis.decode(tag.value));
      break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::vector<Tag> tags;
  bool rewritable = true;
  try {
    TagReader reader(bytes);
    std::size_t lastLine = 0;
    for (;;) {
      const auto peeked = reader.peek();
      const auto tag = reader.next();
      check(peeked.has_value() == tag.has_value());
      if (!tag) break;
      check(sameTag(*peeked, *tag));
      check(tag->line > lastLine);
      lastLine = tag->line;
      check(tag->offset < size);
      check(tag->value.data() >= bytes.data());
      check(tag->value.data() + tag->value.size() <= bytes.data() + size);
      check(tag->value.find('\n') == std::string_view::npos);
      // A value that still ends in CR (its line ended CR CR LF) cannot be told apart on rereading.
      if (!tag->value.empty() && tag->value.back() == '\r') rewritable = false;
      exerciseValue(*tag);
      tags.push_back(*tag);
    }
    check(reader.atEnd());
  } catch (const ParseError& error) {
    check(error.what() != nullptr);
    return 0;
  }

  if (!rewritable) return 0;
  std::string text;
  TagWriter writer(text);
  for (const Tag& tag : tags) writer.write(tag.code, tag.value);
  TagReader reader(text);
  for (const Tag& tag : tags) {
    const auto again = reader.next();
    check(again && again->code == tag.code && again->value == tag.value);
  }
  check(!reader.next());
  return 0;
}
