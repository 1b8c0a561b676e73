// Whole-file reading, and saving that never leaves a half-written file in place of the old one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace host::dxf {

// Writes data to a new file beside the target, flushes it to disk and renames it over the
// target, so that the target holds either its old bytes or all the new ones. A target that is a
// symbolic link is replaced where the link points, and a link that points nowhere makes the file
// it names. An existing target's owner and permissions are kept. A target that is not a regular
// file (a directory, a pipe, a device) or is read-only is refused. Returns nothing on success; on
// failure the temporary file is removed, the target is untouched and the message names the file
// and the reason.
std::optional<std::string> writeFileAtomically(const std::filesystem::path& path,
                                               std::string_view data);

// Why writeFileAtomically would refuse the target, found without writing: the reason alone, for
// a caller that names the file itself; nothing when the file could be written.
std::optional<std::string> whyNotWritable(const std::filesystem::path& path);

struct FileBytes {
  std::string bytes;
  // Set when the file could not be read; it names the file and the system's reason.
  std::optional<std::string> error;
};

FileBytes readWholeFile(const std::filesystem::path& path);

}  // namespace host::dxf
