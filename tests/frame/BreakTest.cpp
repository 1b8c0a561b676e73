// The watcher of a host command and ZARVEL_BREAK's two halves, over a host
// whose BREAK is a stand-in that makes entities and ends as the test says.
// The transcript covers the real BREAK's geometry, prompts and undo.
#include <gtest/gtest.h>

#include <functional>

#include "TestHost.h"
#include "frame/CzarvelApp.h"
#include "frame/HostCommandWatch.h"
#include "platform/Text.h"

namespace testing_support {
namespace {

using platform::PromptStatus;

enum class Outcome { Ended, Cancelled, Failed };

class CommandHost : public TestHost {
 public:
  std::vector<platform::EditorReactor*> reactors;
  std::vector<std::vector<platform::CommandArgument>> started;
  // What the host's command does before it comes out as outcome.
  std::function<void()> hostCommand;
  Outcome outcome = Outcome::Ended;

  void addReactor(platform::EditorReactor* r) override {
    if (std::find(reactors.begin(), reactors.end(), r) == reactors.end()) reactors.push_back(r);
  }
  void removeReactor(platform::EditorReactor* r) override {
    reactors.erase(std::remove(reactors.begin(), reactors.end(), r), reactors.end());
  }
  PromptStatus command(const std::vector<platform::CommandArgument>& arguments) override {
    started.push_back(arguments);
    if (hostCommand) hostCommand();
    tell(L"BREAK", outcome);
    return PromptStatus::Normal;
  }
  void tell(const std::wstring& name, Outcome how) {
    const std::vector<platform::EditorReactor*> told = reactors;
    for (platform::EditorReactor* r : told) {
      if (how == Outcome::Ended) r->commandEnded(name);
      if (how == Outcome::Cancelled) r->commandCancelled(name);
      if (how == Outcome::Failed) r->commandFailed(name);
    }
  }
};

class BreakTest : public ::testing::Test {
 protected:
  void SetUp() override { message(platform::AppMsg::kInitApp); }
  void TearDown() override { message(platform::AppMsg::kUnloadApp); }
  void message(unsigned code) {
    platform::AppPacket packet{&host, &host};
    zarvel::entryPoint(code, &packet);
  }

  static std::vector<std::int64_t>& calls() {
    static std::vector<std::int64_t> values;
    return values;
  }
  static void record(std::int64_t value) { calls().push_back(value); }
  static void other(std::int64_t value) { calls().push_back(-value); }

  CommandHost host;
};

TEST_F(BreakTest, WatcherMatchesTheNameInAnyCaseAndCallsBackOnlyWhenItEnded) {
  struct Case {
    const wchar_t* name;
    Outcome how;
    bool calledBack;
    bool stillWaiting;
  };
  const Case cases[] = {
      {L"BREAK", Outcome::Ended, true, false},      {L"_.break", Outcome::Ended, true, false},
      {L".Break", Outcome::Ended, true, false},     {L"_BREAK", Outcome::Ended, true, false},
      {L"BREAKS", Outcome::Ended, false, true},     {L"LINE", Outcome::Cancelled, false, true},
      {L"BREAK", Outcome::Cancelled, false, false}, {L"break", Outcome::Failed, false, false},
  };
  zarvel::detail::command& watch = zarvel::detail::breakCommandWatch();
  for (const Case& c : cases) {
    calls().clear();
    watch.start(L"break", record, 7);
    host.tell(c.name, c.how);
    EXPECT_EQ(calls(), c.calledBack ? std::vector<std::int64_t>{7} : std::vector<std::int64_t>{})
        << platform::toUtf8(c.name);
    EXPECT_EQ(watch.active(), c.stillWaiting) << platform::toUtf8(c.name);
    EXPECT_EQ(host.reactors.size(), c.stillWaiting ? 1u : 0u) << platform::toUtf8(c.name);
    if (watch.active()) watch.stop();
  }
}

TEST_F(BreakTest, SecondStartReplacesTheFirstAndUnloadStopsWaiting) {
  zarvel::detail::command& watch = zarvel::detail::breakCommandWatch();
  calls().clear();
  const ObjectId before = host.addLine();
  watch.start(L"LINE", other, 1);
  const ObjectId between = host.addLine();
  watch.start(L"BREAK", record, 2);
  EXPECT_EQ(host.reactors.size(), 1u);
  EXPECT_EQ(watch.snapshot(), (std::vector<ObjectId>{before, between}));
  host.tell(L"LINE", Outcome::Ended);
  host.tell(L"BREAK", Outcome::Ended);
  EXPECT_EQ(calls(), std::vector<std::int64_t>{2});

  watch.start(L"BREAK", record, 3);
  message(platform::AppMsg::kUnloadApp);
  EXPECT_TRUE(host.reactors.empty());
  EXPECT_FALSE(watch.active());
  message(platform::AppMsg::kInitApp);
}

// Every new entity gets its own copy of the records and the feature class;
// the source and what stood before keep theirs. After a cancel the host's
// next BREAK copies nothing.
TEST_F(BreakTest, NewPiecesGetTheSourcesEntriesUnlessTheBreakWasCancelled) {
  host.defineTable(L"Roads");
  host.db.modifyHeader().featureClasses[L"Road"] = L"Roads";
  const ObjectId source = host.addLine();
  const ObjectId bystander = host.addLine();
  host.attach(source, L"Roads4 Roads5");
  ASSERT_EQ(host.featureClasses().classify(source, L"Road"), platform::kClassifyOk);
  std::vector<ObjectId> made;
  host.hostCommand = [&] {
    made.push_back(host.addLine());
    made.push_back(host.addLine());
  };
  host.entities.push_back({PromptStatus::Normal, source, {}, false});
  host.runCommand(L"ZARVEL_BREAK");

  ASSERT_EQ(host.started.size(), 1u);
  EXPECT_EQ(std::get<std::wstring>(host.started[0].at(0)), L"_.break");
  EXPECT_EQ(std::get<ObjectId>(host.started[0].at(1)), source);
  for (ObjectId id : {source, made[0], made[1]}) {
    EXPECT_EQ(host.recordsOn(id), L"Roads4 Roads5");
    std::vector<std::wstring> names;
    std::vector<std::wstring> shown;
    host.featureClasses().getAllTags(id, names, shown);
    EXPECT_EQ(names, std::vector<std::wstring>{L"Road"});
  }
  EXPECT_EQ(host.recordsOn(bystander), L"");
  host.attach(made[0], L"Roads9");
  EXPECT_EQ(host.recordsOn(made[1]), L"Roads4 Roads5") << "the pieces share a copy";

  // Cancelled: nothing copied, the watcher gone; a later BREAK copies nothing.
  made.clear();
  host.outcome = Outcome::Cancelled;
  host.pickFirst = {source};
  host.runCommand(L"ZARVEL_BREAK");
  EXPECT_TRUE(host.reactors.empty());
  host.outcome = Outcome::Ended;
  host.command({std::wstring(L"BREAK")});
  ASSERT_EQ(made.size(), 4u);
  for (ObjectId id : made) EXPECT_EQ(host.recordsOn(id), L"");
}

}  // namespace
}  // namespace testing_support
