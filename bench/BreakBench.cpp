// ZARVEL_BREAK in a drawing of a million lines with records: what it costs
// beyond the host's BREAK is two walks of model space (the snapshot before,
// the new entities after) and the copies for the new piece.
#include <benchmark/benchmark.h>

#include <string>

#include "ModuleSession.h"
#include "host/db/PortDrawing.h"
#include "platform/Text.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;

// Line 2 runs from 2,0 to 3,1 and carries three records; it is named by its
// handle and broken at two points of its own.
void BM_BreakWithRecords(benchmark::State& state) {
  Fixture& f = fixture();
  host::Database& db = f.session.db();
  const platform::ObjectId source = db.blockEntities(db.modelSpace()).at(2);
  const std::string answers = "#" +
                              platform::toUtf8(host::handleToText(db.object(source)->handle)) +
                              "\nF\n2.25,0.25\n2.75,0.75\n";
  std::size_t copied = 0;
  for (auto _ : state) {
    f.run(L"ZARVEL_BREAK", answers.c_str());
    state.PauseTiming();
    const std::vector<platform::ObjectId> lines = db.blockEntities(db.modelSpace());
    const host::OdRecordList* od = db.odRecords(lines.back());
    copied = od != nullptr ? static_cast<std::size_t>(od->count()) : 0;
    f.run(L"UNDO", "1\n");
    state.ResumeTiming();
  }
  state.counters["records_on_piece"] = static_cast<double>(copied);
  if (copied != 3) state.SkipWithError("the new piece did not get the three records");
}

BENCHMARK(BM_BreakWithRecords)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
