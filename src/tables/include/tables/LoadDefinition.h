// ZARVEL_LOAD_DEFINITION: brings the table definitions of another drawing
// file into the active drawing, leaving no record on any entity.
#pragma once

#include <string>

namespace zarvel {

// False, having said so, when the file can't be named under an alias or
// won't attach; the drawing is then unchanged.
bool loadDefinitions(const std::wstring& path);
void commandLoadDefinition();

}  // namespace zarvel
