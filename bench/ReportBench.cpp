// The explication report of the drawing of a million lines (1,333,333 records
// of Roads and 666,667 of Parcels), run through our host's command line and
// written to a file, as a user would run it. The speed is the file's bytes
// over the whole command: selection, records, statistics, text and the write.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;

void reportBenchmark(benchmark::State& state, const std::string& options) {
  Fixture& f = fixture();
  const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                     ("zarvel-report-" + std::to_string(::getpid()) + ".csv");
  // All of model space, both tables, then the dialog's options and the file.
  const std::string answers = "\n*\n" + options + path.string() + "\n";
  std::uintmax_t bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
    f.run(L"ZARVEL_EXPL", answers.c_str());
    state.PauseTiming();
    std::error_code error;
    bytes = std::filesystem::file_size(path, error);
    if (error) bytes = 0;
    state.ResumeTiming();
  }
  std::filesystem::remove(path);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
  state.counters["report_MB"] = static_cast<double>(bytes) / 1e6;
  if (bytes == 0) state.SkipWithError("the command wrote no report");
}

// Grouped by table, with the default separator.
void BM_ExplicationByTable(benchmark::State& state) {
  reportBenchmark(state, "\n\n\n");
}

// Grouped by the shared field ID: a group for almost every line.
void BM_ExplicationByField(benchmark::State& state) {
  reportBenchmark(state, "Yes\nID\n\n\n");
}

BENCHMARK(BM_ExplicationByTable)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ExplicationByField)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
