#include "session/Simulator.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <Tessel3Sync/Tessel3Sync.h>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace KvSyncCli {

namespace {

/// What every call returns while the plan or the description cannot be used.
constexpr int unusablePlan = 16;

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
    // What comes through a pipe comes once, and the simulator may read its plan again.
    if (QFileInfo::exists(file) && !QFileInfo(file).isFile())
        throw KvSyncTool::Exception(
            InvalidParameter, QStringLiteral("The fault plan %1 is not a regular file").arg(file));
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

void requireUsableSimulator()
{
    int count = 0;
    int status = Tessel3Sync::GetCameraCount("", count);
    if (status != unusablePlan)
        return;
    char *reason = nullptr;
    Tessel3Sync::GetStatusDescriptionString(status, reason);
    throw KvSyncTool::Exception(ConnectFailed,
                                QStringLiteral("The simulated scanner cannot be used: ") +
                                    QString::fromUtf8(reason));
}

} // namespace KvSyncCli
