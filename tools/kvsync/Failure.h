#ifndef KVSYNC_FAILURE_H
#define KVSYNC_FAILURE_H

#include <KvSyncTool/ErrorCode.h>
#include <QtCore/QString>

namespace KvSyncCli {

/// "kvsync: text" on standard error.
void printFailure(const QString &text);
/// A further line for people on standard error.
void printHint(const QString &text);

/// "ConnectFailed (0x010D000A): text"; a plug-in's own code has no name and reads "UnnamedCode".
QString shownFailure(ErrorCode code, const QString &text);
/// What is to be said of the exception that is being handled, whatever it is.
QString presentFailureText();

} // namespace KvSyncCli

#endif
