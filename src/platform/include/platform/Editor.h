// The editor of the current document: selections, prompts, printing and
// system variables.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Geometry.h"
#include "platform/ObjectId.h"
#include "platform/Status.h"

namespace platform {

struct SelectionReply {
  PromptStatus status = PromptStatus::Normal;
  std::vector<ObjectId> ids;
};

struct StringReply {
  PromptStatus status = PromptStatus::Normal;
  std::wstring text;
};

struct EntityReply {
  PromptStatus status = PromptStatus::Normal;
  ObjectId id;
  Point3d pickPoint;
  bool picked = false;  // chosen by a point, which pickPoint holds
};

struct PointReply {
  PromptStatus status = PromptStatus::Normal;
  Point3d point;
};

struct IntReply {
  PromptStatus status = PromptStatus::Normal;
  int value = 0;
};

// An argument of a host command started by the module: a text (the command's
// name first, or an answer), an entity, a point.
using CommandArgument = std::variant<std::wstring, ObjectId, Point3d>;

// A system variable's value: a 16-bit integer, a real or a text.
using SysVarValue = std::variant<short, double, std::wstring>;

// Told of what happens in the editor. Every event has an empty default, so a
// reactor overrides only what it watches.
class EditorReactor {
 public:
  virtual ~EditorReactor() = default;
  // The pick-first set changed.
  virtual void pickfirstModified() {}
  // A command of the host ended, was cancelled or failed; the name is the
  // command's global name.
  virtual void commandEnded(const std::wstring& /*name*/) {}
  virtual void commandCancelled(const std::wstring& /*name*/) {}
  virtual void commandFailed(const std::wstring& /*name*/) {}
};

class Editor {
 public:
  virtual ~Editor() = default;

  // The pick-first set; empty when nothing is selected.
  virtual std::vector<ObjectId> impliedSelection() = 0;
  // Asks for objects with the host's own prompt. An empty answer is a normal
  // reply with no ids; Esc is PromptStatus::Cancel.
  virtual SelectionReply selectObjects() = 0;
  // Replaces the pick-first set; an empty vector clears it. A set holds an id
  // given twice once, at its first place.
  virtual void setPickFirst(const std::vector<ObjectId>& ids) = 0;

  // Enter gives PromptStatus::Normal with an empty text.
  virtual StringReply getString(const std::wstring& prompt, bool allowSpaces) = 0;
  virtual EntityReply getEntity(const std::wstring& prompt) = 0;
  // An empty prompt asks in the host's own words.
  virtual PointReply getPoint(const std::wstring& prompt) = 0;
  virtual IntReply getInt(const std::wstring& prompt) = 0;

  // Prints to the command line as it stands; the text carries its own line feeds.
  virtual void print(const std::wstring& text) = 0;

  virtual std::optional<SysVarValue> getVar(const std::wstring& name) const = 0;
  virtual Status setVar(const std::wstring& name, const SysVarValue& value) = 0;

  // Runs a host command: the first argument names it, the others answer its
  // first prompts; the user answers the rest. Normal when it ended, Cancel when
  // it was cancelled, Error when it failed or there is no such command.
  virtual PromptStatus command(const std::vector<CommandArgument>& /*arguments*/) {
    return PromptStatus::Error;
  }

  // Posts a command to the command line as if typed; "CANCELCMD" ends the
  // command that is running, as Esc at its prompt would. A host without a
  // command line ignores it.
  virtual void postCommand(const std::wstring& /*command*/) {}

  // Reactors are the caller's; a reactor stays until removed.
  virtual void addReactor(EditorReactor* /*reactor*/) {}
  virtual void removeReactor(EditorReactor* /*reactor*/) {}

  // The status bar's progress meter.
  virtual void startProgress(const std::wstring& /*label*/, int /*min*/, int /*max*/) {}
  // A negative position moves the meter one step.
  virtual void setProgress(int /*position*/) {}
  virtual void restoreStatusBar() {}
};

}  // namespace platform
