// The settings file under the user's configuration folder: reading it, its
// text form, and writing it whole through a temporary file.
#include "grid/ViewConfigStore.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

#include "platform/Text.h"

namespace zarvel {
namespace {

namespace fs = std::filesystem;

const char* const kFileName = "views.conf";
const char* const kHeader =
    "# zarvel view settings: [section] lines, then name=value lines.\n"
    "# Backslash escapes: \\\\ \\n \\r \\= \\[ \\] \\#\n";

// Characters escaped in names and section names, so that a line reads back
// as what it was written as.
bool escapedInNames(wchar_t c) {
  return c == L'=' || c == L'[' || c == L']' || c == L'#';
}

std::wstring escape(const std::wstring& text, bool name) {
  std::wstring out;
  for (wchar_t c : text) {
    if (c == L'\\') {
      out += L"\\\\";
    } else if (c == L'\n') {
      out += L"\\n";
    } else if (c == L'\r') {
      out += L"\\r";
    } else {
      if (name && escapedInNames(c)) out += L'\\';
      out += c;
    }
  }
  return out;
}

struct ParseError {
  int line = 0;
  std::wstring what;
};

// Reads escaped text up to an unescaped `stop` (0: to the end). Sets `end` to
// the position of the stop, or npos when it is not there.
bool unescape(const std::wstring& text, std::size_t from, wchar_t stop, std::wstring& out,
              std::size_t& end) {
  out.clear();
  for (std::size_t i = from; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (stop != 0 && c == stop) {
      end = i;
      return true;
    }
    if (c != L'\\') {
      out += c;
      continue;
    }
    if (++i == text.size()) return false;
    switch (text[i]) {
      case L'\\':
        out += L'\\';
        break;
      case L'n':
        out += L'\n';
        break;
      case L'r':
        out += L'\r';
        break;
      case L'=':
      case L'[':
      case L']':
      case L'#':
        out += text[i];
        break;
      default:
        return false;
    }
  }
  end = std::wstring::npos;
  return true;
}

using Sections = std::map<std::wstring, std::map<std::wstring, std::wstring>>;

bool parseLine(const std::wstring& line, Sections& sections, const std::wstring*& current,
               std::wstring& what) {
  if (line.find_first_not_of(L" \t") == std::wstring::npos || line[0] == L'#') return true;
  std::wstring first;
  std::size_t end = 0;
  if (line[0] == L'[') {
    if (!unescape(line, 1, L']', first, end)) {
      what = L"a bad backslash escape in a section name";
    } else if (end != line.size() - 1) {
      what = L"a section line must end with its ']'";
    } else {
      current = &sections.try_emplace(first).first->first;
      return true;
    }
    return false;
  }
  std::wstring value;
  std::size_t ignored = 0;
  if (!current) {
    what = L"a setting before any [section] line";
  } else if (!unescape(line, 0, L'=', first, end) || end == std::wstring::npos) {
    what = end == std::wstring::npos ? L"no '=' between a name and its value"
                                     : L"a bad backslash escape in a name";
  } else if (!unescape(line, end + 1, 0, value, ignored)) {
    what = L"a bad backslash escape in a value";
  } else {
    sections[*current][first] = value;
    return true;
  }
  return false;
}

std::optional<ParseError> parse(const std::string& content, Sections& sections) {
  std::istringstream in(content);
  std::string raw;
  const std::wstring* current = nullptr;
  for (int number = 1; std::getline(in, raw); ++number) {
    if (!raw.empty() && raw.back() == '\r') raw.pop_back();
    const std::wstring line = platform::fromUtf8(raw);
    if (platform::toUtf8(line) != raw) return ParseError{number, L"text that is not UTF-8"};
    std::wstring what;
    if (!parseLine(line, sections, current, what)) return ParseError{number, what};
  }
  return std::nullopt;
}

std::string render(const Sections& sections) {
  std::wstring text;
  for (const auto& [section, entries] : sections) {
    text += L"[" + escape(section, true) + L"]\n";
    for (const auto& [name, value] : entries) {
      text += escape(name, true) + L"=" + escape(value, false) + L"\n";
    }
  }
  return kHeader + platform::toUtf8(text);
}

std::wstring wide(const std::string& text) {
  return platform::fromUtf8(text);
}
std::wstring reasonOf(const std::error_code& ec) {
  return wide(ec.message());
}

}  // namespace

ViewConfigStore::ViewConfigStore(std::string path, WarningSink warn)
    : path_(std::move(path)), warn_(std::move(warn)) {}

std::string ViewConfigStore::DefaultPath() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  // A relative folder in the variable is to be ignored, as if it were unset.
  if (config && config[0] == '/') return (fs::path(config) / "zarvel" / kFileName).string();
  const char* home = std::getenv("HOME");
  if (home && home[0] != '\0') {
    return (fs::path(home) / ".config" / "zarvel" / kFileName).string();
  }
  return std::string();
}

