// ZARVEL_2POLY over a drawing of 100,000 curves with records: lines, arcs,
// circles, 3D polylines and splines in turn, each with one or two records,
// all of model space converted at the default precision, then undone.
#include <benchmark/benchmark.h>

#include <memory>

#include "ModuleSession.h"

namespace {

using platform::OdType;
using platform::OdValue;
using platform::Point3d;
using zarvel_bench::Fixture;

constexpr int kCurves = 100000;

std::unique_ptr<host::Entity> curve(int i) {
  const Point3d p{(i % 1000) * 30.0, (i / 1000) * 30.0, (i % 7) * 1.0};
  const double r = 2.0 + i % 10;
  switch (i % 5) {
    case 0: {
      auto line = std::make_unique<host::LineEntity>();
      line->start = p;
      line->end = {p.x + r, p.y + r / 2, p.z + 1.0};
      return line;
    }
    case 1: {
      auto arc = std::make_unique<host::ArcEntity>();
      arc->center = p;
      arc->radius = r;
      arc->startAngle = 0.3;
      arc->endAngle = 2.5;
      return arc;
    }
    case 2: {
      auto circle = std::make_unique<host::CircleEntity>();
      circle->center = p;
      circle->radius = r;
      return circle;
    }
    case 3: {
      auto polyline = std::make_unique<host::Polyline3dEntity>();
      for (int k = 0; k < 4; ++k) {
        host::PolylineVertex v;
        v.position = {p.x + k * r, p.y + (k % 2) * r, p.z + k};
        v.flags = 32;
        polyline->vertices.push_back(v);
      }
      return polyline;
    }
    default: {
      auto spline = std::make_unique<host::SplineEntity>();
      spline->controlPoints = {
          p, {p.x + r, p.y + r, p.z}, {p.x + 2 * r, p.y - r, p.z}, {p.x + 3 * r, p.y, p.z}};
      spline->knots = {0, 0, 0, 0, 1, 1, 1, 1};
      return spline;
    }
  }
}

int buildCurves(host::Database& db) {
  platform::OdTableDef roads;
  roads.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                   {L"NAME", OdType::Character, L"", OdValue(L"")}};
  platform::OdTableDef parcels;
  parcels.columns = {{L"AREA", OdType::Real, L"", OdValue(0.0)}};
  const std::uint32_t roadsIndex = db.odTable(db.createOdTable(L"Roads", roads))->index;
  const std::uint32_t parcelsIndex = db.odTable(db.createOdTable(L"Parcels", parcels))->index;
  for (int i = 0; i < kCurves; ++i) {
    const platform::ObjectId id = db.addEntity(curve(i), db.modelSpace());
    host::OdRecordList& od = *db.modifyOdRecords(id);
    od.append(roadsIndex, {OdValue(i), OdValue(L"Road " + std::to_wstring(i % 100))});
    if (i % 2 == 0) od.append(parcelsIndex, {OdValue(i * 0.5)});
  }
  return kCurves;
}

// Runs the command over all of model space, at its default precision or the
// one given; every curve of the kind converts but what the command leaves.
void convertBenchmark(benchmark::State& state, const wchar_t* command, const char* answers,
                      host::EntityKind made, std::size_t expected) {
  static Fixture f(buildCurves);
  host::Database& db = f.session.db();
  std::size_t polylines = 0;
  for (auto _ : state) {
    f.run(command, answers);
    state.PauseTiming();
    polylines = 0;
    for (platform::ObjectId id : db.blockEntities(db.modelSpace())) {
      polylines += db.entity(id)->kind() == made ? 1 : 0;
    }
    f.run(L"UNDO", "1\n");
    // What UNDO left to redo goes when the next command changes the drawing:
    // the polylines of this run, which are no part of the next run's work.
    db.undo().undone().clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kCurves);
  state.counters["polylines"] = static_cast<double>(polylines);
  if (polylines != expected) state.SkipWithError("a curve that converts did not");
}

void BM_To2dPolylines(benchmark::State& state) {
  convertBenchmark(state, L"ZARVEL_2POLY", "\n\n", host::EntityKind::LwPolyline, kCurves);
}
// The 3D polylines of the drawing stay, and all else becomes one.
void BM_To3dPolylines(benchmark::State& state) {
  convertBenchmark(state, L"ZARVEL_23DPOLY", "10\n\n", host::EntityKind::Polyline3d, kCurves);
}

BENCHMARK(BM_To2dPolylines)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_To3dPolylines)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
