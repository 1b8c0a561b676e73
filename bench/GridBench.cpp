// The grid model sorting a million stored rows by a text column, the size of
// a large table in the editor, and the keyboard search through them.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "grid/DataGrid.h"

namespace {

constexpr int kRows = 1000000;

// Words of 4 to 12 letters in mixed case, many sharing their first letters,
// as names and codes in a table do.
std::wstring randomWord(std::mt19937& random) {
  std::uniform_int_distribution<int> length(4, 12);
  std::uniform_int_distribution<int> letter(0, 25);
  std::uniform_int_distribution<int> upper(0, 3);
  std::wstring word;
  const int n = length(random);
  for (int i = 0; i < n; ++i) {
    const wchar_t base = upper(random) == 0 ? L'A' : L'a';
    word += static_cast<wchar_t>(base + letter(random) % (i < 2 ? 4 : 26));
  }
  return word;
}

// Two text columns of random words: sorting by one leaves the rows in an
// order that is random for the other.
zarvel::DataGrid& bigGrid() {
  static zarvel::DataGrid grid;
  if (grid.GetColumnCount() == 0) {
    grid.InsertColumn(0, L"Name");
    grid.InsertColumn(1, L"Code");
    std::mt19937 random(42);
    for (int row = 0; row < kRows; ++row) {
      grid.InsertItem(row, randomWord(random));
      grid.SetItemText(row, 1, randomWord(random));
    }
  }
  return grid;
}

void BM_SortMillionRowsByText(benchmark::State& state) {
  zarvel::DataGrid& grid = bigGrid();
  int column = 0;
  for (auto _ : state) {
    state.PauseTiming();
    grid.SortColumn(1 - column, true);
    state.ResumeTiming();
    benchmark::DoNotOptimize(grid.SortColumn(column, true));
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_SortMillionRowsByText)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_KeyboardSearchMillionRows(benchmark::State& state) {
  zarvel::DataGrid& grid = bigGrid();
  for (auto _ : state) {
    // A text no row begins with: the whole column is read.
    benchmark::DoNotOptimize(grid.OnKeyboardSearch(1, kRows / 2, L"zzzzzzzz"));
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_KeyboardSearchMillionRows)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
