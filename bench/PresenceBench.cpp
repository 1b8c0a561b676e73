// The searches and the detach of all records over a drawing of a million
// entities with one to three records each, and selections at a point in a
// drawing of a hundred thousand entities of mixed kinds, run through our
// host's command line with the module loaded, as a user would run them.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "MixedEntities.h"
#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;

// A search that found nothing did not search: its answers went astray.
void reportFound(benchmark::State& state, Fixture& f) {
  const std::size_t found = f.session.document().pickFirst.size();
  state.counters["found"] = static_cast<double>(found);
  if (found == 0) state.SkipWithError("the search found nothing");
}

void searchBenchmark(benchmark::State& state, const wchar_t* command, const char* answers = "\n") {
  Fixture& f = fixture();
  for (auto _ : state) f.run(command, answers);
  state.SetItemsProcessed(state.iterations() * kEntities);
  state.counters["bytes_per_entity"] = f.bytesPerEntity;
  reportFound(state, f);
}

void BM_HasOd(benchmark::State& state) {
  searchBenchmark(state, L"ZARVEL_HAS_OD");
}
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
  reportFound(state, f);
}

void BM_HasSpecificValuesEqual(benchmark::State& state) {
  valueSearchBenchmark(state, "500000\n\n\n");
}
void BM_HasSpecificValuesPattern(benchmark::State& state) {
  valueSearchBenchmark(state, "\nroad 1*\n\n");
}

// Both tables at once: every line with two records passes the count first
// and is walked; the others are passed over on their count alone.
void BM_HasSpecificOd(benchmark::State& state) {
  searchBenchmark(state, L"ZARVEL_HAS_SPECIFIC_OD", "Roads,Parcels\nYes\n\n\n");
}
void BM_HasNoSpecificOd(benchmark::State& state) {
  searchBenchmark(state, L"ZARVEL_HAS_NO_SPECIFIC_OD", "Parcels\nNo\n\n\n");
}

constexpr int kMixedEntities = 100000;
// The mixed drawing's square: some picks hit nothing, most a few entities.
constexpr double kMixedSide = 2000.0;

Fixture& mixedFixture() {
  static Fixture f([](host::Database& db) {
    std::mt19937 random(5);
    zarvel_bench::fill(db, kMixedEntities, random, kMixedSide);
    return kMixedEntities;
  });
  return f;
}

// Picks at points spread over the drawing, each pick at the next point.
void pselBenchmark(benchmark::State& state, bool afterChange) {
  Fixture& f = mixedFixture();
  std::mt19937 random(3);
  std::uniform_real_distribution<double> at(0.0, kMixedSide);
  std::vector<std::string> picks;
  for (int i = 0; i < 256; ++i)
    picks.push_back(std::to_string(at(random)) + "," + std::to_string(at(random)) + "\n");
  std::size_t next = 0;
  std::size_t selected = 0;
  for (auto _ : state) {
    if (afterChange) {
      // Any change makes the host work every box out again.
      state.PauseTiming();
      f.session.db().modifyHeader();
      state.ResumeTiming();
    }
    f.run(L"ZARVEL_PSEL", picks[next++ % picks.size()].c_str());
    selected += f.session.document().pickFirst.size();
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["selected_per_pick"] =
      static_cast<double>(selected) / static_cast<double>(state.iterations());
}

void BM_PselKeptExtents(benchmark::State& state) {
  pselBenchmark(state, false);
}
void BM_PselAfterAChange(benchmark::State& state) {
  pselBenchmark(state, true);
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
BENCHMARK(BM_HasSpecificOd)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_HasNoSpecificOd)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_PselKeptExtents)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_PselAfterAChange)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_HasSpecificValuesEqual)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_HasSpecificValuesPattern)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_RmAll)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
