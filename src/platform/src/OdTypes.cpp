// Lookups on Object Data table definitions.
#include "platform/OdTypes.h"

#include "platform/Text.h"

namespace platform {

int OdTableDef::columnIndex(const std::wstring& name) const {
  // Names that differ only in case can coexist, so an exact match must win
  // over an earlier column that matches only when case is ignored.
  for (int i = 0; i < count(); ++i) {
    if (columns[i].name == name) return i;
  }
  for (int i = 0; i < count(); ++i) {
    if (equalsIgnoreCase(columns[i].name, name)) return i;
  }
  return -1;
}

}  // namespace platform
