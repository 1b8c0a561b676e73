// Palettes: named, dockable panels that stay open between commands. Like a
// dialog, a palette's content is a model of the module; a front end renders
// it, a window docking it or a command line offering its actions by name.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace platform {

class PaletteModel {
 public:
  explicit PaletteModel(std::wstring name) : name_(std::move(name)) {}
  virtual ~PaletteModel() = default;
  PaletteModel(const PaletteModel&) = delete;
  PaletteModel& operator=(const PaletteModel&) = delete;

  const std::wstring& name() const { return name_; }
  // What a user can do in the palette, by name, in the order a front end
  // without windows offers it.
  virtual std::vector<std::wstring> actions() const = 0;
  // Does one of the actions; what it needs besides, it asks at the editor's
  // prompts and tells on the command line.
  virtual void runAction(const std::wstring& action) = 0;

 private:
  std::wstring name_;
};

}  // namespace platform
