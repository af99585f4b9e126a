#ifndef SCANNER_THROWN_H
#define SCANNER_THROWN_H

#include <QtCore/QString>

namespace Scanner {

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
