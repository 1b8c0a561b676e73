// The texts of the module's message catalogue, indexed by id.
#include "resources/StringTable.h"

#include <array>

namespace zarvel {
namespace {

using Texts = std::array<std::wstring, kLastMessageId - kFirstMessageId + 1>;

// Built on first use, so that texts can be loaded during static initialisation.
const Texts& texts() {
  static const Texts kTexts = {
      /* 100 */ L"zarvel",
      /* 101 */ L"Error: unable to open '%s'.\n",
      /* 102 */ L"Drawings; Drawing Templates (*.dwg;*.dwt)|*.dwg;*.dwt||",
      /* 103 */ L"Error. Operation unsuccessful.\n",
      /* 104 */ L"Operation completed.\n",
      /* 105 */ L"Selected: %i\n",
      /* 106 */ L"Mode (First, Last)<First>: ",
      /* 107 */ L"first",
      /* 108 */ L"last",
      /* 109 */ L"Error: invalid parameters.\n",
      /* 110 */ L"Completed: %i\n",
      /* 111 */ L"Error: no objects selected.\n",
      /* 112 */ L"Completed: %i out of %i\n",
      /* 113 */ L"Select object: ",
      /* 114 */ L"Error: '%s': invalid format.\n",
      /* 115 */ L"Error: invalid format.\n",
      /* 116 */ L"Warning: layer '%s' not found.\n",
      /* 117 */ L"Error: table '%s' not found.\n",
      /* 118 */ L"Text files (*.txt)|*.txt||",
      /* 119 */ L"Select objects: ",
      /* 120 */ L"Completed (Length/Area/Volume): %i/%i/%i out of %i\n",
      /* 121 */ L"Error: unable to load feature class '%s'.\n",
      /* 122 */ L"Error: unable to copy table '%s'.\n",
      /* 123 */ L"Error: column not found.\n",
      /* 124 */ L"Precision [1-99]<10>: ",
      /* 125 */ L"Error: invalid precision.\n",
      /* 126 */ L"Warning: '%s' already exists.\n",
      /* 127 */
      L"Active document contains Object Data definitions which can cause "
      L"errors during program operation. Recommend removal of existing Object "
      L"Data definitions.\n",
      /* 128 */ L"Warning",
      /* 129 */ L"Table <%s>: ",
      /* 130 */ L"Table: ",
      /* 131 */ L"Error: table not found.\n",
      /* 132 */ L"Color<ByLayer>: ",
      /* 133 */ L"Error: invalid color.\n",
      /* 134 */ L"Layer<",
      /* 135 */ L"Error: invalid layer.\n",
      /* 136 */ L"Linetype<",
      /* 137 */ L"Error: invalid linetype.\n",
      /* 138 */ L"Close<0>: ",
      /* 139 */ L"Drawings (*.dwg)|*.dwg||",
      /* 140 */ L"Error: selected file already active.\n",
      /* 141 */ L"Unable to read %i object(s). Continue?",
      /* 142 */ L"Error: no files selected.\n",
      /* 143 */ L"Error: '%s':'%s': invalid type.\n",
      /* 144 */ L"Precision [0-99]<0> (> 0 - enable conversion): ",
      /* 145 */ L"Field",
      /* 146 */ L"Value",
      /* 147 */ L"Error",
      /* 148 */ L"No objects selected.",
      /* 149 */ L"Data may not match existing definitions. Continue?",
      /* 150 */ L"Data does not match existing definitions.",
      /* 151 */ L"Detach selected Object Data?",
      /* 152 */ L"First",
      /* 153 */ L"Last",
      /* 154 */ L"Center",
      /* 155 */ L"Min",
      /* 156 */ L"Max",
      /* 157 */ L"Average",
      /* 158 */ L"File",
      /* 159 */ L"Error: unable to retrieve default value of '%s'.\n",
      /* 160 */ L"Graphical objects with Object Data:\n",
      /* 161 */ L"Objects: %i\n",
      /* 162 */ L"Objects with no Object Data: %i\n",
      /* 163 */ L"Objects with Object Data: %i\n",
      /* 164 */ L"Objects containing duplicated Object Data: %i\n",
      /* 165 */ L"Objects containing multiple Object Data: %i\n",
      /* 166 */ L"Object Data: %i\n",
      /* 167 */ L"Unused Object Data: %i\n",
      /* 168 */ L"Completed: %i out of %i (%i out of range, %i multiple)\n",
      /* 169 */ L"Completed: %i out of %i (%i out of range)\n",
      /* 170 */ L"Completed: %i out of %i (%i multiple)\n",
      /* 171 */ L"Error: duplicate column names.\n",
      /* 172 */ L"Error: table '%s' does not match existing definition.\n",
      /* 173 */ L"File '%s' already exists. Overwrite?",
      /* 174 */ L"Table '%s' does not match existing definition. Continue?",
      /* 175 */ L"Object Data statistics.",
      /* 176 */ L"Select objects with specific OD.",
      /* 177 */ L"Select objects without specific OD.",
      /* 178 */ L"Selected: %i ( ",
      /* 179 */ L"Select reference object: ",
      /* 180 */ L"This will detach ALL tables from selected objects. Continue?\n",
  };
  return kTexts;
}

}  // namespace

const std::wstring& loadString(int id) {
  static const std::wstring kUnknown;
  if (id < kFirstMessageId || id > kLastMessageId) return kUnknown;
  return texts()[static_cast<size_t>(id - kFirstMessageId)];
}

}  // namespace zarvel
