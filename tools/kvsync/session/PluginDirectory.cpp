#include "session/PluginDirectory.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

namespace KvSyncCli {

QString wayFromApplication(const QString &folder)
{
    const QString application = QCoreApplication::applicationDirPath();
    QString way = QDir(application).relativeFilePath(QDir(folder).absolutePath());
    if (QDir::isAbsolutePath(way))
        throw KvSyncTool::Exception(
            InvalidParameter,
            QStringLiteral("No way leads from %1 to %2: plug-in folders stand on the drive of "
                           "kvsync itself")
                .arg(application, way));
    return way;
}

QString pluginDirectory(const QString &way)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + way;
}

} // namespace KvSyncCli
