// The scripted test host.
#include "TestHost.h"

#include <sstream>
#include <stdexcept>

#include "platform/Text.h"

namespace testing_support {
namespace {

// The next scripted answer, or the fallback once the script has run out.
template <typename T>
T takeFront(std::deque<T>& answers, T fallback) {
  if (answers.empty()) return fallback;
  T answer = std::move(answers.front());
  answers.pop_front();
  return answer;
}

}  // namespace

ObjectId TestHost::addLine(ObjectId layer) {
  auto line = std::make_unique<host::LineEntity>();
  line->layer = layer;
  line->end = {1.0, 0.0, 0.0};
  return db.addEntity(std::move(line), db.modelSpace());
}

ObjectId TestHost::addOnLayer(const std::wstring& layerName, bool host::Layer::*state) {
  ObjectId layer = db.findLayer(layerName);
  if (layer.isNull()) layer = db.addLayer(layerName);
  const ObjectId line = addLine(layer);
  if (state != nullptr) db.modify<host::Layer>(layer)->*state = true;
  return line;
}

ObjectId TestHost::defineTable(const std::wstring& name, int columns) {
  platform::OdTableDef def;
  for (int i = 0; i < columns; ++i) {
    def.columns.push_back(
        {L"C" + std::to_wstring(i), platform::OdType::Integer, L"", platform::OdValue(0)});
  }
  return db.createOdTable(name, def);
}

void TestHost::attach(ObjectId entity, const std::wstring& records) {
  std::wistringstream in(records);
  for (std::wstring text; in >> text;) {
    const std::size_t digits = text.find_last_not_of(L"0123456789") + 1;
    auto table = project_.odContainer().getTable(text.substr(0, digits));
    platform::OdRecord record;
    if (table) table->initRecord(record);
    if (record.count() > 0) record.value(0) = platform::wtoi(text.substr(digits));
    // A fixture that cannot attach is a broken test, not a case to test.
    if (!table || table->addRecord(record, entity) != platform::Status::Ok) {
      throw std::logic_error("the fixture could not attach " + platform::toUtf8(text));
    }
  }
}

std::wstring TestHost::recordsOn(ObjectId entity) {
  std::wstring text;
  auto it = project_.odContainer().newIterator();
  // An entity that won't open has no records to show.
  if (it->init(entity, platform::OpenMode::Read, true) != platform::Status::Ok) return text;
  for (platform::OdRecord r; !it->isDone(); it->next()) {
    if (it->getRecord(r) != platform::Status::Ok) throw std::logic_error("unreadable record");
    text += (text.empty() ? L"" : L" ") + r.tableName();
    if (r.count() > 0 && r.value(0).asInt() != 0) text += std::to_wstring(r.value(0).asInt());
  }
  return text;
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
  return takeFront(selections, {platform::PromptStatus::None, {}});
}

void TestHost::setPickFirst(const std::vector<ObjectId>& ids) {
  pickFirst.clear();
  for (ObjectId id : ids) {
    const bool seen = std::find(pickFirst.begin(), pickFirst.end(), id) != pickFirst.end();
    if (!seen) pickFirst.push_back(id);
  }
}

PointReply TestHost::getPoint(const std::wstring& prompt) {
  prompts.push_back(prompt);
  return takeFront(points, {platform::PromptStatus::Cancel, {}});
}

EntityReply TestHost::getEntity(const std::wstring& prompt) {
  prompts.push_back(prompt);
  return takeFront(entities, {platform::PromptStatus::Cancel, {}, {}, false});
}

platform::StringReply TestHost::getString(const std::wstring& prompt, bool) {
  prompts.push_back(prompt);
  return takeFront(strings, {platform::PromptStatus::Cancel, {}});
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

int TestHost::runModal(platform::DialogModel& dialog) {
  ++dialogsShown;
  dialog.onInit();
  if (!dialogAnswer) return platform::kIdCancel;
  const int button = dialogAnswer(dialog);
  return dialog.onButton(button) ? button : platform::kIdCancel;
}

int TestHost::messageBox(const std::wstring&, const std::wstring&, int) {
  return takeFront(messageBoxAnswers, platform::kIdNo);
}

platform::Status TestHost::addCommand(const std::wstring& group, const std::wstring& globalName,
                                      const std::wstring&, int flags,
                                      platform::CommandFunction handler, void*) {
  commands.push_back({group, globalName, flags, handler});
  return platform::Status::Ok;
}

platform::Status TestHost::removeCommand(const std::wstring& group, const std::wstring& name) {
  return removeCommands([&](const Registered& c) { return c.group == group && c.name == name; });
}

platform::Status TestHost::removeGroup(const std::wstring& group) {
  return removeCommands([&](const Registered& c) { return c.group == group; });
}

}  // namespace testing_support
