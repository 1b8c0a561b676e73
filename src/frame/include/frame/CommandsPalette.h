// The commands palette: the tree of the module's commands under their
// headings, from which a user runs a command by its label, and the About box.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Palette.h"

namespace zarvel {

struct MenuNode {
  // What a node without leaves runs; empty for a heading.
  std::wstring command;
  // (command, label) of the commands under this heading, in display order.
  std::vector<std::pair<std::wstring, std::wstring>> leaves;
  std::wstring label;
  std::vector<MenuNode> children;
};

// The tree, headings in display order.
std::vector<MenuNode> commandsMenu();

// The first (command, label) whose label is exactly the one given: leaves of a
// node with leaves (then its children), or the node itself without leaves.
bool findCommandByLabel(const std::wstring& label, const std::vector<MenuNode>& nodes,
                        std::pair<std::wstring, std::wstring>& found);

// The palette's content, offered on a command line as two actions: List
// prints the tree, Run does what a double-click on a label does.
class CommandsPalette : public platform::PaletteModel {
 public:
  CommandsPalette();

  std::vector<std::wstring> actions() const override;
  void runAction(const std::wstring& action) override;

  // A double-click on the tree item of that label (empty: on no item).
  void onDoubleClick(const std::wstring& label);
  // The lines of the tree as it opens, all headings expanded: each with its
  // depth.
  std::vector<std::pair<int, std::wstring>> treeLines() const;

 private:
  std::vector<MenuNode> menu_;
};

void commandCtl();
void commandAbout();
// At unload: the palette goes before the module's code does.
void destroyCommandsPalette();

}  // namespace zarvel
