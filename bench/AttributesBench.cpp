// The attribute commands over a drawing of two hundred thousand references of
// one block, each with four attributes (a million entities in all), run through
// our host's command line with the map in a file, as a user would run them.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "ModuleSession.h"

namespace {

using platform::ObjectId;
using platform::OdType;
using platform::OdValue;
using zarvel_bench::Fixture;

constexpr int kReferences = 200000;
constexpr int kAttributes = 4;

std::vector<ObjectId>& references() {
  static std::vector<ObjectId> ids;
  return ids;
}

ObjectId addReference(host::Database& db, ObjectId block, int i) {
  auto ref = std::make_unique<host::BlockReferenceEntity>();
  ref->block = block;
  ref->position = {i * 10.0, 0.0, 0.0};
  const ObjectId id = db.addEntity(std::move(ref), db.modelSpace());
  const std::wstring texts[kAttributes][2] = {{L"NAME", L"Road " + std::to_wstring(i % 1000)},
                                              {L"LANES", std::to_wstring(i % 7)},
                                              {L"WIDTH", L"12.5"},
                                              {L"LOC", L"1.5,2.5"}};
  for (const auto& [tag, text] : texts) {
    auto attribute = std::make_unique<host::AttributeEntity>();
    attribute->tag = tag;
    attribute->data.text = text;
    const ObjectId a = db.addEntity(std::move(attribute), id);
    db.modify<host::BlockReferenceEntity>(id)->attributes.push_back(a);
  }
  return id;
}

int buildReferences(host::Database& db) {
  platform::OdTableDef roads;
  roads.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                   {L"NAME", OdType::Character, L"", OdValue(L"")},
                   {L"LENGTH", OdType::Real, L"", OdValue(0.0)}};
  platform::OdTableDef places;
  places.columns = {{L"SPOT", OdType::Point, L"", OdValue(platform::Point3d{0, 0, 0})}};
  db.createOdTable(L"Roads", roads);
  db.createOdTable(L"Places", places);
  const ObjectId block = db.addBlock(L"Street", {0.0, 0.0, 0.0});
  for (int i = 0; i < kReferences; ++i) references().push_back(addReference(db, block, i));
  return kReferences * (1 + kAttributes);
}

Fixture& attributesFixture() {
  static Fixture f(buildReferences);
  return f;
}

std::filesystem::path scratch(const std::string& name) {
  return std::filesystem::temp_directory_path() /
         ("zarvel-" + std::to_string(::getpid()) + "-" + name);
}

// The map every reference's four attributes go by, to two tables.
const std::filesystem::path& mapFile() {
  static const std::filesystem::path path = [] {
    const std::filesystem::path p = scratch("map.txt");
    std::ofstream(p) << "? the bench's map\n"
                        "Street\tNAME\tRoads\tNAME\n"
                        "Street\tLANES\tRoads\tID\n"
                        "Street\tWIDTH\tRoads\tLENGTH\n"
                        "Street\tLOC\tPlaces\tSPOT\n";
    return p;
  }();
  return path;
}

std::wstring lastAttributeText(Fixture& f) {
  const host::Database& db = f.session.db();
  const auto* ref = db.get<host::BlockReferenceEntity>(references().back());
  return db.get<host::AttributeEntity>(ref->attributes.back())->data.text;
}

// The first run attaches a record of each table to every reference; later
// runs find them and only fill them.
void BM_LoadAttrs(benchmark::State& state) {
  Fixture& f = attributesFixture();
  const std::string answers = mapFile().string() + "\n\n";
  for (auto _ : state) f.run(L"ZARVEL_LOAD_ATTRS", answers.c_str());
  state.SetItemsProcessed(state.iterations() * kReferences);
  const host::OdRecordList* od = f.session.db().odRecords(references().back());
  if (od == nullptr || od->count() != 2) state.SkipWithError("the references gained no records");
}

void BM_StoreAttrs(benchmark::State& state) {
  Fixture& f = attributesFixture();
  f.run(L"ZARVEL_LOAD_ATTRS", (mapFile().string() + "\n\n").c_str());
  const std::string answers = mapFile().string() + "\n\n";
  for (auto _ : state) f.run(L"ZARVEL_STORE_ATTRS", answers.c_str());
  state.SetItemsProcessed(state.iterations() * kReferences);
  if (lastAttributeText(f) != L"1.000000, 2.000000, 0.000000") {
    state.SkipWithError("the attributes kept their texts");
  }
}

void BM_AttrTemplate(benchmark::State& state) {
  Fixture& f = attributesFixture();
  const std::filesystem::path path = scratch("template.txt");
  const std::string answers = "\n" + path.string() + "\n";
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
    f.run(L"ZARVEL_ATTR_TEMPLATE", answers.c_str());
  }
  state.SetItemsProcessed(state.iterations() * kReferences);
  if (!std::filesystem::exists(path)) state.SkipWithError("the command wrote no template");
  std::filesystem::remove(path);
}

BENCHMARK(BM_LoadAttrs)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_StoreAttrs)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_AttrTemplate)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
