// The error a malformed drawing file raises: a message and the line it is about.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace host::dxf {

class ParseError : public std::runtime_error {
 public:
  ParseError(std::size_t line, const std::string& message)
      : std::runtime_error(message), line_(line) {}

  // 1-based line of the file the message is about; 0 when it is about the whole file.
  std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

}  // namespace host::dxf
