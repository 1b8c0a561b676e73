// One open drawing and the editor state that belongs to it.
#pragma once

#include <string>
#include <vector>

#include "db/Database.h"
#include "db/PortDrawing.h"
#include "db/PortFeatureClasses.h"
#include "db/PortObjectData.h"

namespace host {

struct Document {
  Database db;
  DbProject project{db};
  DbDrawing drawing{db};
  DbFeatureClasses featureClasses{db};
  std::wstring name = L"Drawing1.dxf";
  // The pick-first set: what is selected between commands.
  std::vector<ObjectId> pickFirst;
  // The last selection made at a prompt, for the "P" item.
  std::vector<ObjectId> previous;
  int lockCount = 0;
};

}  // namespace host
