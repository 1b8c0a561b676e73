// -BLOCK, ATTDEF and INSERT: defining blocks with attribute definitions and
// placing references to them.
#include <cmath>
#include <cstdint>

#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/Ocs.h"
#include "host/geometry/Transform.h"

namespace host {
namespace {

using platform::PromptStatus;

constexpr double kPi = 3.14159265358979323846;
// Flags of an attribute definition.
constexpr std::int16_t kAttributeConstant = 2;
constexpr std::int16_t kAttributePreset = 8;

std::wstring askName(Session& s, const std::wstring& prompt) {
  const platform::StringReply reply = s.prompter().getString(prompt, true);
  return reply.status == PromptStatus::Normal ? reply.text : std::wstring();
}

void blockCommand(Session& s) {
  Database& db = s.db();
  const std::wstring name = askName(s, L"Enter block name: ");
  if (name.empty()) return;
  if (!isValidSymbolName(name) || name.front() == L'*') {
    s.print(L"Invalid block name \"" + name + L"\".\n");
    return;
  }
  if (!db.findBlock(name).isNull()) {
    s.print(L"Block \"" + name + L"\" already exists.\n");
    return;
  }
  const Answer<Point3d> base = s.prompter().getPoint(L"Specify insertion base point: ");
  if (!base.isNormal()) return;
  const auto ids = s.selectForCommand(true);
  if (!ids || ids->empty()) return;
  const ObjectId block = db.addBlock(name, base.value);
  for (ObjectId id : *ids) db.moveToBlock(id, block);
  s.print(std::to_wstring(ids->size()) + L" object(s) make up block \"" + name + L"\".\n");
}

void attdefCommand(Session& s) {
  Prompter& p = s.prompter();
  const std::wstring tag = askName(s, L"Enter attribute tag name: ");
  if (tag.empty()) return;
  if (tag.find(L' ') != std::wstring::npos) {
    s.print(L"An attribute tag has no blanks.\n");
    return;
  }
  const platform::StringReply prompt = p.getString(L"Enter attribute prompt: ", true);
  if (prompt.status == PromptStatus::Cancel) return;
  const platform::StringReply value = p.getString(L"Enter default attribute value: ", true);
  if (value.status == PromptStatus::Cancel) return;
  const Answer<Point3d> at = p.getPoint(L"Specify start point: ");
  if (!at.isNormal()) return;
  const double lastHeight = s.db().header().textSize;
  const Answer<double> height =
      p.getReal(L"Specify text height <" + formatReal(s.db(), lastHeight) + L">: ", lastHeight);
  if (!height.isNormal() || !(height.value > 0.0)) return;
  auto def = std::make_unique<AttributeDefinitionEntity>();
  def->tag = tag;
  def->prompt = prompt.text;
  def->data.text = value.text;
  def->data.position = at.value;
  def->data.alignmentPoint = at.value;
  def->data.height = height.value;
  Database& db = s.db();
  db.addEntity(std::move(def), db.header().currentSpace);
}

// The world position of a point of the block's definition in a reference.
Point3d placed(const BlockReferenceEntity& ref, const Point3d& base, const Point3d& p) {
  const double x = (p.x - base.x) * ref.scale.x;
  const double y = (p.y - base.y) * ref.scale.y;
  const double z = (p.z - base.z) * ref.scale.z;
  const double c = std::cos(ref.rotation);
  const double sn = std::sin(ref.rotation);
  const Point3d local{ref.position.x + x * c - y * sn, ref.position.y + x * sn + y * c,
                      ref.position.z + z};
  return geometry::Ocs(ref.normal).toWorld(local);
}

void insertCommand(Session& s) {
  Prompter& p = s.prompter();
  Database& db = s.db();
  const std::wstring name = askName(s, L"Enter block name: ");
  if (name.empty()) return;
  const ObjectId blockId = db.findBlock(name);
  const BlockRecord* block = db.get<BlockRecord>(blockId);
  if (block == nullptr || blockId == db.modelSpace() || blockId == db.paperSpace()) {
    s.print(L"Block \"" + name + L"\" not found.\n");
    return;
  }
  const Answer<Point3d> at = p.getPoint(L"Specify insertion point: ");
  if (!at.isNormal()) return;
  const Answer<double> scale = p.getReal(L"Specify scale factor <1>: ", 1.0);
  if (!scale.isNormal() || scale.value == 0.0) return;
  const Answer<double> angle = p.getReal(L"Specify rotation angle <0>: ", 0.0);
  if (!angle.isNormal()) return;
  auto ref = std::make_unique<BlockReferenceEntity>();
  ref->block = blockId;
  ref->position = at.value;
  ref->scale = {scale.value, scale.value, scale.value};
  ref->rotation = angle.value * kPi / 180.0;
  // One attribute for each definition that is not constant: a constant one
  // shows its text from the block itself, on every reference alike. A preset
  // one takes its default without asking.
  std::vector<std::unique_ptr<AttributeEntity>> attributes;
  for (ObjectId id : db.blockEntities(blockId)) {
    const Entity* e = db.entity(id);
    if (e == nullptr || e->kind() != EntityKind::AttributeDefinition) continue;
    const auto& d = static_cast<const AttributeDefinitionEntity&>(*e);
    if ((d.flags & kAttributeConstant) != 0) continue;
    std::wstring value = d.data.text;
    if ((d.flags & kAttributePreset) == 0) {
      const std::wstring label = d.prompt.empty() ? d.tag : d.prompt;
      const platform::StringReply answer =
          p.getString(L"Enter " + label + L" <" + d.data.text + L">: ", true);
      if (answer.status == PromptStatus::Cancel) return;
      if (!answer.text.empty()) value = answer.text;
    }
    auto attribute = std::make_unique<AttributeEntity>();
    attribute->data = d.data;
    attribute->data.text = value;
    attribute->data.position = placed(*ref, block->basePoint, d.data.position);
    attribute->data.alignmentPoint = placed(*ref, block->basePoint, d.data.alignmentPoint);
    attribute->data.height = d.data.height * std::fabs(scale.value);
    attribute->data.rotation = d.data.rotation + ref->rotation;
    attribute->tag = d.tag;
    attribute->flags = d.flags;
    attribute->layer = d.layer;
    attributes.push_back(std::move(attribute));
  }
  if (!attributes.empty()) ref->seqendHandle = db.takeHandle();
  const ObjectId refId = db.addEntity(std::move(ref), db.header().currentSpace);
  for (auto& attribute : attributes) {
    const ObjectId a = db.addEntity(std::move(attribute), refId);
    db.modify<BlockReferenceEntity>(refId)->attributes.push_back(a);
  }
}

}  // namespace

void registerBlockCommands(Session& session) {
  session.addHostCommand({L"-BLOCK", blockCommand, true, L"defines a block from entities"});
  session.addHostCommand({L"ATTDEF", attdefCommand, true, L"defines an attribute"});
  session.addHostCommand({L"INSERT", insertCommand, true, L"inserts a block reference"});
}

}  // namespace host
