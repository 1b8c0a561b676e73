// Opening and saving drawing files for a session: reading, writing through a
// temporary file, and the errors a user sees, naming the file and the line.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/editor/Document.h"

namespace host {

struct OpenResult {
  std::unique_ptr<Document> document;
  std::wstring error;  // "Error: <file>:<line>: <what>" when document is null
  // "Warning: <file>:<line>: <what>", one a line, for what the drawing took
  // but not as the file had it; printed where the error would be.
  std::wstring warnings = {};
};

// A new drawing, from the host's template.
std::unique_ptr<Document> newDocument();
OpenResult openDocument(const std::filesystem::path& path);
// Writes the document to the path through a temporary file; an error text
// when it could not, the old file being left as it was.
std::optional<std::wstring> saveDocument(Document& document, const std::filesystem::path& path);

}  // namespace host
