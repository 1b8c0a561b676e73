// The command table: every command the user can start by name, in the order
// of registration.
#include "attributes/AttributeCommands.h"
#include "convert/PolylineConversion.h"
#include "frame/BreakCommand.h"
#include "frame/CommandsPalette.h"
#include "frame/CzarvelApp.h"
#include "frame/TableCommand.h"
#include "oddata/CommandFrame.h"
#include "records/AttachData.h"
#include "records/CopyCommands.h"
#include "records/DetachCommands.h"
#include "report/Explication.h"
#include "search/PointSelection.h"
#include "search/PresenceSearch.h"
#include "search/SpecificSearch.h"
#include "search/ValueSearch.h"
#include "tables/LoadDefinition.h"
#include "tables/RemoveUnused.h"
#include "tables/Translate.h"
#include "tables/UsageStats.h"
#include "values/AddValues.h"
#include "values/CreateIDs.h"
#include "values/ReplaceValues.h"
#include "values/SetCoordinates.h"
#include "values/SetFromText.h"
#include "values/SetProperties.h"

namespace zarvel {
namespace {

// Transparent, sees the pick-first set, redraws.
constexpr int kFlags = platform::CommandFlags::kTransparent |
                       platform::CommandFlags::kUsePickSet | platform::CommandFlags::kRedraw;

}  // namespace

const std::vector<CommandEntry>& commandTable() {
  static const std::vector<CommandEntry> table = {
      {L"ZARVEL_PSEL", kFlags, commandPsel},
      {L"ZARVEL_CTL", kFlags, commandCtl},
      // Modal on purpose: it must not run inside another command.
      {L"ZARVEL_LOAD_DEFINITION", platform::CommandFlags::kModal, commandLoadDefinition},
      {L"ZARVEL_HAS_DUPLICATE_OD", kFlags, commandHasDuplicateOd},
      {L"ZARVEL_HAS_OD", kFlags, commandHasOd},
      {L"ZARVEL_HAS_MULTIPLE_OD", kFlags, commandHasMultipleOd},
      {L"ZARVEL_HAS_SPECIFIC_OD", kFlags, commandHasSpecificOd},
      {L"ZARVEL_REMOVE_DUPLICATE_OD", kFlags, commandRemoveDuplicateOd},
      {L"ZARVEL_HAS_NO_OD", kFlags, commandHasNoOd},
      {L"ZARVEL_HAS_SPECIFIC_VALUES", kFlags, commandHasSpecificValues},
      {L"ZARVEL_RM", kFlags, commandRm},
      {L"ZARVEL_RM_ALL", kFlags, commandRmAll},
      {L"ZARVEL_COPY_OD", kFlags, commandCopyOd},
      {L"ZARVEL_COPY_VALUE", kFlags, commandCopyValue},
      {L"ZARVEL_COPY_OD_VALUE", kFlags, commandCopyOdValue},
      {L"ZARVEL_COPY_ALL", kFlags, commandCopyAll},
      {L"ZARVEL_COPY_ALL_VALUE", kFlags, commandCopyAllValue},
      {L"ZARVEL_ADEATTACHDATA", kFlags, commandAdeAttachData},
      {L"ZARVEL_SETTEXT", kFlags, commandSetText},
      {L"ZARVEL_SETXYZ", kFlags, commandSetXyz},
      {L"ZARVEL_SETID", kFlags, commandSetId},
      {L"ZARVEL_SETPROP", kFlags, commandSetProp},
      {L"ZARVEL_REPLACE", kFlags, commandReplace},
      {L"ZARVEL_2POLY", kFlags, command2Poly},
      {L"ZARVEL_ADDVAL", kFlags, commandAddVal},
      {L"ZARVEL_ADDVAL_OD2OD", kFlags, commandAddValOd2Od},
      {L"ZARVEL_23DPOLY", kFlags, command23DPoly},
      {L"ZARVEL_RMUNUSED", kFlags, commandRmUnused},
      {L"ZARVEL_STAT", kFlags, commandStat},
      {L"ZARVEL_HAS_NO_SPECIFIC_OD", kFlags, commandHasNoSpecificOd},
      {L"ZARVEL_TABLE", kFlags, commandEditTable},
      {L"ZARVEL_BREAK", kFlags, commandBreak},
      {L"ZARVEL_ABOUT", kFlags, commandAbout},
      {L"ZARVEL_EXPL", kFlags, commandExpl},
      {L"ZARVEL_TRANSLATE", kFlags, commandTranslate},
      {L"ZARVEL_LOAD_ATTRS", kFlags, commandLoadAttrs},
      {L"ZARVEL_STORE_ATTRS", kFlags, commandStoreAttrs},
      {L"ZARVEL_ATTR_TEMPLATE", kFlags, commandAttrTemplate},
  };
  return table;
}

}  // namespace zarvel
