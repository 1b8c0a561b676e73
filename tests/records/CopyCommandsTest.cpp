// The copy commands: which records travel, with which values, and where the
// reference's properties go. The transcripts cover prompts, cancels and undo.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "records/CopyCommands.h"

namespace testing_support {
namespace {

using platform::PromptStatus;

class CopyTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    for (const wchar_t* name : {L"A", L"a", L"B", L"TPMID_x"}) host.defineTable(name);
  }
  // Runs the command on the targets (the pick-first set) from the reference.
  void copy(const std::wstring& command, std::vector<ObjectId> targets, ObjectId reference) {
    host.pickFirst = std::move(targets);
    host.entities.push_back({PromptStatus::Normal, reference, {}, false});
    host.printed.clear();
    run(command);
  }
};

struct RecordCase {
  const wchar_t* command;
  const wchar_t* reference;  // records on the reference, as given
  const wchar_t* target;     // records on the target afterwards
  const wchar_t* referenceAfter;
  const wchar_t* printed;
};

// The reference stands among the targets, beside one target that has records
// of a table the reference has twice, of one it lacks, of a topology table and
// of a table whose name differs only in case.
TEST_F(CopyTest, RecordsThatTravel) {
  const RecordCase cases[] = {
      {L"ZARVEL_COPY_OD", L"A7 A8 TPMID_x4", L"A3 B5 A6 TPMID_x1 a2 A A", L"A7 A8 TPMID_x4 A A",
       L"Completed: 2\n"},
      {L"ZARVEL_COPY_OD_VALUE", L"A7 A8 TPMID_x4", L"A3 B5 A6 TPMID_x1 a2 A7 A8", L"A7 A8 TPMID_x4",
       L"Completed: 2\n"},
      {L"ZARVEL_COPY_VALUE", L"A7 A8 TPMID_x4", L"A7 B5 A7 TPMID_x1 a2", L"A7 A8 TPMID_x4",
       L"Completed: 2\n"},
      {L"ZARVEL_COPY_ALL", L"A7 A8 TPMID_x4", L"A3 B5 A6 TPMID_x1 a2 A A", L"A7 A8 TPMID_x4 A A",
       L"Completed: 2\n"},
      {L"ZARVEL_COPY_ALL_VALUE", L"A7 A8 TPMID_x4", L"A3 B5 A6 TPMID_x1 a2 A7 A8",
       L"A7 A8 TPMID_x4 A7 A8", L"Completed: 2\n"},
      // Only topology records: nothing travels, and only two commands count targets.
      {L"ZARVEL_COPY_OD", L"TPMID_x4", L"A3 B5 A6 TPMID_x1 a2", L"TPMID_x4", L"Completed: 0\n"},
      {L"ZARVEL_COPY_OD_VALUE", L"TPMID_x4", L"A3 B5 A6 TPMID_x1 a2", L"TPMID_x4",
       L"Completed: 2\n"},
      {L"ZARVEL_COPY_VALUE", L"TPMID_x4", L"A3 B5 A6 TPMID_x1 a2", L"TPMID_x4", L"Completed: 0\n"},
      {L"ZARVEL_COPY_ALL", L"TPMID_x4", L"A3 B5 A6 TPMID_x1 a2", L"TPMID_x4", L"Completed: 0\n"},
      {L"ZARVEL_COPY_ALL_VALUE", L"TPMID_x4", L"A3 B5 A6 TPMID_x1 a2", L"TPMID_x4",
       L"Completed: 2\n"},
  };
  for (const RecordCase& c : cases) {
    SCOPED_TRACE(platform::toUtf8(c.command) + " from " + platform::toUtf8(c.reference));
    const ObjectId reference = host.addLine();
    const ObjectId target = host.addLine();
    host.attach(reference, c.reference);
    host.attach(target, L"A3 B5 A6 TPMID_x1 a2");
    copy(c.command, {target, reference}, reference);
    EXPECT_EQ(host.recordsOn(target), c.target);
    EXPECT_EQ(host.recordsOn(reference), c.referenceAfter);
    EXPECT_EQ(host.printed, c.printed);
  }
  // The helper the value copy is built on, called alone.
  const ObjectId source = host.addLine();
  const ObjectId target = host.addLine();
  host.attach(source, L"B9 A7 A8");
  host.attach(target, L"A3 TPMID_x1 A6");
  EXPECT_EQ(zarvel::copyRecordValues(target, source, host.project().odContainer()), 2);
  EXPECT_EQ(host.recordsOn(target), L"A7 TPMID_x1 A7");
}

