#ifndef KVSYNC_PLUGINSCOMMAND_H
#define KVSYNC_PLUGINSCOMMAND_H

#include "Command.h"
#include "PluginReport.h"

namespace KvSyncCli {

/// The command below "plugins".
void addPluginsWhyCommand(CLI::App &plugins, Command &chosen);

/// Whether plug-ins are loaded to see what comes of it, and for how long.
struct TrialChoice
{
    bool load = false;
    int limitMs = 30000;

    LoadLimit loadLimitMs() const { return load ? LoadLimit(limitMs) : LoadLimit(); }
};

/// "--load" and "--timeout".
void addTrialOptions(CLI::App &command, TrialChoice &trial);

} // namespace KvSyncCli

#endif
