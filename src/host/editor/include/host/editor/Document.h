// One open drawing, the image of the file it came from, and the editor state
// that belongs to it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/db/Database.h"
#include "host/db/PortDrawing.h"
#include "host/db/PortFeatureClasses.h"
#include "host/db/PortObjectData.h"
#include "host/dxf/DrawingReader.h"
#include "host/editor/AttachedDrawings.h"
#include "host/geometry/PortGeometry.h"

namespace host {

struct Document {
  // A drawing without a file: the database alone, as tests make it.
  Document() : Document(std::make_unique<Database>(), nullptr) {}
  Document(std::unique_ptr<Database> database, dxf::FileImagePtr fileImage)
      : owned(std::move(database)), db(*owned), image(std::move(fileImage)) {
    project.setDrawingSet(&attached);
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  std::unique_ptr<Database> owned;
  Database& db;
  // What the drawing's file held; a new drawing's is the template's.
  dxf::FileImagePtr image;
  DbProject project{db};
  // The drawings attached to the project; they go with the document.
  AttachedDrawingSet attached{project.sourceTables()};
  DbDrawing drawing{db};
  DbFeatureClasses featureClasses{db};
  DbEntityGeometry geometry{db};
  // The file the drawing was opened from or last saved to; empty for a new one.
  std::filesystem::path path;
  std::wstring name = L"Drawing1.dxf";
  // The pick-first set: what is selected between commands.
  std::vector<ObjectId> pickFirst;
  // The last selection made at a prompt, for the "P" item.
  std::vector<ObjectId> previous;
  int lockCount = 0;
};

}  // namespace host
