// Texts the drawing-file tests share: fixture files by name, and the tags of a text.
#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "TagReader.h"

namespace host::dxf {

// The bytes of a file in the fixtures folder; empty when it cannot be read.
inline std::string fixture(const std::string& name) {
  std::ifstream in(std::string(FIXTURES_DIR) + "/" + name, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline std::vector<Tag> tagsOf(std::string_view text) {
  TagReader reader(text);
  std::vector<Tag> tags;
  while (auto tag = reader.next()) tags.push_back(*tag);
  return tags;
}

}  // namespace host::dxf
