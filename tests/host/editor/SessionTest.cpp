// The session's rules around commands: the pick-first set and its event, the
// command events, one undo step per command, and commands that throw.
#include "host/editor/Session.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>

#include "host/dxf/DrawingReader.h"
#include "host/dxf/DrawingWriter.h"
#include "host/editor/HostCommands.h"
#include "platform/Text.h"

namespace host {
namespace {

struct Recorder : platform::EditorReactor {
  int pickfirstChanges = 0;
  std::vector<std::wstring> ended;
  std::vector<std::wstring> cancelled;
  std::vector<std::wstring> failed;
  void pickfirstModified() override { ++pickfirstChanges; }
  void commandEnded(const std::wstring& name) override { ended.push_back(name); }
  void commandCancelled(const std::wstring& name) override { cancelled.push_back(name); }
  void commandFailed(const std::wstring& name) override { failed.push_back(name); }
};

struct ScriptRun {
  explicit ScriptRun(const std::string& script) : in(script) {
    registerHostCommands(session);
    session.editor().addReactor(&recorder);
  }
  std::istringstream in;
  std::ostringstream out;
  ScriptConsole console{in, out};
  Session session{console};
  Recorder recorder;
};

TEST(SessionTest, SelectionLastsUntilTheNextCommandUsesItUp) {
  ScriptRun run("POINT\n1,1\nPOINT\n2,2\nSELECT\nALL\n\nLIST\nLIST\n*Cancel*\n");
  run.session.run();
  // Set by SELECT, cleared when the first LIST has used it.
  EXPECT_EQ(run.recorder.pickfirstChanges, 2);
  // The second LIST was cancelled at its prompt.
  EXPECT_EQ(run.recorder.ended,
            (std::vector<std::wstring>{L"POINT", L"POINT", L"SELECT", L"LIST"}));
  EXPECT_EQ(run.recorder.cancelled, (std::vector<std::wstring>{L"LIST"}));
  EXPECT_TRUE(run.session.document().pickFirst.empty());
  // The second LIST found nothing selected and asked.
  EXPECT_NE(run.out.str().find("Command: LIST\nSelect objects: *Cancel*\n"), std::string::npos);
}

TEST(SessionTest, NamesIgnoreCaseAndPrefixesAndEachCommandIsOneUndoStep) {
  // ODLIST changes nothing, so it is no step: UNDO takes back the line.
  ScriptRun run("_.point\n0,0\n._Point\n1,1\nfrob\nLINE\n0,0\n1,0\n2,0\n\nODLIST\nALL\n\nUNDO\n\n");
  run.session.run();
  EXPECT_EQ(run.session.db().blockEntities(run.session.db().modelSpace()).size(), 2u);
  EXPECT_NE(run.out.str().find("Unknown command \"FROB\""), std::string::npos);
  EXPECT_NE(run.out.str().find("Enter the number of operations to undo <1>: \nLINE\n"),
            std::string::npos);
}

TEST(SessionTest, OutsideACommandEachOutermostLockSpanIsOneUndoStep) {
  ScriptRun run("UNDO\n\n");
  platform::Documents& documents = run.session.documents();
  Database& db = run.session.db();
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(documents.lockDocument(platform::LockMode::Write), platform::Status::Ok);
    ASSERT_EQ(documents.lockDocument(platform::LockMode::Write), platform::Status::Ok);
    db.addEntity(std::make_unique<LineEntity>(), db.modelSpace());
    ASSERT_EQ(documents.unlockDocument(), platform::Status::Ok);
    db.addEntity(std::make_unique<LineEntity>(), db.modelSpace());
    ASSERT_EQ(documents.unlockDocument(), platform::Status::Ok);
  }
  EXPECT_FALSE(db.undo().recording());
  run.session.run();
  EXPECT_EQ(db.blockEntities(db.modelSpace()).size(), 2u);
  EXPECT_NE(run.out.str().find("Palette edit\n"), std::string::npos);
}

TEST(SessionTest, AReactorMayLeaveWhileItIsTold) {
  struct Leaver : platform::EditorReactor {
    Session* session = nullptr;
    int told = 0;
    void commandEnded(const std::wstring&) override {
      ++told;
      session->editor().removeReactor(this);
    }
  } leaver;
  ScriptRun run("POINT\n0,0\nPOINT\n1,1\n");
  leaver.session = &run.session;
  run.session.editor().addReactor(&leaver);
  run.session.run();
  EXPECT_EQ(leaver.told, 1);
  EXPECT_EQ(run.recorder.ended.size(), 2u);
}

ObjectId addLine(Database& db) {
  auto line = std::make_unique<LineEntity>();
  line->end = {10, 0, 0};
  return db.addEntity(std::move(line), db.modelSpace());
}

TEST(SessionTest, AHostCommandStartedWithArgumentsSaysHowItEnded) {
  // The user answers what the arguments did not: here the break point.
  ScriptRun run("4,0\n*Cancel*\n");
  Database& db = run.session.db();
  const ObjectId line = addLine(db);
  EXPECT_EQ(run.session.editor().command({std::wstring(L"_.break"), line}),
            platform::PromptStatus::Normal)
      << run.out.str();
  EXPECT_EQ(run.recorder.ended, (std::vector<std::wstring>{L"BREAK"}));
  EXPECT_EQ(db.blockEntities(db.modelSpace()).size(), 2u);
  EXPECT_EQ(db.get<LineEntity>(line)->end, (Point3d{4, 0, 0}));
  EXPECT_NE(run.out.str().find("Select object: #"), std::string::npos);

  // Cancelled: nothing changes, and no end is told.
  EXPECT_EQ(run.session.editor().command({std::wstring(L"BREAK"), line}),
            platform::PromptStatus::Cancel);
  EXPECT_EQ(run.recorder.cancelled, (std::vector<std::wstring>{L"BREAK"}));
  EXPECT_EQ(run.recorder.ended.size(), 1u);
  EXPECT_EQ(db.get<LineEntity>(line)->end, (Point3d{4, 0, 0}));

  // A point no curve can be broken at fails.
  auto point = std::make_unique<PointEntity>();
  const ObjectId p = db.addEntity(std::move(point), db.modelSpace());
  EXPECT_EQ(run.session.editor().command({std::wstring(L"BREAK"), p, std::wstring(L"1,1")}),
            platform::PromptStatus::Error);
  EXPECT_EQ(run.recorder.failed, (std::vector<std::wstring>{L"BREAK"}));
  EXPECT_EQ(run.session.editor().command({std::wstring(L"NO_SUCH_COMMAND")}),
            platform::PromptStatus::Error);
}

// A script run with the stand-in module of fixtures/FakeModule.cpp loaded.
struct ModuleRun : ScriptRun {
  explicit ModuleRun(const std::string& script) : ScriptRun(script) {
    const std::optional<std::wstring> error = session.loadModule(FAKE_MODULE_PATH);
    EXPECT_FALSE(error.has_value()) << platform::toUtf8(*error);
  }
  void runAll(std::initializer_list<const wchar_t*> commands) {
    for (const wchar_t* command : commands) EXPECT_TRUE(session.runCommand(command)) << command;
  }
  // The drawing as its file would hold it, every byte of it.
  std::string drawingText() { return dxf::writeDrawing(session.db(), *session.document().image); }
  std::size_t entityCount() { return session.db().blockEntities(session.db().modelSpace()).size(); }
};

// The vertices and end marks of old-style polylines have handles of their
// own: both pieces of a break must have their own too, or the saved file
// names one object twice and cannot be read back.
TEST(SessionTest, BrokenPolylinesSaveAsAFileThatReadsBack) {
  ScriptRun run(
      "3DPOLY\n0,0,0\n10,0,5\n10,10,5\n\nBREAK\n5,0\nF\n5,0\n10,5\n"
      "PLINE\n20,0\n30,0\n30,10\n\nBREAK\n25,0\nF\n25,0\n30,5\n");
  run.session.run();
  ASSERT_EQ(run.session.db().blockEntities(run.session.db().modelSpace()).size(), 4u);
  const auto text = std::make_shared<const std::string>(
      dxf::writeDrawing(run.session.db(), *run.session.document().image));
  EXPECT_NO_THROW(dxf::readDrawing(text));
}

TEST(SessionTest, AModuleCommandThatThrowsFailsAndLeavesTheDrawingAsItWas) {
  // Two points and the second undone, so that there is a step to undo and one to redo.
  ModuleRun run("1,1\n2,2\n\n\n2\n");
  run.runAll({L"POINT", L"POINT", L"UNDO"});
  const Database& db = run.session.db();
  const std::string before = run.drawingText();
  const struct {
    const wchar_t* command;
    const char* error;
  } cases[] = {
      {L"FAKE_FAULT", "Error: FAKE_FAULT failed: deliberate fault\n"},
      {L"FAKE_ODD_FAULT", "Error: FAKE_ODD_FAULT failed: an exception of unknown type\n"},
  };
  for (const auto& test : cases) {
    run.out.str("");
    EXPECT_EQ(run.session.runCommandFor(test.command), CommandOutcome::Failed);
    EXPECT_NE(run.out.str().find(test.error), std::string::npos) << run.out.str();
    EXPECT_EQ(run.drawingText(), before) << platform::toUtf8(test.command);
    EXPECT_FALSE(db.undo().recording());
    EXPECT_EQ(db.undo().undoableCount(), 1u);
    EXPECT_EQ(db.undo().redoableCount(), 1u);
  }
  EXPECT_EQ(run.recorder.failed, (std::vector<std::wstring>{L"FAKE_FAULT", L"FAKE_ODD_FAULT"}));
  // The history goes on as if the failures had not been: redo, then undo both points.
  run.runAll({L"MREDO", L"UNDO"});
  EXPECT_EQ(run.entityCount(), 0u);
  EXPECT_EQ(db.undo().redoableCount(), 2u);
}

TEST(SessionTest, ACommandThatAnotherRunsFailsAlone) {
  ModuleRun run("\n");
  const short luprec = run.session.db().header().luprec;
  run.runAll({L"FAKE_RUNS_FAULT"});
  EXPECT_NE(run.out.str().find("Error: FAKE_FAULT failed: deliberate fault\n"), std::string::npos)
      << run.out.str();
  EXPECT_EQ(run.out.str().find("did not fail"), std::string::npos) << run.out.str();
  EXPECT_EQ(run.recorder.failed, (std::vector<std::wstring>{L"FAKE_FAULT"}));
  EXPECT_EQ(run.recorder.ended.back(), L"FAKE_RUNS_FAULT");
  // The outer command's own changes stay, the variable as it set it: its two
  // points, not the failed command's point or table.
  Database& db = run.session.db();
  EXPECT_EQ(db.header().luprec, 3);
  EXPECT_EQ(run.entityCount(), 2u);
  EXPECT_TRUE(db.findOdTable(L"FAULT").isNull());
  // All of it is one step.
  run.runAll({L"UNDO"});
  EXPECT_EQ(run.entityCount(), 0u);
  EXPECT_EQ(db.header().luprec, luprec);
}

TEST(SessionTest, AModuleCommandThatRedrawsKeepsThePickFirstSet) {
  ModuleRun run("1,1\n2,2\n");
  run.runAll({L"POINT", L"POINT"});
  const std::vector<ObjectId> both = run.session.db().blockEntities(run.session.db().modelSpace());
  const std::vector<ObjectId> last = {both.back()};
  const struct {
    const wchar_t* command;
    std::vector<ObjectId> after;
    int events;
  } cases[] = {
      {L"FAKE_KEEP", both, 0},  // redraws and leaves the set alone
      {L"FAKE_PICK", last, 1},  // redraws and keeps what it set
      {L"FAKE_PLAIN", {}, 1},   // does not redraw: the set is used up
      {L"LIST", {}, 1},         // the host's own commands use it up
  };
  for (const auto& test : cases) {
    run.session.document().pickFirst = both;
    const int eventsBefore = run.recorder.pickfirstChanges;
    run.runAll({test.command});
    EXPECT_EQ(run.session.document().pickFirst, test.after) << platform::toUtf8(test.command);
    EXPECT_EQ(run.recorder.pickfirstChanges - eventsBefore, test.events)
        << platform::toUtf8(test.command);
  }
}

}  // namespace
}  // namespace host
