// Reading a drawing file into a database and the image of the file.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "db/Database.h"
#include "dxf/FileImage.h"

namespace host::dxf {

struct LoadedDrawing {
  std::unique_ptr<Database> db;
  std::unique_ptr<FileImage> image;
};

// Told how far reading has come, from 0 to 1.
using ProgressFunction = std::function<void(double)>;

// Reads the text of an ASCII drawing file. Throws ParseError, with the line,
// for anything malformed; nothing is half-read.
LoadedDrawing readDrawing(std::shared_ptr<const std::string> text,
                          const ProgressFunction& progress = {});

}  // namespace host::dxf
