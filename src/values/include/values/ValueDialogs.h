// The controls that the value dialogs build alike.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"
#include "platform/ObjectData.h"

namespace zarvel {

// A drop-down list with nothing chosen.
platform::DialogControl comboBox(int id, std::wstring label);
platform::DialogControl editBox(int id, std::wstring label);

// Chooses the item of exactly that name, if there is one; a list box's other
// items are left unchosen.
void selectItem(platform::DialogControl& control, const std::wstring& name);

// A precision as typed: its leading whole number, a negative one taken as 0;
// above the spin's range is accepted.
int precisionOf(const platform::DialogControl& edit);

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
