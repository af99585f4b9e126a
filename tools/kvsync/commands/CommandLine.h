#ifndef KVSYNC_COMMANDLINE_H
#define KVSYNC_COMMANDLINE_H

#include <QtCore/QStringList>

namespace KvSyncCli {

/// Parses and runs; `arguments` begin with the program's own name. Returns the exit status: 0, 1 if
/// the command failed, 2 if the command line or a value on it is wrong, 128 and the signal's number
/// if a signal ended it.
int runCommandLine(const QStringList &arguments);

} // namespace KvSyncCli

#endif
