// Reading a drawing file into a database and the image of the file.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/db/Database.h"

namespace host::dxf {

// What a drawing file held beyond the database's model. Only the reader and
// the writer look inside; the rest of the host keeps it with the drawing.
struct FileImage;
struct FileImageDeleter {
  void operator()(FileImage* image) const;
};
using FileImagePtr = std::unique_ptr<FileImage, FileImageDeleter>;

// What the file held that the database takes, but not as the file had it.
struct FileWarning {
  std::size_t line = 0;  // 1-based
  std::string message;
};

struct LoadedDrawing {
  std::unique_ptr<Database> db;
  FileImagePtr image;
  // In the order of their lines.
  std::vector<FileWarning> warnings;
};

// Told how far reading has come, from 0 to 1.
using ProgressFunction = std::function<void(double)>;

// Reads the text of an ASCII drawing file. Throws ParseError, with the line,
// for anything malformed or that the database cannot hold; nothing is
// half-read. What it holds but not as the file has it gives warnings.
LoadedDrawing readDrawing(std::shared_ptr<const std::string> text,
                          const ProgressFunction& progress = {});

}  // namespace host::dxf
