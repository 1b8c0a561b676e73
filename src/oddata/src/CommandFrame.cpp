// Message boxes of the command frame.
#include "oddata/CommandFrame.h"

namespace zarvel {

int messageBox(int textId, int captionId, int flags) {
  return port().ui().messageBox(loadString(textId), loadString(captionId), flags);
}

}  // namespace zarvel
