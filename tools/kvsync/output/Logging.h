#ifndef KVSYNC_LOGGING_H
#define KVSYNC_LOGGING_H

namespace KvSyncCli {

/// Both log channels of the process, to its end: on standard error if verbose, else silent,
/// whatever the environment says. Nothing is written to log files.
void configureLogging(bool verbose);

} // namespace KvSyncCli

#endif
