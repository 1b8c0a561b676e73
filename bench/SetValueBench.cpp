// Numbering, replacing and adding over all of model space of the drawing of a
// million lines (1,333,333 records of Roads), run through our host's command
// line as a user would run them. Each run is undone, untimed, so that the
// next starts on the same drawing and the undo history stays small.
#include <benchmark/benchmark.h>

#include <string>

#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;

// The value of the first record on the line of that index.
platform::OdValue valueOnLine(Fixture& f, int line, int column) {
  host::Database& db = f.session.db();
  platform::OdValue value;
  const std::vector<platform::ObjectId> ids = db.blockEntities(db.modelSpace());
  const host::OdRecordList* records = db.odRecords(ids.at(static_cast<std::size_t>(line)));
  if (records != nullptr && !records->empty()) records->valueAt(records->begin(), column, value);
  return value;
}

// Runs the command, checks what it left on one line, and undoes it.
template <typename Check>
void valueBenchmark(benchmark::State& state, const wchar_t* command, const char* answers,
                    Check check) {
  Fixture& f = fixture();
  bool changed = true;
  for (auto _ : state) {
    f.run(command, answers);
    state.PauseTiming();
    changed = changed && check(f);
    f.run(L"UNDO", "1\n");
    // The undone run would be freed by the next command, on its clock; the
    // first run in a session has no such history to drop.
    f.session.db().undo().undone().clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kEntities);
  if (!changed) state.SkipWithError("the command changed nothing");
}

// Roads' ID from 1: the first line, numbered last, takes the last number.
void BM_SetId(benchmark::State& state) {
  valueBenchmark(state, L"ZARVEL_SETID", "Roads\nID\n\n\n1\n\n\n", [](Fixture& f) {
    return valueOnLine(f, 0, 0) == platform::OdValue(kEntities + kEntities / 3);
  });
}

// Every NAME of Roads, by the star that takes all values.
void BM_Replace(benchmark::State& state) {
  valueBenchmark(state, L"ZARVEL_REPLACE", "Roads\nNAME\n*\nX*\n\n\n",
                 [](Fixture& f) { return valueOnLine(f, 1, 1) == platform::OdValue(L"XRoad 1"); });
}

// LENGTH += ID on the first record of Roads.
void BM_AddVal(benchmark::State& state) {
  valueBenchmark(state, L"ZARVEL_ADDVAL", "Roads\nLENGTH\nID\n\n\n",
                 [](Fixture& f) { return valueOnLine(f, 1, 2) == platform::OdValue(1.5); });
}

BENCHMARK(BM_SetId)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Replace)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_AddVal)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
