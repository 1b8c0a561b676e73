// The report box: its text rule and the layout of its one edit.
#include "tables/ODTextBox.h"

namespace zarvel {

ODTextBox::ODTextBox() : platform::DialogModel(L"") {
  platform::DialogControl edit;
  edit.id = kIdText;
  edit.kind = platform::ControlKind::Edit;
  edit.readOnly = true;
  addControl(std::move(edit));
}

void ODTextBox::setText(const std::wstring& text) {
  // Each piece runs from one LF, which it keeps, to the next, and takes a CR
  // behind it; the next piece's LF completes the CR LF.
  std::wstring lines;
  std::size_t start = 0;
  for (std::size_t end = text.find(L'\n'); end != std::wstring::npos;
       start = end, end = text.find(L'\n', end + 1)) {
    lines.append(text, start, end - start);
    lines += L'\r';
  }
  control(kIdText).text = std::move(lines);
}

void ODTextBox::onSize(platform::DialogSize size) {
  platform::DialogModel::onSize(size);
  // One unit of margin on the left and top, none on the right and bottom.
  control(kIdText).rect = platform::DialogRect{1, 1, size.width - 1, size.height - 1};
}

}  // namespace zarvel
