// The port's file service in our host: files written as drawings are saved,
// through a temporary file renamed over the target, and every failure told on
// a line of its own, since the module may end without a word.
#pragma once

#include "host/editor/Prompter.h"
#include "platform/Files.h"

namespace host {

class FileService : public platform::Files {
 public:
  explicit FileService(Prompter& prompter) : prompter_(prompter) {}

  // On failure prints "Error: <file>: <reason>".
  platform::Status checkWritable(const std::wstring& path) override;
  platform::Status writeWholeFile(const std::wstring& path, std::string_view bytes) override;

 private:
  Prompter& prompter_;
};

}  // namespace host
