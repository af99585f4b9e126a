#include "Failure.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QByteArray>

#include <cstdio>

namespace KvSyncCli {

QString shownFailure(ErrorCode code, const QString &text)
{
    const char *const name = KvSyncTool::errorCodeName(code);
    return QString::asprintf("%s (0x%08X): ", name ? name : "UnnamedCode",
                             static_cast<unsigned int>(code)) +
           text;
}

QString presentFailureText()
{
    try {
        throw;
    } catch (const KvSyncTool::Exception &failure) {
        return shownFailure(failure.code(), failure.message());
    } catch (const std::exception &failure) {
        return QString::fromLocal8Bit(failure.what());
    } catch (...) {
        return QStringLiteral("A plug-in threw something that is no exception");
    }
}

void printFailure(const QString &text)
{
    printHint(QStringLiteral("kvsync: ") + text);
}

void printHint(const QString &text)
{
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

} // namespace KvSyncCli
