#ifndef KVSYNC_PLUGINSCOMMAND_H
#define KVSYNC_PLUGINSCOMMAND_H

#include "Command.h"

namespace KvSyncCli {

/// The command below "plugins".
void addPluginsWhyCommand(CLI::App &plugins, Command &chosen);

} // namespace KvSyncCli

#endif
