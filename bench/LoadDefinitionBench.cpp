// Copying table definitions from a large drawing file: attaching it reads its
// definitions alone, which should take a fraction of opening it whole. The
// file is written once, from the drawing of lines with records.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "ModuleSession.h"
#include "host/dxf/DefinitionsReader.h"
#include "host/dxf/DrawingReader.h"
#include "host/dxf/DrawingWriter.h"
#include "platform/Text.h"

namespace {

using zarvel_bench::Fixture;
using platform::OdValue;

// Lines past the shared drawing's million, each with a record of Roads, for a
// file of about 500 MB.
constexpr int kExtraLines = 200000;

int buildSource(host::Database& db) {
  const int shared = zarvel_bench::buildRecords(db);
  const std::uint32_t roads = db.odTable(db.findOdTable(L"Roads"))->index;
  for (int i = 0; i < kExtraLines; ++i) {
    auto line = std::make_unique<host::LineEntity>();
    line->start = {i * 1.0, 5.0, 0.0};
    line->end = {i * 1.0 + 1.0, 6.0, 0.0};
    const platform::ObjectId id = db.addEntity(std::move(line), db.modelSpace());
    db.modifyOdRecords(id)->append(roads, {OdValue(i), OdValue(L"Extra"), OdValue(1.0)});
  }
  return shared + kExtraLines;
}

// The source drawing's file, removed when the benchmarks end.
struct SourceFile {
  std::filesystem::path path =
      std::filesystem::temp_directory_path() / "zarvel_load_definition_bench.dxf";
  std::shared_ptr<const std::string> text;

  SourceFile() {
    Fixture source(buildSource);
    host::Document& d = source.session.document();
    text = std::make_shared<const std::string>(host::dxf::writeDrawing(d.db, *d.image));
    std::ofstream(path, std::ios::binary) << *text;
  }
  ~SourceFile() { std::filesystem::remove(path); }
};

SourceFile& sourceFile() {
  static SourceFile file;
  return file;
}

// What the host does on opening a drawing, once its bytes are read.
void BM_OpenWhole(benchmark::State& state) {
  SourceFile& file = sourceFile();
  std::size_t tables = 0;
  for (auto _ : state) {
    host::dxf::LoadedDrawing loaded = host::dxf::readDrawing(file.text);
    tables = loaded.db->odTableIds().size();
  }
  state.counters["MB"] = static_cast<double>(file.text->size()) / 1e6;
  if (tables != 2) state.SkipWithError("the whole drawing lost its tables");
}

// The same text read for its table definitions alone.
void BM_ReadDefinitions(benchmark::State& state) {
  SourceFile& file = sourceFile();
  std::size_t tables = 0;
  for (auto _ : state) tables = host::dxf::readTableDefinitions(*file.text).size();
  state.counters["MB"] = static_cast<double>(file.text->size()) / 1e6;
  if (tables != 2) state.SkipWithError("the definitions were not found");
}

// The attach step of the copy: the file read from disk and its definitions
// found, nothing else built.
void BM_AttachDefinitions(benchmark::State& state) {
  SourceFile& file = sourceFile();
  host::Document target;
  host::PathAliasTable aliases;
  platform::ignoreStatus(aliases.addAlias(L"BENCH", L""));  // a valid name: it is added
  target.attached.connect(&aliases, [&state](const std::wstring& text) {
    state.SkipWithError(platform::toUtf8(text).c_str());
  });
  const std::wstring aliasPath = L"BENCH:" + platform::fromUtf8(file.path.string());
  std::size_t tables = 0;
  for (auto _ : state) {
    platform::AttachedDrawing* drawing = target.attached.attachDrawing(aliasPath);
    tables = drawing != nullptr ? drawing->tableNames(platform::kAllTableKinds).size() : 0;
    platform::ignoreStatus(target.attached.detachDrawing(aliasPath));  // none when it failed
  }
  state.counters["MB"] = static_cast<double>(file.text->size()) / 1e6;
  if (tables != 2) state.SkipWithError("the attached drawing offered no tables");
}

// The whole command into an empty drawing; UNDO takes the copies away again
// so that every run copies them.
void BM_LoadDefinitionCommand(benchmark::State& state) {
  SourceFile& file = sourceFile();
  static Fixture target([](host::Database&) { return 1; });
  const std::string answers = file.path.string() + "\n";
  std::size_t copied = 0;
  for (auto _ : state) {
    target.run(L"ZARVEL_LOAD_DEFINITION", answers.c_str());
    state.PauseTiming();
    copied = target.session.db().odTableIds().size();
    target.run(L"UNDO", "1\n");
    state.ResumeTiming();
  }
  if (copied != 2) state.SkipWithError("the command copied no definitions");
}

BENCHMARK(BM_OpenWhole)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_ReadDefinitions)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_AttachDefinitions)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_LoadDefinitionCommand)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
