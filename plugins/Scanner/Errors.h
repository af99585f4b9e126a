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

} // namespace Scanner

#endif
