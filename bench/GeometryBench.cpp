// The geometry's speed on large inputs: the extents of a million entities of
// mixed kinds, the intersections of a hundred thousand overlapping pairs, and
// the extents of a reference to blocks nested deep, each holding the next twice.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>

#include "MixedEntities.h"
#include "host/db/Database.h"
#include "host/geometry/Extents.h"
#include "host/geometry/Intersections.h"

namespace {

using host::Database;
using platform::Point3d;
using zarvel_bench::fill;

void BM_ExtentsOfAMillion(benchmark::State& state) {
  Database db;
  std::mt19937 random(7);
  fill(db, 1000000, random);
  const std::vector<platform::ObjectId> ids = db.blockEntities(db.modelSpace());
  for (auto _ : state) {
    platform::Extents all;
    for (platform::ObjectId id : ids) all.add(host::geometry::extentsOf(db, *db.entity(id)));
    benchmark::DoNotOptimize(all);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(ids.size()));
}

void BM_IntersectionsOfOverlappingPairs(benchmark::State& state) {
  Database db;
  std::mt19937 random(11);
  fill(db, 200000, random);
  const std::vector<platform::ObjectId> ids = db.blockEntities(db.modelSpace());
  // Each entity with the next, of another kind and placed over it.
  std::vector<std::pair<const host::Entity*, const host::Entity*>> pairs;
  for (std::size_t i = 0; i + 1 < ids.size() && pairs.size() < 100000; i += 2) {
    pairs.emplace_back(db.entity(ids[i]), db.entity(ids[i + 1]));
  }
  std::size_t points = 0;
  for (auto _ : state) {
    points = 0;
    for (const auto& [a, b] : pairs) points += host::geometry::intersectXY(db, *a, *b).size();
    benchmark::DoNotOptimize(points);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(pairs.size()));
  state.counters["points"] = static_cast<double>(points);
}

// Blocks nested `depth` deep under one reference, each holding two references
// to the next: 2^depth paths to the innermost line. Turned, each level's two
// copies turn by angles of their own, so that every path places it anew.
void nest(Database& db, int depth, bool turned) {
  platform::ObjectId inner = db.addBlock(L"N0", {});
  auto line = std::make_unique<host::LineEntity>();
  line->end = {1.0, 0.0, 0.0};
  db.addEntity(std::move(line), inner);
  for (int level = 1; level <= depth; ++level) {
    const platform::ObjectId outer = db.addBlock(L"N" + std::to_wstring(level), {});
    for (int copy = 0; copy < 2; ++copy) {
      auto ref = std::make_unique<host::BlockReferenceEntity>();
      ref->block = inner;
      ref->position = {0.0, static_cast<double>(copy), 0.0};
      if (turned) ref->rotation = 0.01 * level * (copy + 1);
      db.addEntity(std::move(ref), outer);
    }
    inner = outer;
  }
  auto top = std::make_unique<host::BlockReferenceEntity>();
  top->block = inner;
  db.addEntity(std::move(top), db.modelSpace());
}

void BM_ExtentsOfNestedReferences(benchmark::State& state) {
  Database db;
  nest(db, static_cast<int>(state.range(0)), state.range(1) != 0);
  const host::Entity& top = *db.entity(db.blockEntities(db.modelSpace()).front());
  for (auto _ : state) {
    // A change to the drawing, so that nothing kept from the last round counts.
    db.modifyHeader();
    benchmark::DoNotOptimize(host::geometry::extentsOf(db, top));
  }
}

BENCHMARK(BM_ExtentsOfAMillion)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_IntersectionsOfOverlappingPairs)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ExtentsOfNestedReferences)
    ->ArgNames({"depth", "turned"})
    ->ArgsProduct({{16, 20, 40}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
