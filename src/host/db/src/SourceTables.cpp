// The definitions that active attached drawings lend to a project.
#include "host/db/SourceTables.h"

#include <algorithm>

#include "platform/Text.h"

namespace host {

void SourceTables::lend(const void* lender, std::vector<NamedTableDefinition> tables) {
  for (NamedTableDefinition& table : tables) lent_.push_back({lender, std::move(table)});
}

void SourceTables::takeBack(const void* lender) {
  lent_.erase(std::remove_if(lent_.begin(), lent_.end(),
                             [lender](const Lent& l) { return l.lender == lender; }),
              lent_.end());
}

const NamedTableDefinition* SourceTables::findExact(const std::wstring& name) const {
  for (const Lent& l : lent_) {
    if (l.table.name == name) return &l.table;
  }
  return nullptr;
}

const NamedTableDefinition* SourceTables::findIgnoringCase(const std::wstring& name) const {
  for (const Lent& l : lent_) {
    if (platform::equalsIgnoreCase(l.table.name, name)) return &l.table;
  }
  return nullptr;
}

}  // namespace host
