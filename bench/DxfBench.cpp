// Reading and writing one large drawing file, timed: how many MB a second the
// reader and the writer manage, and the memory the loaded drawing takes.
// Usage: bench_dxf FILE.dxf
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

#include "host/dxf/AtomicFile.h"
#include "host/dxf/DrawingReader.h"
#include "host/dxf/DrawingWriter.h"
#include "host/dxf/ParseError.h"

namespace {

double seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: bench_dxf FILE.dxf\n");
    return 2;
  }
  host::dxf::FileBytes file = host::dxf::readWholeFile(argv[1]);
  if (file.error) {
    std::fprintf(stderr, "%s\n", file.error->c_str());
    return 1;
  }
  const double megabytes = static_cast<double>(file.bytes.size()) / 1e6;
  auto text = std::make_shared<const std::string>(std::move(file.bytes));
  try {
    auto start = std::chrono::steady_clock::now();
    host::dxf::LoadedDrawing drawing = host::dxf::readDrawing(text);
    const double read = seconds(start);
    const double peakAfterRead = peakMegabytes();
    start = std::chrono::steady_clock::now();
    const std::string written = host::dxf::writeDrawing(*drawing.db, *drawing.image);
    const double write = seconds(start);
    std::printf("file            %.1f MB, %llu objects\n", megabytes,
                static_cast<unsigned long long>(drawing.db->idCount()));
    std::printf("read            %.2f s  %.0f MB/s\n", read, megabytes / read);
    std::printf("write           %.2f s  %.0f MB/s  (%s)\n", write, megabytes / write,
                written == *text ? "identical to the file" : "differs from the file");
    std::printf("peak memory     %.0f MB after reading (%.2f times the file)\n", peakAfterRead,
                peakAfterRead / megabytes);
  } catch (const host::dxf::ParseError& e) {
    std::fprintf(stderr, "line %zu: %s\n", e.line(), e.what());
    return 1;
  }
  return 0;
}
