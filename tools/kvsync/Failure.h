#ifndef KVSYNC_FAILURE_H
#define KVSYNC_FAILURE_H

#include <KvSyncTool/ErrorCode.h>
#include <QtCore/QString>

namespace KvSyncCli {

/// "kvsync: ConnectFailed (0x010D000A): text" on standard error.
void printFailure(ErrorCode code, const QString &text);
/// The same for a failure without a code.
void printFailure(const QString &text);
/// A further line for people on standard error.
void printHint(const QString &text);

/// "ConnectFailed (0x010D000A)"; a plug-in's own code has no name and reads "UnnamedCode".
QString shownCode(ErrorCode code);

} // namespace KvSyncCli

#endif
