// The watcher of a host command and its snapshot of model space.
#include "frame/HostCommandWatch.h"

#include <cwctype>

#include "oddata/Port.h"

namespace zarvel {

std::wstring watchedCommandName(const std::wstring& name) {
  std::size_t start = 0;
  while (start < name.size() && (name[start] == L'_' || name[start] == L'.')) ++start;
  std::wstring lower = name.substr(start);
  for (wchar_t& c : lower) c = static_cast<wchar_t>(std::towlower(c));
  return lower;
}

namespace detail {

command::~command() {
  // The port is gone once the module unloaded; unloading stops the watcher.
  if (active_ && hasPort()) port().editor().removeReactor(this);
}

void command::start(const std::wstring& name, Callback callback, std::int64_t value) {
  name_ = watchedCommandName(name);
  callback_ = callback;
  value_ = value;
  // Ids alone, no entity opened: what is new after the host command is what
  // this list lacks.
  snapshot_.clear();
  platform::Drawing& drawing = port().drawing();
  for (platform::ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (!id.isNull()) snapshot_.push_back(id);
  }
  if (!active_) {
    active_ = true;
    port().editor().addReactor(this);
  }
}

void command::stop() {
  active_ = false;
  if (hasPort()) port().editor().removeReactor(this);
}

bool command::matches(const std::wstring& name) const {
  return active_ && watchedCommandName(name) == name_;
}

void command::commandEnded(const std::wstring& name) {
  if (!matches(name)) return;
  // Stopped first: the callback may start the next host command and wait again.
  stop();
  if (callback_ != nullptr) callback_(value_);
}

void command::commandCancelled(const std::wstring& name) {
  endedWithout(name);
}
void command::commandFailed(const std::wstring& name) {
  endedWithout(name);
}

void command::endedWithout(const std::wstring& name) {
  if (matches(name)) stop();
}

command& breakCommandWatch() {
  static command watch;
  return watch;
}

}  // namespace detail
}  // namespace zarvel
