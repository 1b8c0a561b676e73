// Fuzz target for reading whole drawing files: any bytes must give a drawing or
// a ParseError, never a crash; a drawing that reads must write, and what it
// writes must read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "host/dxf/DrawingReader.h"
#include "host/dxf/DrawingWriter.h"
#include "host/dxf/ParseError.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto text = std::make_shared<const std::string>(reinterpret_cast<const char*>(data), size);
  host::dxf::LoadedDrawing drawing;
  try {
    drawing = host::dxf::readDrawing(text);
  } catch (const host::dxf::ParseError&) {
    return 0;
  }
  auto written = std::make_shared<const std::string>(
      host::dxf::writeDrawing(*drawing.db, *drawing.image));
  try {
    host::dxf::readDrawing(written);
  } catch (const host::dxf::ParseError&) {
    std::abort();  // what the host writes, it must be able to read
  }
  return 0;
}
