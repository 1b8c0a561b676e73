// Drawing files of a session.
#include "host/editor/DrawingFiles.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>

#include "host/dxf/AtomicFile.h"
#include "host/dxf/DrawingReader.h"
#include "host/dxf/DrawingWriter.h"
#include "host/dxf/ParseError.h"
#include "host/dxf/Template.h"
#include "platform/Text.h"

namespace host {
namespace {

// Shows how far a long read or write has come, on a terminal only, and only
// once it has taken a second: short work and transcripts stay quiet.
class ProgressLine {
 public:
  explicit ProgressLine(std::string label)
      : label_(std::move(label)),
        start_(std::chrono::steady_clock::now()),
        terminal_(isatty(STDERR_FILENO) != 0) {}
  ~ProgressLine() {
    if (shown_) std::fprintf(stderr, "\r%s: done.\n", label_.c_str());
  }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void operator()(double fraction) {
    if (!terminal_) return;
    if (!shown_ && std::chrono::steady_clock::now() - start_ < std::chrono::seconds(1)) return;
    shown_ = true;
    std::fprintf(stderr, "\r%s: %3d%%", label_.c_str(), static_cast<int>(fraction * 100.0));
    std::fflush(stderr);
  }

 private:
  std::string label_;
  std::chrono::steady_clock::time_point start_;
  bool terminal_;
  bool shown_ = false;
};

std::wstring fileText(const std::filesystem::path& path) {
  return platform::fromUtf8(path.string());
}

// The file and, when there is one, the line.
std::wstring where(const std::filesystem::path& path, std::size_t line) {
  return fileText(path) + (line > 0 ? L":" + std::to_wstring(line) : L"");
}

std::unique_ptr<Document> documentOf(dxf::LoadedDrawing loaded) {
  return std::make_unique<Document>(std::move(loaded.db), std::move(loaded.image));
}

}  // namespace

std::unique_ptr<Document> newDocument() {
  auto text = std::make_shared<const std::string>(dxf::newDrawingText());
  return documentOf(dxf::readDrawing(text));
}

OpenResult openDocument(const std::filesystem::path& path) {
  dxf::FileBytes file = dxf::readWholeFile(path);
  if (file.error) return {nullptr, L"Error: " + platform::fromUtf8(*file.error)};
  auto text = std::make_shared<const std::string>(std::move(file.bytes));
  try {
    ProgressLine progress("Reading " + path.filename().string());
    dxf::LoadedDrawing loaded = dxf::readDrawing(text, [&progress](double f) { progress(f); });
    std::wstring warnings;
    for (const dxf::FileWarning& w : loaded.warnings) {
      warnings +=
          L"Warning: " + where(path, w.line) + L": " + platform::fromUtf8(w.message) + L"\n";
    }
    std::unique_ptr<Document> document = documentOf(std::move(loaded));
    document->path = path;
    document->name = platform::fromUtf8(path.filename().string());
    return {std::move(document), L"", warnings};
  } catch (const dxf::ParseError& error) {
    return {nullptr,
            L"Error: " + where(path, error.line()) + L": " + platform::fromUtf8(error.what())};
  } catch (const std::exception& error) {
    return {nullptr, L"Error: " + fileText(path) + L": " + platform::fromUtf8(error.what())};
  }
}

std::optional<std::wstring> saveDocument(Document& document, const std::filesystem::path& path) {
  try {
    std::string text;
    {
      ProgressLine progress("Writing " + path.filename().string());
      text = dxf::writeDrawing(document.db, *document.image,
                               [&progress](double f) { progress(f); });
    }
    if (auto error = dxf::writeFileAtomically(path, text)) {
      return L"Error: " + platform::fromUtf8(*error);
    }
  } catch (const std::exception& error) {
    return L"Error: " + fileText(path) + L": " + platform::fromUtf8(error.what());
  }
  document.path = path;
  document.name = platform::fromUtf8(path.filename().string());
  return std::nullopt;
}

}  // namespace host
