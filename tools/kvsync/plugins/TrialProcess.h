#ifndef KVSYNC_TRIALPROCESS_H
#define KVSYNC_TRIALPROCESS_H

#include "plugins/LoadTrial.h"

#include <optional>

namespace KvSyncCli {

enum class SymbolCheck {
    AsTheCore, ///< as the core loads
    AllAtOnce, ///< a function that is missing is found now, not when it is called
};

// kvsync runs itself to load a plug-in in a process that may be lost. That process tells the
// outcome in a file, since the plug-in may print what it likes.

/// The command and the flag with which kvsync is run.
constexpr char trialCommand[] = "load-trial";
constexpr char allSymbolsFlag[] = "--all-symbols";

/// In the process that may be lost: loads the plug-in and writes the report.
void runTrial(const QString &filePath, SymbolCheck check, const QString &reportFile);

/// The command line that loads this plug-in and writes that report.
QStringList trialArguments(const QString &filePath, SymbolCheck check, const QString &reportFile);

/// What the process told; nothing if it did not come to that.
std::optional<LoadOutcome> readTrialReport(const QString &reportFile);

} // namespace KvSyncCli

#endif
