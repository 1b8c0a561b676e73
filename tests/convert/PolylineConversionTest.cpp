// The conversions where a script can't reach: feature classes, which no
// drawing file carries, and a source that won't open.
#include "convert/PolylineConversion.h"

#include "ModuleFixture.h"

namespace testing_support {
namespace {

using platform::EntityClass;

class PolylineConversionTest : public ModuleTest {};

struct Conversion {
  const char* name;
  platform::ObjectId (*convert)(platform::ObjectId, int);
  EntityClass made;
};

const Conversion kConversions[] = {
    {"2D", zarvel::convertTo2dPolyline, EntityClass::LwPolyline},
    {"3D", zarvel::convertTo3dPolyline, EntityClass::Polyline3d},
};

TEST_F(PolylineConversionTest, NewPolylineTakesClassesAndRecordsAndLeavesTheSource) {
  host.db.modifyHeader().featureClasses[L"Roads"] = L"Road lines";
  host.defineTable(L"Roads");
  host.defineTable(L"TPMID_x");
  for (const Conversion& c : kConversions) {
    SCOPED_TRACE(c.name);
    const platform::ObjectId line = host.addLine();
    host.attach(line, L"Roads4 TPMID_x7");
    ASSERT_EQ(host.featureClasses().classify(line, L"Roads"), platform::kClassifyOk);

    const platform::ObjectId made = c.convert(line, 10);
    ASSERT_FALSE(made.isNull());
    EXPECT_EQ(host.geometry().entityClass(made), c.made);
    std::vector<std::wstring> names;
    std::vector<std::wstring> displayNames;
    host.featureClasses().getAllTags(made, names, displayNames);
    EXPECT_EQ(names, std::vector<std::wstring>{L"Roads"});
    EXPECT_EQ(host.recordsOn(made), L"Roads4 TPMID_x7");
    EXPECT_EQ(dynamic_cast<host::DbEntityGeometry&>(host.geometry()).heldCurves(), 0u)
        << "a curve of the conversion's own left unreleased";
    // Erasing the source is the command's part.
    EXPECT_EQ(host.recordsOn(line), L"Roads4 TPMID_x7");

    host.db.setOpenFailure(line, true);
    const std::size_t entities = host.db.blockEntities(host.db.modelSpace()).size();
    EXPECT_TRUE(c.convert(line, 10).isNull());
    EXPECT_EQ(host.db.blockEntities(host.db.modelSpace()).size(), entities);
  }
}

}  // namespace
}  // namespace testing_support