std::shared_ptr<ViewConfigStore> ViewConfigStore::Open(const std::string& path, WarningSink warn) {
  std::shared_ptr<ViewConfigStore> store(new ViewConfigStore(path, std::move(warn)));
  if (!path.empty()) store->Load();
  return store;
}

std::shared_ptr<ViewConfigStore> ViewConfigStore::InMemory() {
  return Open("", nullptr);
}

void ViewConfigStore::Warn(const std::wstring& text) const {
  if (warn_) warn_(text);
}

void ViewConfigStore::Load() {
  std::error_code ec;
  const fs::file_status status = fs::status(path_, ec);
  if (status.type() == fs::file_type::not_found) return;
  std::ifstream in;
  if (!ec && fs::is_regular_file(status)) in.open(path_, std::ios::binary);
  std::string content;
  if (in) content.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  if (ec || !fs::is_regular_file(status) || !in || in.bad()) {
    writable_ = false;
    Warn(wide(path_) + L": cannot be read" + (ec ? L" (" + reasonOf(ec) + L")" : L"") +
         L"; the grid columns start from their defaults, and it is not written over this "
         L"session.");
    return;
  }
  const std::optional<ParseError> error = parse(content, sections_);
  if (!error) return;
  sections_.clear();
  const std::wstring where = wide(path_) + L":" + std::to_wstring(error->line) + L": ";
  std::wstring aside;
  if (KeepAside(aside)) {
    Warn(where + error->what + L"; the file is kept as " + aside +
         L" and the grid columns start from their defaults.");
  } else {
    writable_ = false;
    Warn(where + error->what + L"; it could not be moved aside (" + aside +
         L"), so the grid columns start from their defaults and it is not written over this "
         L"session.");
  }
}

bool ViewConfigStore::KeepAside(std::wstring& aside) {
  constexpr int kTries = 100;
  std::error_code ec;
  for (int n = 0; n < kTries; ++n) {
    const std::string name = path_ + ".corrupt" + (n == 0 ? "" : "." + std::to_string(n));
    if (fs::exists(name, ec) || ec) continue;
    fs::rename(path_, name, ec);
    aside = ec ? reasonOf(ec) : wide(name);
    return !ec;
  }
  aside = L"every name for it is taken";
  return false;
}

std::optional<std::wstring> ViewConfigStore::Read(const std::wstring& section,
                                                  const std::wstring& name) const {
  const auto s = sections_.find(section);
  if (s == sections_.end()) return std::nullopt;
  const auto e = s->second.find(name);
  if (e == s->second.end()) return std::nullopt;
  return e->second;
}

void ViewConfigStore::Write(const std::wstring& section, const std::wstring& name,
                            const std::wstring& value) {
  sections_[section][name] = value;
  dirty_ = true;
}

void ViewConfigStore::RemoveSection(const std::wstring& section) {
  if (sections_.erase(section) > 0) dirty_ = true;
}

platform::Status ViewConfigStore::Save() {
  if (!dirty_ || path_.empty()) return platform::Status::Ok;
  if (!writable_) {
    if (!warnedReadOnly_) {
      Warn(wide(path_) +
           L": not written, as it could not be read; the column settings of "
           L"this session are not kept.");
      warnedReadOnly_ = true;
    }
    return platform::Status::Failed;
  }
  const fs::path target(path_);
  std::error_code ec;
  if (target.has_parent_path()) fs::create_directories(target.parent_path(), ec);
  if (ec) {
    Warn(wide(target.parent_path().string()) + L": cannot create the folder (" + reasonOf(ec) +
         L"); the column settings are not saved.");
    return platform::Status::Failed;
  }
  std::random_device random;
  std::ostringstream suffix;
  suffix << ".tmp-" << std::hex << random();
  const std::string temporary = path_ + suffix.str();
  const std::string content = render(sections_);
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (!out) ec = std::make_error_code(std::errc::io_error);
  }
  if (!ec) fs::rename(temporary, target, ec);
  if (ec) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    Warn(wide(path_) + L": cannot be written (" + reasonOf(ec) +
         L"); the column settings are not saved.");
    return platform::Status::Failed;
  }
  dirty_ = false;
  return platform::Status::Ok;
}

}  // namespace zarvel
