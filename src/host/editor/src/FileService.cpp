// Module files written through the drawings' safe save.
#include "host/editor/FileService.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/dxf/AtomicFile.h"
#include "platform/Text.h"

namespace host {

platform::Status FileService::checkWritable(const std::wstring& path) {
  if (auto reason = dxf::whyNotWritable(std::filesystem::path(platform::toUtf8(path)))) {
    prompter_.print(L"Error: " + path + L": " + platform::fromUtf8(*reason) + L"\n");
    return platform::Status::Failed;
  }
  return platform::Status::Ok;
}

platform::Status FileService::writeWholeFile(const std::wstring& path, std::string_view bytes) {
  // The message of a failed save names the file and the reason already.
  if (auto error = dxf::writeFileAtomically(std::filesystem::path(platform::toUtf8(path)), bytes)) {
    prompter_.print(L"Error: " + platform::fromUtf8(*error) + L"\n");
    return platform::Status::Failed;
  }
  return platform::Status::Ok;
}

std::optional<std::wstring> FileService::readTextFile(const std::wstring& path) {
  const std::filesystem::path file(platform::toUtf8(path));
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) return std::nullopt;
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) return std::nullopt;
  return platform::decodeTextFile(bytes, narrow_);
}

}  // namespace host
