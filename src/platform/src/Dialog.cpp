// The shared behaviour of dialog models and their controls.
#include "platform/Dialog.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <utility>

#include "platform/Text.h"

namespace platform {

void DialogControl::setItems(std::vector<std::wstring> newItems) {
  if (sorted) {
    // Lower-case each item once rather than at every comparison.
    std::vector<std::pair<std::wstring, std::wstring>> keyed;
    keyed.reserve(newItems.size());
    for (auto& item : newItems) keyed.emplace_back(lowerCase(item), std::move(item));
    std::sort(keyed.begin(), keyed.end());
    for (size_t i = 0; i < keyed.size(); ++i) newItems[i] = std::move(keyed[i].second);
  }
  items = std::move(newItems);
  selected.assign(items.size(), false);
  current = -1;
}

int DialogControl::selectedCount() const {
  return static_cast<int>(std::count(selected.begin(), selected.end(), true));
}

DialogControl& DialogModel::control(int id) {
  return const_cast<DialogControl&>(static_cast<const DialogModel&>(*this).control(id));
}

const DialogControl& DialogModel::control(int id) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [id](const DialogControl& c) { return c.id == id; });
  assert(found != controls_.end() && "no control of that id in the dialog");
  if (found == controls_.end()) std::abort();  // never hand out a dangling control
  return *found;
}

bool DialogModel::onButton(int buttonId) {
  return control(buttonId).closes;
}

DialogControl& DialogModel::addControl(DialogControl control) {
  assert(std::none_of(controls_.begin(), controls_.end(),
                      [&control](const DialogControl& c) { return c.id == control.id; }) &&
         "two controls of a dialog share an id");
  controls_.push_back(std::move(control));
  return controls_.back();
}

}  // namespace platform
