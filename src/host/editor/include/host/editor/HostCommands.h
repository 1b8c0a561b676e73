// The host's own commands, registered into a session.
#pragma once

namespace host {

class Session;

void registerHostCommands(Session& session);

// One group each, in src/commands/.
void registerLayerCommands(Session& session);
void registerObjectDataCommands(Session& session);
void registerDrawCommands(Session& session);
void registerEditCommands(Session& session);
void registerListCommand(Session& session);
void registerSessionCommands(Session& session);
void registerFileCommands(Session& session);
void registerBlockCommands(Session& session);
void registerModifyCommands(Session& session);
void registerBreakCommand(Session& session);
void registerPaletteCommand(Session& session);
void registerAttachCommands(Session& session);

}  // namespace host
