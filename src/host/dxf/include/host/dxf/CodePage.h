// The narrow code page of a drawing, for the text files read beside it.
#pragma once

#include <string>
#include <string_view>

#include "host/dxf/DrawingReader.h"

namespace host::dxf {

// The bytes as text in the code page the drawing's $DWGCODEPAGE names,
// whatever the file's version (Windows-1252 for a code page this system does
// not know, or no drawing); bytes the code page lacks become U+FFFD.
std::wstring decodeInDrawingCodePage(const FileImage* image, std::string_view bytes);

}  // namespace host::dxf
