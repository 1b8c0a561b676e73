// The session's rules around commands: the pick-first set and its event, the
// command events, and one undo step per command.
#include "host/editor/Session.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/editor/HostCommands.h"

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
    session.addReactor(&recorder);
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

TEST(SessionTest, EachCommandIsOneUndoStepAndReadingCommandsAreNone) {
  ScriptRun run("LINE\n0,0\n1,0\n2,0\n\nODLIST\nALL\n\nUNDO\n\n");
  run.session.run();
  EXPECT_TRUE(run.session.db().blockEntities(run.session.db().modelSpace()).empty());
  EXPECT_NE(run.out.str().find("Enter the number of operations to undo <1>: \nLINE\n"),
            std::string::npos);
}

TEST(SessionTest, AReactorMayLeaveWhileItIsTold) {
  struct Leaver : platform::EditorReactor {
    Session* session = nullptr;
    int told = 0;
    void commandEnded(const std::wstring&) override {
      ++told;
      session->removeReactor(this);
    }
  } leaver;
  ScriptRun run("POINT\n0,0\nPOINT\n1,1\n");
  leaver.session = &run.session;
  run.session.addReactor(&leaver);
  run.session.run();
  EXPECT_EQ(leaver.told, 1);
  EXPECT_EQ(run.recorder.ended.size(), 2u);
}

TEST(SessionTest, CommandNamesIgnoreCaseAndPrefixes) {
  ScriptRun run("_.point\n0,0\n._Point\n1,1\nfrob\n");
  run.session.run();
  EXPECT_EQ(run.session.db().blockEntities(run.session.db().modelSpace()).size(), 2u);
  EXPECT_NE(run.out.str().find("Unknown command \"FROB\""), std::string::npos);
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
  EXPECT_EQ(run.session.command({std::wstring(L"_.break"), line}), platform::PromptStatus::Normal)
      << run.out.str();
  EXPECT_EQ(run.recorder.ended, (std::vector<std::wstring>{L"BREAK"}));
  EXPECT_EQ(db.blockEntities(db.modelSpace()).size(), 2u);
  EXPECT_EQ(db.get<LineEntity>(line)->end, (Point3d{4, 0, 0}));
  EXPECT_NE(run.out.str().find("Select object: #"), std::string::npos);

  // Cancelled: nothing changes, and no end is told.
  EXPECT_EQ(run.session.command({std::wstring(L"BREAK"), line}), platform::PromptStatus::Cancel);
  EXPECT_EQ(run.recorder.cancelled, (std::vector<std::wstring>{L"BREAK"}));
  EXPECT_EQ(run.recorder.ended.size(), 1u);
  EXPECT_EQ(db.get<LineEntity>(line)->end, (Point3d{4, 0, 0}));

  // A point no curve can be broken at fails.
  auto point = std::make_unique<PointEntity>();
  const ObjectId p = db.addEntity(std::move(point), db.modelSpace());
  EXPECT_EQ(run.session.command({std::wstring(L"BREAK"), p, std::wstring(L"1,1")}),
            platform::PromptStatus::Error);
  EXPECT_EQ(run.recorder.failed, (std::vector<std::wstring>{L"BREAK"}));
  EXPECT_EQ(run.session.command({std::wstring(L"NO_SUCH_COMMAND")}),
            platform::PromptStatus::Error);
}

}  // namespace
}  // namespace host
