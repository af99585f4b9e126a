#include "plugins/PluginFolders.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KvSyncCli {

namespace {

// A link counts as being there, also when its target is gone.
bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool isBareName(const QString &file)
{
    return !QDir::fromNativeSeparators(file).contains(QLatin1Char('/'));
}

PluginPlace placeOf(const PluginDirectories &directories, const QString &file)
{
    const QFileInfo info(file);
    for (const PluginFolder &folder : pluginFolders(directories))
        if (QFileInfo(folder.path) == QFileInfo(info.absolutePath()))
            return {folder.path, info.absoluteFilePath(), folder.kind};
    return {info.absolutePath(), info.absoluteFilePath(), PluginKind::Unknown};
}

} // namespace

QString pathFromApplication(const QString &folder)
{
    const QString application = QCoreApplication::applicationDirPath();
    const QString absolute = QDir::cleanPath(QDir(folder).absolutePath());
    QString path = QDir(application).relativeFilePath(absolute);
    if (QDir::isAbsolutePath(path))
        throw KvSyncTool::Exception(
            InvalidParameter,
            QStringLiteral("No way leads from %1 to %2: plug-in folders stand on the drive of "
                           "kvsync itself")
                .arg(application, path));
    if (!QDir(absolute).exists())
        throw KvSyncTool::Exception(PathNotExist,
                                    QStringLiteral("There is no plug-in folder %1").arg(absolute));
    return path;
}

QString pluginDirectory(const QString &relativePath)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + relativePath;
}

std::vector<PluginFolder> pluginFolders(const PluginDirectories &directories)
{
    return {{PluginKind::CommandPlugin, pluginDirectory(directories.logic)},
            {PluginKind::DevicePlugin, pluginDirectory(directories.device)}};
}

PluginPlace findPlugin(const PluginDirectories &directories, const QString &file)
{
    if (isBareName(file))
        for (const PluginFolder &folder : pluginFolders(directories)) {
            const QString path = folder.path + QLatin1Char('/') + file;
            if (isThere(path))
                return {folder.path, path, folder.kind};
        }
    if (!isThere(file))
        throw KvSyncTool::Exception(PathNotExist, QStringLiteral("There is no file %1").arg(file));
    return placeOf(directories, file);
}

} // namespace KvSyncCli
