// Reading a drawing file into a database and the image of the file.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/db/Database.h"

namespace host::dxf {

// What a drawing file held beyond the database's model. Only the reader and
// the writer look inside; the rest of the host keeps it with the drawing.
struct FileImage;
struct FileImageDeleter {
  void operator()(FileImage* image) const;
};
using FileImagePtr = std::unique_ptr<FileImage, FileImageDeleter>;

struct LoadedDrawing {
  std::unique_ptr<Database> db;
  FileImagePtr image;
};

// Told how far reading has come, from 0 to 1.
using ProgressFunction = std::function<void(double)>;

// Reads the text of an ASCII drawing file. Throws ParseError, with the line,
// for anything malformed; nothing is half-read.
LoadedDrawing readDrawing(std::shared_ptr<const std::string> text,
                          const ProgressFunction& progress = {});

}  // namespace host::dxf
