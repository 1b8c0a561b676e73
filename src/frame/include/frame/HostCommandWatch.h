// Waiting for a host command that a module command started: the module's
// command body returns while the host's command still asks the user, so what
// must happen after it waits here for the host to say that it ended.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Editor.h"
#include "platform/ObjectId.h"

namespace zarvel {
namespace detail {

class command : public platform::EditorReactor {
 public:
  using Callback = void (*)(std::int64_t value);

  command() = default;
  ~command() override;
  command(const command&) = delete;
  command& operator=(const command&) = delete;

  // Waits for the host command of that name (matched in any case, a leading
  // "_" or "." ignored), taking the snapshot of model space now; a second
  // start while waiting replaces the first.
  void start(const std::wstring& name, Callback callback, std::int64_t value);
  void stop();

  void commandEnded(const std::wstring& name) override;
  void commandCancelled(const std::wstring& name) override;
  void commandFailed(const std::wstring& name) override;

  bool active() const { return active_; }
  // The entities of model space from before the host command, in block order.
  const std::vector<platform::ObjectId>& snapshot() const { return snapshot_; }

 private:
  bool matches(const std::wstring& name) const;
  void endedWithout(const std::wstring& name);

  std::int64_t value_ = 0;
  bool active_ = false;
  Callback callback_ = nullptr;
  std::wstring name_;
  std::vector<platform::ObjectId> snapshot_;
};

// The one instance, which the break command uses.
command& breakCommandWatch();

}  // namespace detail

// The name of a command as the watcher compares it: lower case, without the
// leading "_" and "." that ask for the global and the built-in command.
std::wstring watchedCommandName(const std::wstring& name);

}  // namespace zarvel
