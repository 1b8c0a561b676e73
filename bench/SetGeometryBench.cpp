// Set from coordinates over all of model space of the drawing of a million
// lines, run through our host's command line with the module loaded: the
// centre of each line into the first Roads record, X in its real field, Y in
// its character field and the height in its integer field.
#include <benchmark/benchmark.h>

#include "ModuleSession.h"

namespace {

using zarvel_bench::Fixture;
using zarvel_bench::fixture;
using zarvel_bench::kEntities;

// The second line runs from (1,0) to (2,1): its centre's X lands in LENGTH,
// which held 0.5. A run that left it did not write.
bool wroteCentre(Fixture& f) {
  host::Database& db = f.session.db();
  const std::vector<platform::ObjectId> ids = db.blockEntities(db.modelSpace());
  const host::OdRecordList* records = ids.size() > 1 ? db.odRecords(ids[1]) : nullptr;
  platform::OdValue length;
  return records != nullptr && records->valueAt(records->begin(), 2, length) &&
         length == platform::OdValue(1.5);
}

// The dialog: the table, LENGTH, NAME and ID for X, Y and Z, the modes and
// precisions as they stand, OK; then Enter at "Select objects: " for all of
// model space.
void BM_SetXyzAllModelSpace(benchmark::State& state) {
  Fixture& f = fixture();
  bool wrote = true;
  for (auto _ : state) {
    f.run(L"ZARVEL_SETXYZ", "Roads\nLENGTH\nNAME\nID\n\n\n\n\nOK\n\n");
    // Each run starts from the drawing as built, and the undo steps of the
    // runs before do not pile up in memory. The undone run would be freed by
    // the next command, on its clock: it is dropped here instead.
    state.PauseTiming();
    wrote = wrote && wroteCentre(f);
    f.run(L"UNDO", "\n");
    f.session.db().undo().undone().clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kEntities);
  if (!wrote) state.SkipWithError("the command wrote no centre");
}

}  // namespace

BENCHMARK(BM_SetXyzAllModelSpace)->Unit(benchmark::kMillisecond)->Iterations(3);

BENCHMARK_MAIN();
