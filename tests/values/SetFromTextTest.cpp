// Set from text through the scripted host: the dialog's rules, and the body
// as the table editor calls it, with the ids of its rows.
#include "values/SetFromText.h"

#include <gtest/gtest.h>

#include <memory>

#include "ModuleFixture.h"
#include "oddata/OdAccess.h"
#include "oddata/ValueText.h"

namespace testing_support {
namespace {

using platform::ObjectId;
using platform::Point3d;
using zarvel::ODSelect;

class SetFromTextTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    ODSelect::forgetRemembered();
    platform::OdTableDef def;
    def.columns.push_back({L"NAME", platform::OdType::Character, L"", platform::OdValue(L"-")});
    def.columns.push_back({L"NUM", platform::OdType::Integer, L"", platform::OdValue(0)});
    host.db.createOdTable(L"Labels", def);
    host.db.createOdTable(L"TPMID_x", def);
  }

  template <typename E>
  ObjectId add(std::unique_ptr<E> entity) {
    return host.db.addEntity(std::move(entity), host.db.modelSpace());
  }
  ObjectId text(const std::wstring& s, Point3d position, int horizontal = 0, int vertical = 0,
                Point3d alignment = {}) {
    auto t = std::make_unique<host::TextEntity>();
    t->data.text = s;
    t->data.position = position;
    t->data.horizontalAlignment = static_cast<std::int16_t>(horizontal);
    t->data.verticalAlignment = static_cast<std::int16_t>(vertical);
    t->data.alignmentPoint = alignment;
    return add(std::move(t));
  }
  ObjectId point(Point3d at) {
    auto p = std::make_unique<host::PointEntity>();
    p->position = at;
    const ObjectId id = add(std::move(p));
    host.attach(id, L"Labels");
    return id;
  }
  // Chooses the table, the field and the tolerance, and presses OK.
  void answerDialog(const std::wstring& field, const std::wstring& tolerance) {
    host.dialogAnswer = [=](platform::DialogModel& d) {
      auto& dialog = static_cast<ODSelect&>(d);
      choose(dialog, ODSelect::kIdTableList, L"Labels");
      choose(dialog, ODSelect::kIdFieldList, field);
      dialog.control(ODSelect::kIdTolerance).text = tolerance;
      dialog.onChange(ODSelect::kIdTolerance);
      return platform::kIdOk;
    };
  }
  static void choose(ODSelect& dialog, int list, const std::wstring& item) {
    platform::DialogControl& c = dialog.control(list);
    for (std::size_t i = 0; i < c.items.size(); ++i) c.selected[i] = c.items[i] == item;
    dialog.onChange(list);
  }
  std::wstring valueOf(ObjectId id, int column = 0) {
    const auto records = zarvel::recordsOfEntity(zarvel::getODContainer(), id);
    return records.empty() ? L"(none)" : zarvel::valueToText(records.front().value(column));
  }
  std::vector<const host::BlockReferenceEntity*> markers() {
    std::vector<const host::BlockReferenceEntity*> found;
    for (ObjectId id : host.db.blockEntities(host.db.modelSpace())) {
      const auto* r = host.db.get<host::BlockReferenceEntity>(id);
      if (r != nullptr) found.push_back(r);
    }
    return found;
  }
};

TEST_F(SetFromTextTest, ToleranceEditKeepsItsLastGoodText) {
  ODSelect dialog;
  dialog.onInit();
  struct Step {
    const wchar_t* typed;
    const wchar_t* shown;
    double tolerance;
  };
  const Step steps[] = {
      {L"2.5", L"2.5", 2.5},  {L"-1", L"2.5", 2.5}, {L"abc", L"2.5", 2.5}, {L"-0", L"2.5", 2.5},
      {L"1e1", L"1e1", 10.0}, {L"0", L"0", 0.0},    {L"", L"", 1.0},
  };
  for (const Step& s : steps) {
    dialog.control(ODSelect::kIdTolerance).text = s.typed;
    dialog.onChange(ODSelect::kIdTolerance);
    EXPECT_EQ(dialog.control(ODSelect::kIdTolerance).text, s.shown) << s.typed;
    EXPECT_EQ(dialog.tolerance, s.tolerance) << s.typed;
  }
}

