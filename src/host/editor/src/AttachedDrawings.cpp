// Attaching reads the file's table definitions and nothing else of it, so
// that borrowing a few definitions from a large drawing stays quick.
#include "host/editor/AttachedDrawings.h"

#include <algorithm>

#include "host/dxf/AtomicFile.h"
#include "host/dxf/DefinitionsReader.h"
#include "host/dxf/ParseError.h"
#include "platform/Text.h"

namespace host {

using platform::Status;

Status AttachedSourceDrawing::activate() {
  if (!active_) lendTo_.lend(this, tables_);
  active_ = true;
  return Status::Ok;
}

Status AttachedSourceDrawing::prepare() {
  return active_ ? Status::Ok : Status::Failed;
}

std::vector<std::wstring> AttachedSourceDrawing::tableNames(int /*kindMask*/) const {
  std::vector<std::wstring> names;
  for (const NamedTableDefinition& table : tables_) names.push_back(table.name);
  std::sort(names.begin(), names.end());
  return names;
}

void AttachedSourceDrawing::closeDown() {
  if (active_) lendTo_.takeBack(this);
  active_ = false;
}

void AttachedDrawingSet::connect(const PathAliasTable* aliases, Report report) {
  aliases_ = aliases;
  report_ = std::move(report);
}

void AttachedDrawingSet::fail(const std::wstring& text) const {
  if (report_) report_(L"Error: " + text + L"\n");
}

platform::AttachedDrawing* AttachedDrawingSet::attachDrawing(const std::wstring& aliasPath) {
  const std::optional<std::filesystem::path> file =
      aliases_ != nullptr ? aliases_->resolve(aliasPath) : std::nullopt;
  if (!file) {
    fail(aliasPath + L": no path alias of that name.");
    return nullptr;
  }
  if (find(aliasPath) != nullptr) {
    fail(aliasPath + L": attached already.");
    return nullptr;
  }
  const std::wstring fileName = platform::fromUtf8(file->string());
  dxf::FileBytes bytes = dxf::readWholeFile(*file);
  if (bytes.error) {
    fail(platform::fromUtf8(*bytes.error));
    return nullptr;
  }
  try {
    drawings_.push_back(std::make_unique<AttachedSourceDrawing>(
        aliasPath, dxf::readTableDefinitions(bytes.bytes), sources_));
  } catch (const dxf::ParseError& error) {
    const std::wstring line = error.line() > 0 ? L":" + std::to_wstring(error.line()) : L"";
    fail(fileName + line + L": " + platform::fromUtf8(error.what()));
    return nullptr;
  }
  return drawings_.back().get();
}

Status AttachedDrawingSet::detachDrawing(const std::wstring& aliasPath) {
  auto found = std::find_if(drawings_.begin(), drawings_.end(),
                            [&](const auto& d) { return d->aliasPath() == aliasPath; });
  if (found == drawings_.end()) return Status::Failed;
  drawings_.erase(found);
  return Status::Ok;
}

AttachedSourceDrawing* AttachedDrawingSet::find(const std::wstring& aliasPath) const {
  for (const auto& d : drawings_) {
    if (d->aliasPath() == aliasPath) return d.get();
  }
  return nullptr;
}

}  // namespace host
