// The controls that the value dialogs build alike.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"
#include "platform/ObjectData.h"

namespace zarvel {

platform::DialogControl comboBox(int id, std::wstring label);
platform::DialogControl editBox(int id, std::wstring label);

// Fills a list box with the names (it sorts them if it is sorted); a list of
// exactly one name has it selected. True when that selection was made.
bool fillTableList(platform::DialogControl& list, std::vector<std::wstring> names);

// The item chosen in a single-choice list or combo box, empty for none.
std::wstring chosenText(const platform::DialogControl& control);

// The table's column names in definition order; none for a missing table.
std::vector<std::wstring> columnNamesOf(const std::wstring& table);

// The column of that exact name, -1 if there is none.
int exactColumnIndex(const platform::OdTableDef& definition, const std::wstring& name);

}  // namespace zarvel
