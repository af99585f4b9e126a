#include "Failure.h"

#include <QtCore/QByteArray>

#include <cstdio>

namespace KvSyncCli {

QString shownCode(ErrorCode code)
{
    const char *const name = KvSyncTool::errorCodeName(code);
    return QString::asprintf("%s (0x%08X)", name ? name : "UnnamedCode",
                             static_cast<unsigned int>(code));
}

void printFailure(ErrorCode code, const QString &text)
{
    printHint(QStringLiteral("kvsync: %1: %2").arg(shownCode(code), text));
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
