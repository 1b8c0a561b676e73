// The file that keeps views' settings between sessions, under the user's
// configuration folder ($XDG_CONFIG_HOME/zarvel/, else ~/.config/zarvel/).
//
// The file is UTF-8 text, one entry a line:
//   # a comment                    (lines beginning with '#'; blank lines too)
//   [section]                      (a section header)
//   name=value                     (a setting of the section above)
// The name runs to the first '='; the value is the rest of the line, spaces
// included. A backslash escapes: "\\" a backslash, "\n" a line feed, "\r" a
// carriage return; and "\=", "\[", "\]", "\#" those characters, which names
// and section names always escape.
//
// It is written whole to a temporary file beside it, which then replaces it.
// A file that does not read as this form is moved aside to "<name>.corrupt"
// (or "<name>.corrupt.N" if that is taken) and the views start from their
// defaults; a file that cannot be read at all, or moved aside, is never
// written over: the store stays read-only for the session, so that nothing
// the user had is lost. Either way a warning says so.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/Status.h"

namespace zarvel {

class ViewConfigStore {
 public:
  using WarningSink = std::function<void(const std::wstring& warning)>;

  // The default file, or empty when neither variable names a home.
  static std::string DefaultPath();
  // Reads the file; a missing file is an empty store.
  static std::shared_ptr<ViewConfigStore> Open(const std::string& path, WarningSink warn);
  // A store in memory only, for a grid that keeps nothing.
  static std::shared_ptr<ViewConfigStore> InMemory();

  ~ViewConfigStore() = default;
  ViewConfigStore(const ViewConfigStore&) = delete;
  ViewConfigStore& operator=(const ViewConfigStore&) = delete;

  std::optional<std::wstring> Read(const std::wstring& section, const std::wstring& name) const;
  void Write(const std::wstring& section, const std::wstring& name, const std::wstring& value);
  void RemoveSection(const std::wstring& section);

  // Writes the file if anything changed since it was read or last saved;
  // nothing writes it otherwise. Failed, with a warning, when it cannot (or
  // may not) be written.
  platform::Status Save();
  bool IsWritable() const { return writable_; }
  const std::string& GetPath() const { return path_; }

 private:
  ViewConfigStore(std::string path, WarningSink warn);
  void Load();
  // Moves a corrupt file aside; false when it could not.
  bool KeepAside(std::wstring& aside);
  void Warn(const std::wstring& text) const;

  std::string path_;
  WarningSink warn_;
  std::map<std::wstring, std::map<std::wstring, std::wstring>> sections_;
  bool writable_ = true;
  bool dirty_ = false;
  bool warnedReadOnly_ = false;
};

}  // namespace zarvel
