// The port's roles, found in the session and its open document.
#include "host/editor/SessionHost.h"

#include "host/dxf/CodePage.h"
#include "host/editor/Session.h"

namespace host {

SessionHost::SessionHost(Session& session, Prompter& prompter)
    : session_(session), files_(prompter, [this](std::string_view bytes) {
        return dxf::decodeInDrawingCodePage(session_.document().image.get(), bytes);
      }) {}

platform::CommandStack& SessionHost::commandStack() {
  return session_.moduleCommands();
}
platform::DynamicLinker& SessionHost::dynamicLinker() {
  return session_.linker();
}
platform::Documents& SessionHost::documents() {
  return session_.documents();
}
platform::Editor& SessionHost::editor() {
  return session_.editor();
}
platform::Ui& SessionHost::ui() {
  return session_.promptUi();
}
platform::Project& SessionHost::project() {
  return session_.document().project;
}
platform::Drawing& SessionHost::drawing() {
  return session_.document().drawing;
}
platform::FeatureClasses& SessionHost::featureClasses() {
  return session_.document().featureClasses;
}
platform::EntityGeometry& SessionHost::geometry() {
  return session_.document().geometry;
}

platform::PathAliases& SessionHost::pathAliases() {
  return session_.pathAliases();
}

}  // namespace host
