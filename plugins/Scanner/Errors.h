#ifndef SCANNER_ERRORS_H
#define SCANNER_ERRORS_H

#include <KvSyncTool/Exception.h>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstddef>

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

/// The row of that name in a table whose rows have a member `name`. Throws `FunctionNotExist` with
/// all the names; `what` says in the text what they are names of.
template <typename Row, std::size_t count>
const Row &rowNamed(const Row (&rows)[count], const QString &name, const QString &what)
{
    QStringList names;
    for (const Row &row : rows) {
        if (row.name == name)
            return row;
        names.append(row.name);
    }
    raise(FunctionNotExist, QStringLiteral("There is no %1 \"%2\", but %3")
                                .arg(what, name, names.join(QStringLiteral(", "))));
}

/// What the exception says that is being handled, whatever its type.
QString thrownText();

/// Logs the exception that is being handled: "<what> threw: <its text>".
void logThrown(const char *what) noexcept;

/// Runs `action` where nobody could catch what it throws: it is logged.
template <typename Action>
void runLogged(const char *what, const Action &action) noexcept
{
    try {
        action();
    } catch (...) {
        logThrown(what);
    }
}

} // namespace Scanner

#endif
