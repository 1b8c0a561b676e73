// The scripted test host.
#include "TestHost.h"

#include <algorithm>
#include <stdexcept>

namespace testing_support {

ObjectId TestHost::addLine(ObjectId layer) {
  auto line = std::make_unique<host::LineEntity>();
  line->layer = layer;
  line->end = {1.0, 0.0, 0.0};
  return db.addEntity(std::move(line), db.modelSpace());
}

ObjectId TestHost::addOnLayer(const std::wstring& layerName) {
  ObjectId layer = db.findLayer(layerName);
  if (layer.isNull()) layer = db.addLayer(layerName);
  return addLine(layer);
}

ObjectId TestHost::defineTable(const std::wstring& name, int columns) {
  platform::OdTableDef def;
  for (int i = 0; i < columns; ++i) {
    def.columns.push_back(
        {L"C" + std::to_wstring(i), platform::OdType::Integer, L"", platform::OdValue(0)});
  }
  return db.createOdTable(name, def);
}

void TestHost::attach(ObjectId entity, const std::wstring& table, int value) {
  auto t = project_.odContainer().getTable(table);
  platform::OdRecord record;
  t->initRecord(record);
  if (record.count() > 0) record.value(0) = value;
  // A fixture that cannot attach is a broken test, not a case to test.
  if (t->addRecord(record, entity) != platform::Status::Ok) {
    throw std::logic_error("the fixture could not attach a record");
  }
}

std::vector<std::wstring> TestHost::tablesOn(ObjectId entity) {
  std::vector<std::wstring> names;
  auto it = project_.odContainer().newIterator();
  // An entity that won't open has no tables to list.
  if (it->init(entity, platform::OpenMode::Read, true) != platform::Status::Ok) return names;
  for (; !it->isDone(); it->next()) names.push_back(it->recordTableName());
  return names;
}

void TestHost::runCommand(const std::wstring& name) {
  for (const auto& c : commands) {
    if (c.name == name) {
      c.handler();
      return;
    }
  }
  throw std::runtime_error("no such command");
}

platform::SelectionReply TestHost::selectObjects() {
  ++selectionPrompts;
  if (selections.empty()) return {platform::PromptStatus::None, {}};
  platform::SelectionReply reply = selections.front();
  selections.pop_front();
  return reply;
}

platform::StringReply TestHost::getString(const std::wstring& prompt, bool) {
  prompts.push_back(prompt);
  if (strings.empty()) return {platform::PromptStatus::Cancel, {}};
  platform::StringReply reply = strings.front();
  strings.pop_front();
  return reply;
}

platform::EntityReply TestHost::getEntity(const std::wstring& prompt) {
  prompts.push_back(prompt);
  return {platform::PromptStatus::Cancel, {}, {}};
}

platform::PointReply TestHost::getPoint(const std::wstring& prompt) {
  prompts.push_back(prompt);
  return {platform::PromptStatus::Cancel, {}};
}

platform::IntReply TestHost::getInt(const std::wstring& prompt) {
  prompts.push_back(prompt);
  return {platform::PromptStatus::Cancel, 0};
}

std::optional<platform::SysVarValue> TestHost::getVar(const std::wstring& name) const {
  auto it = vars.find(name);
  if (it == vars.end()) return std::nullopt;
  return it->second;
}

platform::Status TestHost::setVar(const std::wstring& name, const platform::SysVarValue& value) {
  vars[name] = value;
  return platform::Status::Ok;
}

platform::Status TestHost::lockDocument(platform::LockMode) {
  maxLockDepth = std::max(maxLockDepth, ++lockDepth);
  return platform::Status::Ok;
}

platform::Status TestHost::unlockDocument() {
  --lockDepth;
  return platform::Status::Ok;
}

int TestHost::runModal(platform::DialogModel& dialog) {
  ++dialogsShown;
  dialog.onInit();
  if (!dialogAnswer) return platform::kIdCancel;
  const int button = dialogAnswer(dialog);
  return dialog.onButton(button) ? button : platform::kIdCancel;
}

int TestHost::messageBox(const std::wstring&, const std::wstring&, int) {
  ++messageBoxes;
  if (messageBoxAnswers.empty()) return platform::kIdNo;
  const int answer = messageBoxAnswers.front();
  messageBoxAnswers.pop_front();
  return answer;
}

platform::Status TestHost::addCommand(const std::wstring& group, const std::wstring& globalName,
                                      const std::wstring&, int flags,
                                      platform::CommandFunction handler, void*) {
  commands.push_back({group, globalName, flags, handler});
  return platform::Status::Ok;
}

platform::Status TestHost::removeCommand(const std::wstring& group, const std::wstring& name) {
  auto it = std::remove_if(commands.begin(), commands.end(), [&](const Registered& c) {
    return c.group == group && c.name == name;
  });
  commands.erase(it, commands.end());
  return platform::Status::Ok;
}

platform::Status TestHost::removeGroup(const std::wstring& group) {
  auto it = std::remove_if(commands.begin(), commands.end(),
                           [&](const Registered& c) { return c.group == group; });
  commands.erase(it, commands.end());
  return platform::Status::Ok;
}

}  // namespace testing_support
