// The commands palette and the About box: the tree, its lookup by label, the
// palette made on first use and kept until unload, and the run of a command
// that first ends whatever command is running.
#include "frame/CommandsPalette.h"

#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/Port.h"
#include "tables/ODTextBox.h"

namespace zarvel {
namespace {

struct LeafDef {
  const wchar_t* command;
  Message<> label;
};
struct NodeDef {
  const wchar_t* command;
  Message<> label;
  std::vector<LeafDef> leaves;
};

// The tree in display order; the palette's own command, the point pick and
// the attribute template stay out of it.
const std::vector<NodeDef>& menuDefinition() {
  static const std::vector<NodeDef> nodes = {
      {L"",
       kMenuODManagementHeading,
       {{L"ZARVEL_LOAD_DEFINITION", kMenuCopyDefinitionsFromFile},
        {L"ZARVEL_STAT", kMenuUsageStats},
        {L"ZARVEL_TRANSLATE", kMenuTranslate},
        {L"ZARVEL_RMUNUSED", kMenuRemoveUnused}}},
      {L"",
       kMenuSearchODHeading,
       {{L"ZARVEL_HAS_NO_OD", kMenuFindEntitiesWithNoOD},
        {L"ZARVEL_HAS_OD", kMenuFindEntitiesWithOD},
        {L"ZARVEL_HAS_DUPLICATE_OD", kMenuFindEntitiesWithDuplicateOD},
        {L"ZARVEL_HAS_MULTIPLE_OD", kMenuFindEntitiesWithMultipleOD},
        {L"ZARVEL_HAS_NO_SPECIFIC_OD", kMenuFindEntitiesWithNoSpecificOD},
        {L"ZARVEL_HAS_SPECIFIC_OD", kMenuFindEntitiesWithSpecificOD},
        {L"ZARVEL_HAS_SPECIFIC_VALUES", kMenuFindEntitiesWithSpecificODValues}}},
      {L"",
       kMenuAttachDetachODHeading,
       {{L"ZARVEL_ADEATTACHDATA", kMenuAttachDetach},
        {L"ZARVEL_RM_ALL", kMenuDetachAll},
        {L"ZARVEL_RM", kMenuDetachSpecified},
        {L"ZARVEL_REMOVE_DUPLICATE_OD", kMenuDetachDuplicate}}},
      {L"",
       kMenuCopyODHeading,
       {{L"ZARVEL_COPY_OD", kMenuCopyODFromReference},
        {L"ZARVEL_COPY_OD_VALUE", kMenuCopyODValuesFromReference},
        {L"ZARVEL_COPY_ALL", kMenuCopyPropertiesODFromReference},
        {L"ZARVEL_COPY_ALL_VALUE", kMenuCopyPropertiesODValuesFromReference},
        {L"ZARVEL_COPY_VALUE", kMenuCopyValuesFromReference}}},
      {L"",
       kMenuSetEditODValuesHeading,
       {{L"ZARVEL_SETXYZ", kMenuSetFromXYZ},
        {L"ZARVEL_SETPROP", kMenuSetFromGeometricProperties},
        {L"ZARVEL_SETTEXT", kMenuSetFromText},
        {L"ZARVEL_LOAD_ATTRS", kMenuSetFromAttributes},
        {L"ZARVEL_STORE_ATTRS", kMenuUploadToAttributes},
        {L"ZARVEL_SETID", kMenuCreateIDs},
        {L"ZARVEL_REPLACE", kMenuReplace},
        {L"ZARVEL_ADDVAL", kMenuAddFromFieldInField},
        {L"ZARVEL_ADDVAL_OD2OD", kMenuAddValuesFromODToOD}}},
      {L"",
       kMenuModifyEntitiesHeading,
       {{L"ZARVEL_2POLY", kMenuCovertTo2DPolylines},
        {L"ZARVEL_23DPOLY", kMenuConvertTo3DPolylines},
        {L"ZARVEL_BREAK", kMenuBreak}}},
      {L"", kMenuExportImportHeading, {{L"ZARVEL_EXPL", kMenuExplication}}},
      {L"ZARVEL_TABLE", kMenuODTableHeading, {}},
      {L"ZARVEL_ABOUT", kMenuAboutHeading, {}},
  };
  return nodes;
}

constexpr wchar_t kPaletteName[] = L"ZARVEL_CTL";
constexpr wchar_t kListAction[] = L"List";
constexpr wchar_t kRunAction[] = L"Run";

// Owned from the first ZARVEL_CTL until the module unloads.
std::unique_ptr<CommandsPalette>& commandsPalette() {
  static std::unique_ptr<CommandsPalette> palette;
  return palette;
}

bool hasItems(const MenuNode& node) {
  return !node.leaves.empty() || !node.children.empty();
}

// As the tree fills: each node's label under its parent, its children first,
// then its leaves.
void addLines(const std::vector<MenuNode>& nodes, int depth,
              std::vector<std::pair<int, std::wstring>>& lines) {
  for (const MenuNode& node : nodes) {
    lines.emplace_back(depth, node.label);
    addLines(node.children, depth + 1, lines);
    for (const auto& leaf : node.leaves) lines.emplace_back(depth + 1, leaf.second);
  }
}

// The node whose tree item shows the label; null for a leaf or no item.
const MenuNode* nodeLabelled(const std::vector<MenuNode>& nodes, const std::wstring& label) {
  for (const MenuNode& node : nodes) {
    if (node.label == label) return &node;
    if (const MenuNode* found = nodeLabelled(node.children, label)) return found;
  }
  return nullptr;
}

bool isLeafLabel(const std::vector<MenuNode>& nodes, const std::wstring& label) {
  for (const MenuNode& node : nodes) {
    for (const auto& leaf : node.leaves) {
      if (leaf.second == label) return true;
    }
    if (isLeafLabel(node.children, label)) return true;
  }
  return false;
}

}  // namespace

std::vector<MenuNode> commandsMenu() {
  std::vector<MenuNode> menu;
  for (const NodeDef& def : menuDefinition()) {
    MenuNode node;
    node.command = def.command;
    node.label = loadString(def.label);
    for (const LeafDef& leaf : def.leaves)
      node.leaves.emplace_back(leaf.command, loadString(leaf.label));
    menu.push_back(std::move(node));
  }
  return menu;
}

bool findCommandByLabel(const std::wstring& label, const std::vector<MenuNode>& nodes,
                        std::pair<std::wstring, std::wstring>& found) {
  for (const MenuNode& node : nodes) {
    if (!node.leaves.empty()) {
      for (const auto& leaf : node.leaves) {
        if (leaf.second == label) {
          found = leaf;
          return true;
        }
      }
      if (findCommandByLabel(label, node.children, found)) return true;
    } else if (node.label == label) {
      found = {node.command, node.label};
      return true;
    }
  }
  return false;
}

CommandsPalette::CommandsPalette() : platform::PaletteModel(kPaletteName), menu_(commandsMenu()) {}

std::vector<std::wstring> CommandsPalette::actions() const {
  return {kListAction, kRunAction};
}

std::vector<std::pair<int, std::wstring>> CommandsPalette::treeLines() const {
  std::vector<std::pair<int, std::wstring>> lines;
  addLines(menu_, 0, lines);
  return lines;
}

void CommandsPalette::runAction(const std::wstring& action) {
  ResourceScope scope;
  platform::Editor& editor = port().editor();
  if (action == kListAction) {
    for (const auto& [depth, label] : treeLines()) {
      editor.print(std::wstring(static_cast<std::size_t>(depth) * 2, L' ') + label + L"\n");
    }
  } else if (action == kRunAction) {
    const platform::StringReply label = editor.getString(L"Label: ", true);
    if (label.status != platform::PromptStatus::Normal) return;
    onDoubleClick(label.text);
  }
}

void CommandsPalette::onDoubleClick(const std::wstring& label) {
  // Whatever runs ends first, even when the click was on no command.
  port().editor().postCommand(L"CANCELCMD");
  const MenuNode* node = nodeLabelled(menu_, label);
  const bool leaf = node == nullptr ? isLeafLabel(menu_, label) : !hasItems(*node);
  if (!leaf) return;
  std::pair<std::wstring, std::wstring> found;
  if (findCommandByLabel(label, menu_, found)) {
    port().documents().sendStringToExecute(found.first + L"\n");
  }
}

void commandCtl() {
  ResourceScope scope;
  std::unique_ptr<CommandsPalette>& palette = commandsPalette();
  if (!palette) palette = std::make_unique<CommandsPalette>();
  // A host without palettes shows nothing; the model waits for one that has.
  platform::ignoreStatus(port().ui().showPalette(*palette));
}

void commandAbout() {
  ResourceScope scope;
  ODTextBox box;
  box.setCaption(loadString(kDlgAboutCaption));
  box.setText(loadString(kDlgAboutText));
  box.setSize(500, 400);
  port().ui().runModal(box);
}

void destroyCommandsPalette() {
  std::unique_ptr<CommandsPalette>& palette = commandsPalette();
  if (!palette) return;
  if (hasPort()) port().ui().destroyPalette(*palette);
  palette.reset();
}

}  // namespace zarvel
