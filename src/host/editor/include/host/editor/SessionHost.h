// The host as a whole, as a loaded module reaches it: the session's role
// adapters, and the open document's drawing, project and geometry. It follows
// the document when another one is opened.
#pragma once

#include "host/editor/FileService.h"
#include "platform/Host.h"

namespace host {

class Session;

class SessionHost : public platform::Host {
 public:
  SessionHost(Session& session, Prompter& prompter);

  platform::CommandStack& commandStack() override;
  platform::DynamicLinker& dynamicLinker() override;
  platform::Documents& documents() override;
  platform::Editor& editor() override;
  platform::Ui& ui() override;
  platform::Project& project() override;
  platform::Drawing& drawing() override;
  platform::FeatureClasses& featureClasses() override;
  platform::EntityGeometry& geometry() override;
  platform::Files& files() override { return files_; }
  platform::PathAliases& pathAliases() override;

 private:
  Session& session_;
  FileService files_;
};

}  // namespace host
