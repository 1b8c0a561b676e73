// The port's file service in our host: files written as drawings are saved,
// through a temporary file renamed over the target, and every failure told on
// a line of its own, since the module may end without a word.
#pragma once

#include <utility>

#include "host/editor/Prompter.h"
#include "platform/Files.h"
#include "platform/TextFile.h"

namespace host {

class FileService : public platform::Files {
 public:
  // narrow reads the bytes of a text file that is neither UTF-16 nor UTF-8.
  FileService(Prompter& prompter, platform::NarrowDecoder narrow)
      : prompter_(prompter), narrow_(std::move(narrow)) {}

  // On failure prints "Error: <file>: <reason>".
  platform::Status checkWritable(const std::wstring& path) override;
  platform::Status writeWholeFile(const std::wstring& path, std::string_view bytes) override;
  std::optional<std::wstring> readTextFile(const std::wstring& path) override;

 private:
  Prompter& prompter_;
  platform::NarrowDecoder narrow_;
};

}  // namespace host
