// Table definitions that a project borrows from other drawings while they are
// active: the container offers them where the drawing has no table of that
// name, and a table of them that gets a record is created in the drawing.
#pragma once

#include <string>
#include <vector>

#include "platform/OdTypes.h"

namespace host {

struct NamedTableDefinition {
  std::wstring name;
  platform::OdTableDef definition;
};

class SourceTables {
 public:
  // The lender is whatever lends them, so that it can take back its own.
  void lend(const void* lender, std::vector<NamedTableDefinition> tables);
  void takeBack(const void* lender);
  bool empty() const { return lent_.empty(); }

  // The first lent table of exactly that name, else of that name ignoring
  // case; null if none.
  const NamedTableDefinition* findExact(const std::wstring& name) const;
  const NamedTableDefinition* findIgnoringCase(const std::wstring& name) const;

 private:
  struct Lent {
    const void* lender;
    NamedTableDefinition table;
  };
  std::vector<Lent> lent_;
};

}  // namespace host
