// The drawings attached to a document's project: each is read for its table
// definitions alone, and lends them to the project while it is active.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/db/SourceTables.h"
#include "host/editor/PathAliasTable.h"
#include "platform/AttachedDrawings.h"

namespace host {

class AttachedSourceDrawing : public platform::AttachedDrawing {
 public:
  AttachedSourceDrawing(std::wstring aliasPath, std::vector<NamedTableDefinition> tables,
                        SourceTables& lendTo)
      : aliasPath_(std::move(aliasPath)), tables_(std::move(tables)), lendTo_(lendTo) {}
  ~AttachedSourceDrawing() override { closeDown(); }
  AttachedSourceDrawing(const AttachedSourceDrawing&) = delete;
  AttachedSourceDrawing& operator=(const AttachedSourceDrawing&) = delete;

  platform::Status activate() override;
  platform::Status prepare() override;
  // The drawing holds Object Data tables alone, so every mask gives them all.
  std::vector<std::wstring> tableNames(int kindMask) const override;
  void closeDown() override;

  const std::wstring& aliasPath() const { return aliasPath_; }
  bool active() const { return active_; }

 private:
  std::wstring aliasPath_;
  std::vector<NamedTableDefinition> tables_;
  SourceTables& lendTo_;
  bool active_ = false;
};

class AttachedDrawingSet : public platform::DrawingSet {
 public:
  using Report = std::function<void(const std::wstring&)>;

  explicit AttachedDrawingSet(SourceTables& sources) : sources_(sources) {}

  // The session's aliases, by which alias paths resolve, and where the set
  // tells why a drawing would not attach. Until then nothing attaches.
  void connect(const PathAliasTable* aliases, Report report);

  // Fails, saying why, for an unknown alias, a path attached already, a file
  // that can't be read or a malformed one.
  platform::AttachedDrawing* attachDrawing(const std::wstring& aliasPath) override;
  platform::Status detachDrawing(const std::wstring& aliasPath) override;

  AttachedSourceDrawing* find(const std::wstring& aliasPath) const;
  // In the order they were attached.
  const std::vector<std::unique_ptr<AttachedSourceDrawing>>& drawings() const { return drawings_; }

 private:
  void fail(const std::wstring& text) const;

  SourceTables& sources_;
  const PathAliasTable* aliases_ = nullptr;
  Report report_;
  std::vector<std::unique_ptr<AttachedSourceDrawing>> drawings_;
};

}  // namespace host
