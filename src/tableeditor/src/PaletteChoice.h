// The palette's prompts for one name out of a list: "Label [a/b/c] <d>: ",
// asked again, with the reason, until a listed name or Enter comes.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zarvel {

// The place of the name in the list: exactly, else the first ignoring case;
// -1 when none.
int findName(const std::vector<std::wstring>& names, const std::wstring& name);

// The place of the name given (exactly, else the first ignoring case); a name
// not listed is said as "No <what> is named <name>." and asked again. Enter
// gives currentItem when there is one (it only shows as the default), Esc and
// Enter without one give none. allowSpaces lets a name hold blanks.
std::optional<std::size_t> askChoice(const std::wstring& label,
                                     const std::vector<std::wstring>& names,
                                     const std::wstring& what, bool allowSpaces,
                                     std::optional<std::size_t> currentItem = std::nullopt);

}  // namespace zarvel
