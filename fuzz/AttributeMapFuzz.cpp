// Fuzz target for the attribute map's reading: any bytes decode to text, the
// text splits into buffer-sized lines, and each line parses to nothing, an
// invalid line or a mapping of four clean fields, never a crash.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "attributes/AttributeMap.h"
#include "platform/TextFile.h"

namespace {

void check(bool condition) {
  if (!condition) std::abort();
}

bool cleanField(const std::wstring& field) {
  return field.find(L'\t') == std::wstring::npos && field.find(L'?') == std::wstring::npos &&
         (field.empty() || (field.front() != L' ' && field.back() != L' '));
}

void checkLine(const std::wstring& piece) {
  check(piece.size() < platform::TextFileLines::kBufferSize);
  const zarvel::MapLine line = zarvel::parseMapLine(piece);
  check(line.text.find(L'?') == std::wstring::npos);
  check(line.text.size() <= piece.size());
  check(line.text.empty() == (line.kind == zarvel::MapLine::Kind::Empty));
  if (!line.text.empty()) {
    check(std::wstring_view(L" \t\r\n").find(line.text.back()) == std::wstring_view::npos);
  }
  if (line.kind != zarvel::MapLine::Kind::Mapping) return;
  check(cleanField(line.block) && cleanField(line.tag) && cleanField(line.table) &&
        cleanField(line.column));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  platform::TextFileLines lines(platform::decodeTextFile(bytes, platform::latin1Text));
  std::wstring piece;
  while (lines.next(piece)) checkLine(piece);
  return 0;
}
