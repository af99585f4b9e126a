#include "Environment.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace KvSyncCli {

namespace {

void setPath(const char *variable, const QString &file)
{
    const QString path = QFileInfo(file).absoluteFilePath();
#if defined(_WIN32)
    // Not by way of Qt, which would press the path into the local encoding.
    SetEnvironmentVariableW(
        reinterpret_cast<const wchar_t *>(QString::fromLatin1(variable).utf16()),
        reinterpret_cast<const wchar_t *>(path.utf16()));
#else
    qputenv(variable, QFile::encodeName(path));
#endif
}

} // namespace

void useFaultPlan(const QString &file)
{
    QFile plan(file);
    if (!plan.open(QIODevice::ReadOnly))
        throw KvSyncTool::Exception(
            PathNotExist,
            QStringLiteral("The fault plan %1 cannot be read: %2").arg(file, plan.errorString()));
    setPath("TESSEL3SYNC_SIMULATOR_PLAN", file);
}

void useUserInformationFile(const QString &file)
{
    setPath("TESSEL3SYNC_SIMULATOR_USER_INFORMATION", file);
}

} // namespace KvSyncCli
