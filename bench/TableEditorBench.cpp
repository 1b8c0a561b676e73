// The table editor's model over the drawing of a million lines: loading the
// Roads table (a row per record, 1.33 million), sorting by a text, an integer
// and a real column, a find over every row, the rows marked by a selection of
// every entity, and a column fill of every record, with the memory the rows
// take.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "ModuleSession.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/Zarvel.h"

namespace {

using zarvel::Zarvel;
using zarvel_bench::Fixture;
using zarvel_bench::fixture;

constexpr std::size_t kRoadsRecords = zarvel_bench::kEntities + zarvel_bench::kEntities / 3;

std::size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// The editor showing Roads, loaded once for the benchmarks that only read.
Zarvel& loadedEditor(Fixture& f) {
  static Zarvel* editor = [&f] {
    f.bind();
    auto* e = new Zarvel;
    zarvel::tableEditorState() = {};
    e->fillTableCombo();
    e->chooseTable(2);  // "", Parcels, Roads
    return e;
  }();
  return *editor;
}

void BM_LoadRoads(benchmark::State& state) {
  Fixture& f = fixture();
  f.bind();
  double bytesPerRow = 0;
  for (auto _ : state) {
    Zarvel editor;
    zarvel::tableEditorState() = {};
    editor.fillTableCombo();
    const std::size_t before = heapInUse();
    editor.chooseTable(2);
    bytesPerRow = static_cast<double>(heapInUse() - before) / editor.rows.size();
    if (editor.rows.size() != kRoadsRecords) state.SkipWithError("Roads did not load every row");
  }
  state.counters["bytes_per_row"] = bytesPerRow;
}

// Each pass sorts the rows the other way round, a full sort every time.
void sortBy(benchmark::State& state, int column) {
  Zarvel& editor = loadedEditor(fixture());
  for (auto _ : state) editor.sortRows(column);
  if (editor.grid.GetItemCount() != static_cast<int>(kRoadsRecords) ||
      editor.grid.cellText(0, column) == editor.grid.cellText(kRoadsRecords - 1, column)) {
    state.SkipWithError("the rows were not sorted");
  }
}
void BM_SortByName(benchmark::State& state) {
  sortBy(state, 2);
}
void BM_SortById(benchmark::State& state) {
  sortBy(state, 1);
}
// Real values, nearly all distinct: every text is made and compared.
void BM_SortByLength(benchmark::State& state) {
  sortBy(state, 3);
}

// A text no row holds: the search goes through all of them.
void BM_FindAllRows(benchmark::State& state) {
  Zarvel& editor = loadedEditor(fixture());
  int found = 0;
  for (auto _ : state) found = editor.findRow(1, L"no such road", false, 0);
  if (found != -1 || editor.rows.size() != kRoadsRecords) state.SkipWithError("the find stopped");
  state.SetItemsProcessed(state.iterations() * kRoadsRecords);
}

// With nothing selected the fill writes every record and loads the table
// again; the box is answered at the command line.
void BM_FillColumn(benchmark::State& state) {
  Fixture& f = fixture();
  Zarvel& editor = loadedEditor(f);
  for (auto _ : state) {
    f.in.clear();
    f.in.str("7.5\nOK\n");
    editor.fillColumn(3);
  }
  if (editor.grid.cellText(0, 3) != L"7.5" ||
      editor.grid.cellText(kRoadsRecords - 1, 3) != L"7.5") {
    state.SkipWithError("the column was not filled");
  }
}

// A selection of every entity made in the drawing marks every row.
void BM_MarkRowsOfSelection(benchmark::State& state) {
  Zarvel& editor = loadedEditor(fixture());
  const std::vector<platform::ObjectId> ids = editor.allRowIds();
  for (auto _ : state) {
    editor.markRowsOfIds({});
    editor.markRowsOfIds(ids);
  }
  if (editor.grid.GetSelectedCount() != static_cast<int>(kRoadsRecords)) {
    state.SkipWithError("the rows were not marked");
  }
  editor.markRowsOfIds({});
}

BENCHMARK(BM_LoadRoads)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SortByName)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(BM_SortById)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(BM_SortByLength)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_FindAllRows)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_MarkRowsOfSelection)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_FillColumn)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace

BENCHMARK_MAIN();