TEST_F(SetFromTextTest, OkWaitsForAFieldAndOnlyTheTableIsRestored) {
  {
    ODSelect dialog;
    dialog.onInit();
    EXPECT_EQ(dialog.control(ODSelect::kIdTableList).items, std::vector<std::wstring>{L"Labels"});
    EXPECT_FALSE(dialog.control(platform::kIdOk).enabled);
    choose(dialog, ODSelect::kIdTableList, L"Labels");
    EXPECT_EQ(dialog.control(ODSelect::kIdFieldList).items,
              (std::vector<std::wstring>{L"NAME", L"NUM"}));
    EXPECT_FALSE(dialog.control(platform::kIdOk).enabled);
    choose(dialog, ODSelect::kIdFieldList, L"NUM");
    EXPECT_TRUE(dialog.control(platform::kIdOk).enabled);
    EXPECT_EQ(ODSelect::fieldName(), L"NUM");
  }
  ODSelect again;
  again.onInit();
  EXPECT_EQ(again.control(ODSelect::kIdTableList).selected, std::vector<bool>{true});
  EXPECT_EQ(again.control(ODSelect::kIdFieldList).selectedCount(), 0);
  EXPECT_FALSE(again.control(platform::kIdOk).enabled);
  choose(again, ODSelect::kIdTableList, L"");
  EXPECT_EQ(ODSelect::tableName(), L"");
  EXPECT_EQ(ODSelect::fieldName(), L"");

  ODSelect limited({L"Parcels"});
  limited.onInit();
  EXPECT_TRUE(limited.control(ODSelect::kIdTableList).items.empty());
}

// The ids of rows, as the table editor passes them: texts leave the list,
// and so does an entity that won't open; each text is read at its own point.
TEST_F(SetFromTextTest, GivenIdsLoseTheirTextsAndTakeThemAtTheirPoints) {
  const ObjectId centred = point({0, 0});
  const ObjectId aligned = point({20, 0});
  const ObjectId paragraph = point({40, 0});
  const ObjectId failing = point({60, 0});
  host.db.setOpenFailure(failing, true);
  std::vector<ObjectId> ids = {
      centred,   text(L"centre", {100, 100}, 1, 0, {0.5, 0}),
      aligned,   text(L"aligned", {20.5, 0}, 3, 0, {100, 100}),
      paragraph,
  };
  auto m = std::make_unique<host::MTextEntity>();
  m->position = {40.5, 0, 7};
  m->text = L"{\\fArial;one}\\Ptwo";
  ids.push_back(add(std::move(m)));
  ids.push_back(failing);
  answerDialog(L"NAME", L"");

  zarvel::setFromText(ids);
  EXPECT_EQ(ids, (std::vector<ObjectId>{centred, aligned, paragraph}));
  EXPECT_EQ(valueOf(centred), L"centre");
  EXPECT_EQ(valueOf(aligned), L"aligned");
  EXPECT_EQ(valueOf(paragraph), L"one\\Ptwo");
  EXPECT_EQ(host.printed, L"Completed: 3 out of 3\n");
  // Layer and block are made though no marker is needed.
  EXPECT_FALSE(host.db.findLayer(L"zarvel_error").isNull());
  EXPECT_FALSE(host.db.findBlock(L"zarvel_error").isNull());
  EXPECT_TRUE(markers().empty());
}

TEST_F(SetFromTextTest, RivalsGetMarkersTheSizeOfTheTolerance) {
  host.db.addLayer(L"ZARVEL_ERROR");
  const ObjectId target = point({0, 0});
  std::vector<ObjectId> ids = {target, text(L"12 a", {1, 0}), text(L"13 b", {0, 1.5}),
                               point({50, 0})};
  answerDialog(L"NUM", L"2");
  zarvel::setFromText(ids);
  EXPECT_EQ(host.printed, L"Completed: 0 out of 2 (1 out of range, 1 multiple)\n");
  EXPECT_EQ(host.db.layerIds().size(), 2u) << "a layer of that name in other case is kept";
  const std::vector<const host::BlockReferenceEntity*> placed = markers();
  ASSERT_EQ(placed.size(), 2u);
  EXPECT_EQ(placed[0]->position, (Point3d{1, 0, 0}));
  EXPECT_EQ(placed[1]->position, (Point3d{0, 1.5, 0}));
  EXPECT_EQ(placed[0]->scale, (Point3d{2, 2, 2}));
  EXPECT_EQ(placed[0]->layer, host.db.findLayer(L"ZARVEL_ERROR"));
  EXPECT_EQ(placed[0]->color, platform::kColorIndexByLayer);

  // Within reach of only one of them, the target takes its leading number.
  host.printed.clear();
  ids = {target, text(L"12 a", {1, 0}), text(L"13 b", {0, 1.5})};
  answerDialog(L"NUM", L"1.2");
  zarvel::setFromText(ids);
  EXPECT_EQ(host.printed, L"Completed: 1 out of 1\n");
  EXPECT_EQ(valueOf(target, 1), L"12");
}

}  // namespace
}  // namespace testing_support
