#include "Errors.h"

#include <KvSyncTool/ToolLogger.h>

#include <exception>
#include <new>

namespace Scanner {

QString thrownText()
{
    try {
        throw;
    } catch (const KvSyncTool::Exception &thrown) {
        return thrown.message();
    } catch (const std::bad_alloc &) {
        return QStringLiteral("no memory is left");
    } catch (const std::exception &thrown) {
        return QString::fromLocal8Bit(thrown.what());
    } catch (...) {
        return QStringLiteral("something that is no exception");
    }
}

void logThrown(const char *what) noexcept
{
    try {
        // Not as a stream: its destructor writes the line, and nothing could throw out of that.
        qCCritical(KvSyncTool::ToolLogger, "%s threw: %s", what, qUtf8Printable(thrownText()));
    } catch (...) {
        // The host's message handler throws too, or no memory is left for the line.
    }
}

} // namespace Scanner
