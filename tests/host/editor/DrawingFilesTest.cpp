// Saving a session's drawing: a save that cannot be made says why and changes nothing, neither
// the file on disk nor the drawing, which saves once it can.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "host/db/PortDrawing.h"
#include "host/editor/DrawingFiles.h"
#include "platform/Text.h"

namespace host {
namespace {

namespace fs = std::filesystem;

std::string readText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(DrawingFiles, ARefusedSaveLeavesTheFileAndTheDrawingAsTheyWere) {
  const fs::path target = fs::temp_directory_path() /
                          ("zarvel-refused-save-" + std::to_string(::getpid()) + ".dxf");
  std::ofstream(target, std::ios::binary) << "precious";
  std::unique_ptr<Document> document = newDocument();
  Database& db = document->db;
  auto line = std::make_unique<LineEntity>();
  line->end = {1, 1, 0};
  const ObjectId id = db.addEntity(std::move(line), db.modelSpace());
  const ObjectId block = db.entity(id)->owner;
  db.modify<Entity>(id)->owner = ObjectId(1000000);

  const std::optional<std::wstring> error = saveDocument(*document, target);
  ASSERT_TRUE(error);
  const std::wstring expected = L"Error: " + platform::fromUtf8(target.string()) +
                                L": the drawing is inconsistent and was not saved: the LINE " +
                                handleToText(db.entity(id)->handle) + L" belongs to no block";
  EXPECT_EQ(*error, expected);
  EXPECT_EQ(readText(target), "precious");
  EXPECT_TRUE(document->path.empty());

  db.modify<Entity>(id)->owner = block;
  EXPECT_EQ(saveDocument(*document, target), std::nullopt);
  EXPECT_NE(readText(target).find("AcDbLine"), std::string::npos);
  EXPECT_EQ(document->path, target);
  fs::remove(target);
}

}  // namespace
}  // namespace host
