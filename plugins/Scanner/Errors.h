#ifndef SCANNER_ERRORS_H
#define SCANNER_ERRORS_H

#include <KvSyncTool/Exception.h>
#include <QtCore/QString>

namespace Scanner {

[[noreturn]] inline void raise(ErrorCode code, const QString &text)
{
    throw KvSyncTool::Exception(code, text);
}

/// Turns a failed result of the device side into an exception with a text that says what failed.
inline void check(ErrorCode result, const QString &text)
{
    if (result != Success)
        raise(result, text);
}

[[noreturn]] inline void raiseNotOpen(qint64 handle)
{
    raise(HandleInvalid, QStringLiteral("No open device has the handle %1").arg(handle));
}

/// For what a host asked by a name that the plug-in does not know.
[[noreturn]] inline void refuse(const QString &what)
{
    raise(FunctionNotExist, QStringLiteral("Scanner 1.0 does not serve %1").arg(what));
}

} // namespace Scanner

#endif
