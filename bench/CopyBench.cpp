// The copy commands over a drawing of a million lines with one to three
// records each: every line of model space is a target, and the reference is
// one of them, picked by its handle, as a user would run them.
#include <benchmark/benchmark.h>

#include <string>

#include "ModuleSession.h"
#include "host/db/PortDrawing.h"
#include "platform/Text.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;

std::size_t recordCount(Fixture& f, platform::ObjectId id) {
  const host::OdRecordList* od = f.session.db().odRecords(id);
  return od != nullptr ? od->count() : 0;
}

// Enter at "Select objects: " takes all of model space; the reference is the
// line at that place in it (line i carries 1 + i % 3 records).
void copyBenchmark(benchmark::State& state, const wchar_t* command, int referenceIndex) {
  Fixture& f = fixture();
  const std::vector<platform::ObjectId> lines =
      f.session.db().blockEntities(f.session.db().modelSpace());
  const platform::ObjectId reference = lines.at(referenceIndex);
  const std::string answers =
      "\n#" + platform::toUtf8(host::handleToText(f.session.db().object(reference)->handle)) + "\n";
  const platform::ObjectId last = lines.back();
  const std::size_t before = recordCount(f, last);
  std::size_t added = 0;
  for (auto _ : state) {
    f.run(command, answers.c_str());
    state.PauseTiming();
    added = recordCount(f, last) - before;
    f.run(L"UNDO", "1\n");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kEntities);
  state.counters["records_per_target"] = static_cast<double>(added);
  if (added == 0) state.SkipWithError("the copy added nothing");
}

void BM_CopyOdOneRecord(benchmark::State& state) {
  copyBenchmark(state, L"ZARVEL_COPY_OD", 0);
}
void BM_CopyOdThreeRecords(benchmark::State& state) {
  copyBenchmark(state, L"ZARVEL_COPY_OD", 2);
}
void BM_CopyOdValueThreeRecords(benchmark::State& state) {
  copyBenchmark(state, L"ZARVEL_COPY_OD_VALUE", 2);
}
void BM_CopyAllThreeRecords(benchmark::State& state) {
  copyBenchmark(state, L"ZARVEL_COPY_ALL", 2);
}

BENCHMARK(BM_CopyOdOneRecord)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_CopyOdThreeRecords)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_CopyOdValueThreeRecords)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_CopyAllThreeRecords)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
