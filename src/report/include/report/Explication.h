// The explication report: one row per record of the chosen tables on the
// chosen entities, grouped by table or by the value of a shared field, each
// group closed by its sums, and report-wide counts, sums, extremes, averages
// and numbers of distinct values at the end.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectId.h"
#include "report/UnicodeFileText.h"

namespace zarvel {

struct ExplicationOptions {
  std::vector<std::wstring> tables;  // in the user's order
  bool typeField = false;            // group by the field's values, not by table
  std::wstring field;
  std::wstring separator = L",";
};

// The report as its file holds it: UTF-16 little endian with a byte-order
// mark, lines ended by CR LF.
UnicodeFileText explicationReport(const std::vector<platform::ObjectId>& entities,
                                  const ExplicationOptions& options);

// ZARVEL_EXPL: the report of the selection, written to a file the user names.
void commandExpl();

}  // namespace zarvel
