// The texts of the module's message catalogue, looked up by id.
#include "resources/StringTable.h"

#include <algorithm>
#include <iterator>

namespace zarvel {
namespace {

// In id order, the string table first, so that a lookup is a binary search.
#define ZARVEL_ID(name, id, kinds, text) id,
constexpr int kIds[] = {ZARVEL_STRING_TABLE(ZARVEL_ID) ZARVEL_DIALOG_TEXTS(ZARVEL_ID)
                            ZARVEL_COMMAND_TEXTS(ZARVEL_ID)};
#undef ZARVEL_ID

}  // namespace

const std::wstring& loadString(int id) {
  // Built on first use, so that texts can be loaded during static initialisation.
  static const std::wstring kTexts[std::size(kIds)] = {
#define ZARVEL_TEXT(name, id, kinds, text) text,
      ZARVEL_STRING_TABLE(ZARVEL_TEXT) ZARVEL_DIALOG_TEXTS(ZARVEL_TEXT)
          ZARVEL_COMMAND_TEXTS(ZARVEL_TEXT)
#undef ZARVEL_TEXT
  };
  static const std::wstring kUnknown;
  const auto found = std::lower_bound(std::begin(kIds), std::end(kIds), id);
  if (found == std::end(kIds) || *found != id) return kUnknown;
  return kTexts[found - std::begin(kIds)];
}

}  // namespace zarvel
