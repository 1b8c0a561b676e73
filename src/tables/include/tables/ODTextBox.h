// The read-only text box that shows a report: a caption, and a text of lines
// in one multi-line edit that fills the box.
#pragma once

#include <string>

#include "platform/Dialog.h"

namespace zarvel {

class ODTextBox : public platform::DialogModel {
 public:
  static constexpr int kIdText = 130;

  ODTextBox();

  void setCaption(const std::wstring& caption) { setTitle(caption); }
  // Keeps each line of the text up to its LF, ended by CR LF as the edit box
  // wants it; the line ending the text keeps only its CR, and whatever follows
  // the last LF is dropped, so a caller ends its text in an LF.
  void setText(const std::wstring& text);
  const std::wstring& text() const { return control(kIdText).text; }
  // The client size the box opens at.
  void setSize(int width, int height) { onSize({width, height}); }

  // Keeps the new size and lets the edit follow it.
  void onSize(platform::DialogSize size) override;
};

}  // namespace zarvel
