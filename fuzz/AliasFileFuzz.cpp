// Fuzz target for the alias files: any bytes, in any encoding the text mode
// takes, must read as lines into the maps or be rejected line by line, never
// crash; every line is either taken or rejected, and a turn of the maps for
// the way back must cope with whatever they hold.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/TextFile.h"
#include "tables/AliasFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  // The first byte picks the file's kind and a buffer size, small ones included,
  // so that lines cut in pieces are met often.
  const auto kind = static_cast<zarvel::AliasFile>(data[0] % 3);
  const std::size_t buffer =
      data[0] < 128 ? 2 + data[0] % 16 : platform::TextFileLines::kBufferSize;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

  const std::wstring text = platform::decodeTextFile(bytes, platform::latin1Text);
  std::size_t pieces = 0;
  {
    platform::TextFileLines lines(text, buffer);
    for (std::wstring piece; lines.next(piece);) {
      if (piece.empty() || piece.size() >= buffer) std::abort();
      ++pieces;
    }
  }
  zarvel::AliasMaps maps;
  platform::TextFileLines lines(text, buffer);
  int rejected = 0;
  const int taken =
      zarvel::readAliasLines(lines, kind, maps, [&](const std::wstring&) { ++rejected; });
  if (static_cast<std::size_t>(taken + rejected) != pieces) std::abort();
  maps.invert();
  return 0;
}
