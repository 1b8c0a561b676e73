// Set from text over a drawing of a hundred thousand targets (closed and open
// polylines, lines, points and block references in turn), each with its text
// inside or beside it, a hundred thousand texts in all, run through our host's
// command line with the module loaded.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "ModuleSession.h"

namespace {

using platform::ObjectId;
using platform::OdType;
using platform::OdValue;
using platform::Point3d;

constexpr int kTargets = 100000;
constexpr int kColumns = 317;
constexpr double kSpacing = 10.0;

std::vector<ObjectId>& targets() {
  static std::vector<ObjectId> ids;
  return ids;
}

ObjectId addTarget(host::Database& db, int i, ObjectId block, const Point3d& at) {
  const auto lw = [&](std::vector<host::LwVertex> vertices, bool closed) {
    auto p = std::make_unique<host::LwPolylineEntity>();
    p->vertices = std::move(vertices);
    p->closed = closed;
    return db.addEntity(std::move(p), db.modelSpace());
  };
  switch (i % 5) {
    case 0:
      return lw({{at.x, at.y}, {at.x + 4, at.y}, {at.x + 4, at.y + 4}, {at.x, at.y + 4}}, true);
    case 1:
      return lw({{at.x, at.y}, {at.x + 4, at.y}, {at.x + 4, at.y + 3}}, false);
    case 2: {
      auto line = std::make_unique<host::LineEntity>();
      line->start = at;
      line->end = {at.x + 4, at.y, 0};
      return db.addEntity(std::move(line), db.modelSpace());
    }
    case 3: {
      auto point = std::make_unique<host::PointEntity>();
      point->position = at;
      return db.addEntity(std::move(point), db.modelSpace());
    }
    default: {
      auto ref = std::make_unique<host::BlockReferenceEntity>();
      ref->block = block;
      ref->position = at;
      return db.addEntity(std::move(ref), db.modelSpace());
    }
  }
}

// Each text stands inside its closed outline, 1 beside a line or open
// polyline, and 1 from a point or block reference; neighbours are 10 apart.
int buildLabelled(host::Database& db) {
  platform::OdTableDef labels;
  labels.columns = {{L"NAME", OdType::Character, L"", OdValue(L"")}};
  const std::uint32_t table = db.odTable(db.createOdTable(L"Labels", labels))->index;
  const ObjectId block = db.addBlock(L"tree", Point3d{});
  auto circle = std::make_unique<host::CircleEntity>();
  circle->radius = 0.5;
  db.addEntity(std::move(circle), block);
  for (int i = 0; i < kTargets; ++i) {
    const Point3d at{(i % kColumns) * kSpacing, (i / kColumns) * kSpacing, 0};
    const ObjectId id = addTarget(db, i, block, at);
    db.modifyOdRecords(id)->append(table, {OdValue(L"")});
    targets().push_back(id);
    auto text = std::make_unique<host::TextEntity>();
    text->data.text = L"T" + std::to_wstring(i);
    text->data.position =
        i % 5 == 0 ? Point3d{at.x + 2, at.y + 2, 0} : Point3d{at.x + 1, at.y + 1, 0};
    db.addEntity(std::move(text), db.modelSpace());
  }
  return 2 * kTargets;
}

// Every target must hold its own text afterwards.
bool allLabelled(host::Database& db) {
  for (std::size_t i = 0; i < targets().size(); i += 997) {
    const host::OdRecordList* od = db.odRecords(targets()[i]);
    OdValue name;
    if (od == nullptr || od->empty() || !od->valueAt(od->begin(), 0, name)) return false;
    if (name != OdValue(L"T" + std::to_wstring(i))) return false;
  }
  return true;
}

void BM_SetText(benchmark::State& state) {
  static zarvel_bench::Fixture f(buildLabelled);
  // The table, the field, the tolerance, OK, and Enter at "Select objects: ".
  for (auto _ : state) f.run(L"ZARVEL_SETTEXT", "Labels\nNAME\n2\n\n\n");
  state.SetItemsProcessed(state.iterations() * kTargets);
  if (!allLabelled(f.session.db())) state.SkipWithError("the targets did not take their texts");
}
BENCHMARK(BM_SetText)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
