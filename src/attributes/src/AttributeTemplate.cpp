// ZARVEL_ATTR_TEMPLATE: a starting attribute map. Its first lines name each
// block and attribute found, with placeholders that the user overwrites; the
// rest list every table's columns behind a comment mark, as a menu to copy
// from. Unedited, the file loads as nothing but invalid lines.
#include <map>
#include <set>

#include "BlockReferences.h"
#include "attributes/AttributeCommands.h"
#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "platform/Text.h"

namespace zarvel {
namespace {

// Block name (as written) to its attribute tags, both case-sensitive.
using BlockTags = std::map<std::wstring, std::set<std::wstring>>;

BlockTags tagsOfReferences(const std::vector<ObjectId>& references) {
  BlockTags blocks;
  for (const ObjectId reference : references) {
    const std::vector<ReferenceAttribute> attributes = attributesOf(reference);
    // A block is listed only for an attribute it has.
    if (attributes.empty()) continue;
    std::set<std::wstring>& tags = blocks[blockNameOfReference(reference)];
    for (const ReferenceAttribute& attribute : attributes) tags.insert(attribute.tag);
  }
  return blocks;
}

const wchar_t* columnTypeName(platform::OdType type) {
  switch (type) {
    case platform::OdType::Unknown:
      return L"Unknown";
    case platform::OdType::Integer:
      return L"Integer";
    case platform::OdType::Real:
      return L"Real";
    case platform::OdType::Character:
      return L"Character";
    case platform::OdType::Point:
      return L"Point";
  }
  return L"";
}

struct TemplateText {
  std::wstring text;
  int tables = 0;
};

TemplateText templateText(const BlockTags& blocks) {
  TemplateText out;
  for (const auto& [block, tags] : blocks) {
    for (const std::wstring& tag : tags) {
      out.text += platform::format(L"%s\t%s\t?TableName\t?ColumnName\n", block, tag);
    }
  }
  OdContainer& container = getODContainer();
  for (const std::wstring& name : container.tableNames()) {
    if (!isUserTable(name)) continue;
    const std::unique_ptr<platform::OdTable> table = container.getTable(name);
    if (table == nullptr) continue;
    if (out.tables++ == 0) out.text += L"\n";
    for (const platform::OdColumnDef& column : table->definition().columns) {
      out.text += platform::format(L"?BlockName\t?AttributeName\t%s\t%s\t?%s\n", name, column.name,
                                   columnTypeName(column.type));
    }
  }
  return out;
}

std::wstring askTemplateFile() {
  platform::FileDialogRequest request;
  request.defaultExtension = L"txt";
  request.filter = loadString(kMsgTextFileFilter);
  request.save = true;
  request.confirmOverwrite = true;
  request.folderMustExist = true;
  return port().ui().fileDialog(request);
}

}  // namespace

void commandAttrTemplate() {
  ResourceScope scope;
  const SelectionResult selection = commandScope();
  if (!selection.ok) return;
  const BlockTags blocks = tagsOfReferences(blockReferencesIn(selection.ids));
  if (blocks.empty()) {
    printMessage(kTxtNoValidEntitiesSelected);
    return;
  }
  const std::wstring path = askTemplateFile();
  if (path.empty()) return;
  const TemplateText text = templateText(blocks);
  // Written in the narrow code page of the files the module writes, so that
  // the map loads back as it stands.
  if (port().files().writeWholeFile(path, platform::toUtf8(text.text)) != platform::Status::Ok) {
    port().ui().messageBox(platform::format(loadString(kMsgUnableToOpen), path),
                           loadString(kMsgErrorCaption), platform::kMbOk | platform::kMbIconError);
    return;
  }
  printMessage(kTxtGeneratedTemplate, static_cast<int>(blocks.size()), text.tables);
}

}  // namespace zarvel
