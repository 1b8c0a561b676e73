// ZARVEL_TABLE: the table editor's palette, made at the first call with the
// Edit menu's operations wired in, shown again at each later one.
#pragma once

namespace zarvel {

void commandEditTable();
// Another drawing became the current one: the editor's rows are of the last.
void tableDocumentActivated();
// At unload: the editor's palette goes, and stops watching the drawing.
void destroyTablePalette();

}  // namespace zarvel