// The five properties, a block reference's attributes with them, and the
// reference's frozen layer taken all the same; a target that won't open is no
// target.
TEST_F(CopyTest, PropertiesGoWithTheRecords) {
  const ObjectId reference = host.addOnLayer(L"Frozen", &host::Layer::frozen);
  host.attach(reference, L"A7");
  platform::EntityProperties given = *host.drawing().entityProperties(reference);
  given.color = {1, 0x123456, L"BOOK$RED"};
  given.lineWeight = 50;
  given.linetypeScale = 2.5;
  ASSERT_EQ(host.drawing().setEntityProperties(reference, given), platform::Status::Ok);

  auto block = std::make_unique<host::BlockReferenceEntity>();
  block->color = 3;
  const ObjectId target = host.db.addEntity(std::move(block), host.db.modelSpace());
  auto attribute = std::make_unique<host::AttributeEntity>();
  attribute->color = 3;
  const ObjectId attributeId = host.db.addEntity(std::move(attribute), host.db.modelSpace());
  host.db.modify<host::BlockReferenceEntity>(target)->attributes.push_back(attributeId);
  const ObjectId failing = host.addLine();
  host.db.setOpenFailure(failing, true);

  for (const wchar_t* command : {L"ZARVEL_COPY_ALL", L"ZARVEL_COPY_ALL_VALUE"}) {
    SCOPED_TRACE(platform::toUtf8(command));
    host::Entity& e = *host.db.modify<host::Entity>(target);
    e.color = 3;
    e.layer = host.db.findLayer(L"0");
    copy(command, {target, failing}, reference);
    EXPECT_EQ(host.printed, L"Completed: 1\n");
    for (ObjectId id : {target, attributeId}) {
      const auto taken = host.drawing().entityProperties(id);
      ASSERT_TRUE(taken);
      EXPECT_EQ(taken->layer, given.layer);
      EXPECT_EQ(taken->color.index, 1);
      EXPECT_EQ(taken->color.trueColor, 0x123456);
      EXPECT_EQ(taken->color.bookName, L"BOOK$RED");
      EXPECT_EQ(taken->lineWeight, 50);
      EXPECT_EQ(taken->linetypeScale, 2.5);
    }
  }
  EXPECT_EQ(host.recordsOn(target), L"A A7");
}

// The reference is asked for only when some target is usable, and a missing
// one ends every command with the same error.
TEST_F(CopyTest, ReferencePrompt) {
  const ObjectId frozen = host.addOnLayer(L"F", &host::Layer::frozen);
  const ObjectId usable = host.addLine();
  host.attach(usable, L"A1");
  for (const wchar_t* command : {L"ZARVEL_COPY_OD", L"ZARVEL_COPY_VALUE", L"ZARVEL_COPY_OD_VALUE",
                                 L"ZARVEL_COPY_ALL", L"ZARVEL_COPY_ALL_VALUE"}) {
    SCOPED_TRACE(platform::toUtf8(command));
    host.prompts.clear();
    copy(command, {frozen}, usable);
    EXPECT_EQ(host.printed, L"Completed: 0\n");
    EXPECT_TRUE(host.prompts.empty());
    host.entities.clear();
    copy(command, {usable}, ObjectId());
    EXPECT_EQ(host.printed, L"Error: no objects selected.\n");
    EXPECT_EQ(host.recordsOn(usable), L"A1");
  }
}

}  // namespace
}  // namespace testing_support
