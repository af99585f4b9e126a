#include "PluginFolders.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KvSyncCli {

namespace {

QString inApplicationFolder(const std::string &folder)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + fromArgument(folder);
}

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

PluginPlace placeOf(const GlobalOptions &options, const QString &file)
{
    const QFileInfo info(file);
    for (const PluginFolder &folder : pluginFolders(options))
        if (QFileInfo(folder.path) == QFileInfo(info.absolutePath()))
            return {folder.path, info.absoluteFilePath(), folder.kind};
    return {info.absolutePath(), info.absoluteFilePath(), PluginKind::Unknown};
}

} // namespace

std::vector<PluginFolder> pluginFolders(const GlobalOptions &options)
{
    return {{PluginKind::CommandPlugin, inApplicationFolder(options.logicDir)},
            {PluginKind::DevicePlugin, inApplicationFolder(options.deviceDir)}};
}

PluginPlace findPlugin(const GlobalOptions &options, const QString &file)
{
    if (isBareName(file))
        for (const PluginFolder &folder : pluginFolders(options)) {
            const QString path = folder.path + QLatin1Char('/') + file;
            if (isThere(path))
                return {folder.path, path, folder.kind};
        }
    if (!isThere(file))
        throw KvSyncTool::Exception(PathNotExist, QStringLiteral("There is no file %1").arg(file));
    return placeOf(options, file);
}

} // namespace KvSyncCli
