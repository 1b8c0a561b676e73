// Splits the bytes of an ASCII drawing file into tags (a group code and its value) without
// copying: every value is a view into the caller's buffer.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "host/dxf/ParseError.h"

namespace host::dxf {

struct Tag {
  int code = 0;
  // The value line without its line end; blanks are kept, since leading blanks of a string
  // value are part of it.
  std::string_view value;
  // 1-based line number of the group-code line.
  std::size_t line = 0;
  // Byte offset of the start of the group-code line in the buffer.
  std::size_t offset = 0;
};

class TagReader {
 public:
  // Where the reader stands; take one with position() and go back to it with seek().
  struct Position {
    std::size_t offset = 0;
    std::size_t line = 1;
  };

  // The buffer must outlive the reader and every tag it yields. A UTF-8 byte order mark at the
  // start is skipped. Throws ParseError when the bytes are a binary drawing file.
  explicit TagReader(std::string_view data);

  // The next tag, or nothing at the end of the data (blank lines at the very end are taken as
  // the end too). Throws ParseError, and stays where it was, when the group-code line is not an
  // integer or the file ends after it.
  std::optional<Tag> next();
  // The tag next() would yield, without moving.
  std::optional<Tag> peek() const;
  bool atEnd() const;
  // The number of the data's last line, for what is wrong at its end: at least 1.
  std::size_t lastLine() const;

  Position position() const { return pos_; }
  // Only positions this reader gave out are meaningful.
  void seek(Position position) { pos_ = position; }
  // Moves to the offset, the start of a line before or after the position,
  // counting the lines between.
  void moveTo(std::size_t offset);

  std::string_view data() const { return data_; }

 private:
  // Reads the tag at pos and moves pos past it.
  std::optional<Tag> read(Position& pos) const;

  std::string_view data_;
  Position pos_;
};

}  // namespace host::dxf
