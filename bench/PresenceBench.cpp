// Presence and value searches and the detach of all records over a drawing of
// a million entities with one to three records each, run through our host's
// command line with the module loaded, as a user would run them.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <sstream>

#include "host/editor/Console.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "frame/CzarvelApp.h"

namespace {

using platform::OdType;
using platform::OdValue;

constexpr int kEntities = 1000000;

class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
  std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

// A session with the module loaded and a drawing of kEntities entities.
struct Fixture {
  NullBuffer nullBuffer;
  std::ostream out{&nullBuffer};
  std::istringstream in;
  host::ScriptConsole console{in, out};
  host::Session session{console};
  double bytesPerEntity = 0;

  Fixture() {
    host::registerHostCommands(session);
    platform::AppPacket packet{&session.host(), nullptr};
    zarvel::entryPoint(platform::AppMsg::kInitApp, &packet);
    // Heap in use, including the blocks large arrays are mapped in.
    auto inUse = [] {
      const struct mallinfo2 info = mallinfo2();
      return info.uordblks + info.hblkhd;
    };
    const std::size_t before = inUse();
    build();
    bytesPerEntity = static_cast<double>(inUse() - before) / kEntities;
  }
  ~Fixture() { zarvel::entryPoint(platform::AppMsg::kUnloadApp, nullptr); }

  void build() {
    host::Database& db = session.db();
    platform::OdTableDef roads;
    roads.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                     {L"NAME", OdType::Character, L"", OdValue(L"")},
                     {L"LENGTH", OdType::Real, L"", OdValue(0.0)}};
    platform::OdTableDef parcels;
    parcels.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                       {L"AREA", OdType::Real, L"", OdValue(0.0)}};
    const std::uint32_t roadsIndex = db.odTable(db.createOdTable(L"Roads", roads))->index;
    const std::uint32_t parcelsIndex = db.odTable(db.createOdTable(L"Parcels", parcels))->index;
    for (int i = 0; i < kEntities; ++i) {
      auto line = std::make_unique<host::LineEntity>();
      line->start = {i * 1.0, 0.0, 0.0};
      line->end = {i * 1.0 + 1.0, 1.0, 0.0};
      const platform::ObjectId id = db.addEntity(std::move(line), db.modelSpace());
      host::OdRecordList& od = *db.modifyOdRecords(id);
      const std::wstring name = L"Road " + std::to_wstring(i % 1000);
      od.append(roadsIndex, {OdValue(i), OdValue(name), OdValue(i * 0.5)});
      if (i % 3 >= 1) od.append(parcelsIndex, {OdValue(i), OdValue(i * 2.0)});
      if (i % 3 == 2) od.append(roadsIndex, {OdValue(i + 1), OdValue(name), OdValue(1.0)});
    }
  }

  // Runs a command with its answers; Enter at "Select objects: " takes all
  // of model space.
  void run(const wchar_t* command, const char* answers) {
    session.document().pickFirst.clear();
    in.clear();
    in.str(answers);
    session.runCommand(command);
  }
};

Fixture& fixture() {
  static Fixture f;
  return f;
}

void searchBenchmark(benchmark::State& state, const wchar_t* command) {
  Fixture& f = fixture();
  for (auto _ : state) f.run(command, "\n");
  state.SetItemsProcessed(state.iterations() * kEntities);
  state.counters["bytes_per_entity"] = f.bytesPerEntity;
}

void BM_HasOd(benchmark::State& state) { searchBenchmark(state, L"ZARVEL_HAS_OD"); }
void BM_HasDuplicateOd(benchmark::State& state) {
  searchBenchmark(state, L"ZARVEL_HAS_DUPLICATE_OD");
}

// The value search's dialog answered: the table, a condition per field of it
// (ID, NAME, LENGTH; Enter keeps "*"), the extended box, OK, and Enter at
// "Select objects: " for all of model space.
void valueSearchBenchmark(benchmark::State& state, const char* conditions) {
  Fixture& f = fixture();
  const std::string answers = std::string("Roads\n") + conditions + "\n\n\n";
  for (auto _ : state) f.run(L"ZARVEL_HAS_SPECIFIC_VALUES", answers.c_str());
  state.SetItemsProcessed(state.iterations() * kEntities);
}

void BM_HasSpecificValuesEqual(benchmark::State& state) {
  valueSearchBenchmark(state, "500000\n\n\n");
}
void BM_HasSpecificValuesPattern(benchmark::State& state) {
  valueSearchBenchmark(state, "\nroad 1*\n\n");
}

void BM_RmAll(benchmark::State& state) {
  Fixture& f = fixture();
  for (auto _ : state) {
    f.run(L"ZARVEL_RM_ALL", "Y\n\n");
    state.PauseTiming();
    f.run(L"UNDO", "1\n");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kEntities);
}

BENCHMARK(BM_HasOd)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_HasDuplicateOd)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_HasSpecificValuesEqual)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_HasSpecificValuesPattern)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RmAll)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
