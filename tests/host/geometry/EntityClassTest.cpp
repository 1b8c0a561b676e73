// The list of entity kinds against what the host does with each kind: a
// drawing from an independent writer brings every listed kind under its DXF
// name, the geometry answers curve questions of exactly the kinds the list
// calls curves, and every kind the files keep geometry of has extents.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <string>

#include "host/db/Database.h"
#include "host/dxf/DrawingReader.h"
#include "host/geometry/Curves.h"
#include "host/geometry/Extents.h"
#include "platform/EntityClass.h"

namespace host {
namespace {

TEST(EntityClassTest, EveryKindIsReadByItsNameIsACurveWhenListedAndHasExtents) {
  std::ifstream in(std::string(FIXTURES_DIR) + "/full_r2018.dxf", std::ios::binary);
  auto text = std::make_shared<const std::string>(std::istreambuf_iterator<char>(in),
                                                  std::istreambuf_iterator<char>());
  ASSERT_FALSE(text->empty());
  const dxf::LoadedDrawing drawing = dxf::readDrawing(text);
  const Database& db = *drawing.db;

  std::set<EntityKind> met;
  int boxed = 0;
  const auto check = [&](const Entity& e) {
    met.insert(e.kind());
    const std::wstring wide = typeName(e);
    const std::string name(wide.begin(), wide.end());
    // Only a mesh, which shares the old-style polylines' name, is left unknown
    // under a listed name.
    if (e.kind() == EntityKind::Unknown && name != "POLYLINE") {
      EXPECT_EQ(platform::entityClassOfDxfName(name), EntityKind::Unknown) << name;
    }
    EXPECT_EQ(geometry::paramRange(e).has_value(), platform::isCurve(e.kind())) << name;
    // Solids of this format keep their bodies in a binary section the host
    // doesn't read; of the kinds it does not model, only some keep points.
    if (e.kind() == EntityKind::Solid3d || e.kind() == EntityKind::Region) return;
    if (e.kind() == EntityKind::Unknown && name != "SOLID" && name != "3DFACE") return;
    EXPECT_FALSE(geometry::extentsOf(db, e).isEmpty()) << name;
    ++boxed;
  };
  for (ObjectId block : db.blockIds()) {
    for (ObjectId id : db.blockEntities(block)) {
      const Entity& e = *db.entity(id);
      check(e);
      if (e.kind() != EntityKind::BlockReference) continue;
      for (ObjectId a : static_cast<const BlockReferenceEntity&>(e).attributes) {
        check(*db.entity(a));
      }
    }
  }
  for (const platform::EntityClassInfo& info : platform::kEntityClasses) {
    EXPECT_EQ(met.count(info.kind), 1u) << info.dxfName << " is in no entity of the drawing";
  }
  EXPECT_GT(boxed, 30);
}

}  // namespace
}  // namespace host
