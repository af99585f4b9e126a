#ifndef KVSYNC_TRIALCOMMAND_H
#define KVSYNC_TRIALCOMMAND_H

#include "Command.h"
#include "LoadTrial.h"

#include <optional>

namespace KvSyncCli {

enum class SymbolCheck {
    AsTheCore, ///< as the core loads
    AllAtOnce, ///< a function that is missing is found now, not when it is called
};

// A command that no help shows: kvsync runs itself with it, to load a plug-in in a process that may
// be lost. It tells the outcome in a file, since the plug-in may print what it likes.
void addTrialCommand(CLI::App &plugins, Command &chosen);

/// The command line that loads this plug-in and writes that report.
QStringList trialArguments(const QString &filePath, SymbolCheck check, const QString &reportFile);

/// What the process told; nothing if it did not come to that.
std::optional<LoadOutcome> readTrialReport(const QString &reportFile);

} // namespace KvSyncCli

#endif
