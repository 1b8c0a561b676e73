// Controls and readings that the dialogs of the value operations share.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

// A drop-down list with nothing chosen.
platform::DialogControl comboBox(int id, std::wstring label);
platform::DialogControl editBox(int id, std::wstring label);

// Chooses the item of exactly that name, if there is one; a list box's other
// items are left unchosen.
void selectItem(platform::DialogControl& control, const std::wstring& name);
// The chosen item of a combo box or single-select list; empty for none.
std::wstring selectedItem(const platform::DialogControl& control);

// The columns of the table in their order; none for a table not found.
std::vector<std::wstring> columnNames(const std::wstring& table);

// A precision as typed: its leading whole number, a negative one taken as 0;
// above the spin's range is accepted.
int precisionOf(const platform::DialogControl& edit);

}  // namespace zarvel
