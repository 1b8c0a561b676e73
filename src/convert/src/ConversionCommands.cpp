// The body both conversion commands share: the precision, the entities, and
// each converted source erased once its polyline stands.
#include <optional>
#include <utility>
#include <vector>

#include "convert/PolylineConversion.h"
#include "oddata/CommandFrame.h"
#include "oddata/Selection.h"

namespace zarvel {
namespace {

using Conversion = ObjectId (*)(ObjectId, int);

// The precision typed, Enter for the default; nothing when cancelled.
std::optional<int> askPrecision(Message<> prompt, int defaultPrecision) {
  const platform::IntReply reply = port().editor().getInt(loadString(prompt));
  if (reply.status == platform::PromptStatus::None) return defaultPrecision;
  if (reply.status != platform::PromptStatus::Normal) return std::nullopt;
  return reply.value;
}

void runConversion(Message<> prompt, int defaultPrecision, Conversion convert) {
  ResourceScope scope;
  std::vector<ObjectId> implied = impliedSelection();
  const std::optional<int> precision = askPrecision(prompt, defaultPrecision);
  if (!precision) return;
  // Only the upper bound is held: a precision below the prompt's range goes on.
  if (*precision > 99) {
    printMessage(kMsgInvalidPrecision);
    return;
  }
  const SelectionResult selection = commandScope(std::move(implied));
  if (!selection.ok || selection.ids.empty()) return;
  int converted = 0;
  for (ObjectId id : selection.ids) {
    if (convert(id, *precision).isNull()) continue;
    ++converted;
    // The source opened for the conversion a moment ago; should it still
    // refuse, it stands beside its polyline and nothing is lost.
    platform::ignoreStatus(port().drawing().eraseEntity(id));
  }
  printMessage(kMsgCompletedOutOf, converted, static_cast<int>(selection.ids.size()));
}

}  // namespace

void command2Poly() {
  runConversion(kMsgPromptPrecision, 10, convertTo2dPolyline);
}

void command23DPoly() {
  runConversion(kMsgPromptConversionPrecision, 0, convertTo3dPolyline);
}

}  // namespace zarvel
