// Message boxes of the command frame.
#include "oddata/CommandFrame.h"

namespace zarvel {

int messageBox(Message<> text, Message<> caption, int flags) {
  return port().ui().messageBox(loadString(text), loadString(caption), flags);
}

}  // namespace zarvel
