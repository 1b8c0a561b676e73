// The translation's dialog: each file button asks for a file and shows it.
#include "tables/ODTranslate.h"

#include "oddata/Port.h"
#include "resources/StringTable.h"

namespace zarvel {
namespace {

using platform::DialogControl;

DialogControl fileButton(int id, Message<> group) {
  DialogControl button = DialogControl::button(id, loadString(kDlgChooseFile), false);
  // The group box's label names the button where its caption can't.
  button.name = loadString(group);
  return button;
}

}  // namespace

ODTranslate::ODTranslate() : platform::DialogModel(loadString(kDlgTranslateTitle)) {
  addControl(fileButton(kIdTablesFile, kDlgOdNameGroup));
  addControl(fileButton(kIdFieldsFile, kDlgFieldGroup));
  addControl(fileButton(kIdValuesFile, kDlgValuesGroup));
  addControl(DialogControl::button(kIdNameToAlias, loadString(kDlgNameToAlias), true, true));
  addControl(DialogControl::button(kIdAliasToName, loadString(kDlgAliasToName), true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

bool ODTranslate::onButton(int buttonId) {
  switch (buttonId) {
    case kIdTablesFile:
    case kIdFieldsFile:
    case kIdValuesFile: {
      platform::FileDialogRequest request;
      request.filter = loadString(kMsgTextFileFilter);
      const std::wstring path = port().ui().fileDialog(request);
      if (!path.empty()) {
        paths_[buttonId - kIdTablesFile] = path;
        control(buttonId).label = path;
      }
      return false;
    }
    case kIdNameToAlias:
      direction_ = 0;
      return true;
    case kIdAliasToName:
      direction_ = 1;
      return true;
    default:
      return platform::DialogModel::onButton(buttonId);
  }
}

}  // namespace zarvel
