// The translation of values over the drawing of a million lines with records,
// run through our host's command line with the module loaded: every road's
// name to its alias and back, turn about.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;
using zarvel_bench::Shown;

// Records of the drawing: a road on every line, a parcel on two of three and
// a second road on one of three.
constexpr long long kRecords = kEntities + kEntities * 2LL / 3 + kEntities / 3;

std::string valueAliasFile() {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "zarvel_bench_value_aliases.txt";
  std::ofstream file(path);
  for (int i = 0; i < 1000; ++i) file << "NAME\tRoad " << i << "\tStreet " << i << "\n";
  return path.string();
}

void BM_TranslateValues(benchmark::State& state) {
  Fixture& f = fixture();
  const std::string path = valueAliasFile();
  const std::string there = "Values\n" + path + "\nName --> Alias\n";
  const std::string back = "Values\n" + path + "\nName <-- Alias\n";
  Shown shown(f);
  bool forth = true;
  for (auto _ : state) {
    f.run(L"ZARVEL_TRANSLATE", (forth ? there : back).c_str());
    forth = !forth;
  }
  if (!forth) f.run(L"ZARVEL_TRANSLATE", back.c_str());
  state.SetItemsProcessed(state.iterations() * kRecords);
  // Every road record carries a name that the file names.
  const std::string changed = "Updated " + std::to_string(kEntities + kEntities / 3) + " records";
  if (!shown.contains(changed)) {
    state.SkipWithError("the translation did not change every road record");
  }
}

BENCHMARK(BM_TranslateValues)->Unit(benchmark::kMillisecond)->MinTime(3.0);

}  // namespace

BENCHMARK_MAIN();
