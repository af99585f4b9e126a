#include "plugins/PluginVersion.h"

#include "plugins/PluginFileName.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QDir>

#include <algorithm>

namespace KvSyncCli {

namespace {

QList<PluginFileName> pluginFiles(const QString &directory)
{
    const PluginSelection selection(directory);
    if (!selection.exists())
        throw KvSyncTool::Exception(
            PathNotExist,
            QStringLiteral("There is no plug-in folder %1").arg(QDir::cleanPath(directory)));
    QList<PluginFileName> files;
    for (const QString &file : selection.found(QStringLiteral("*.*.*.*.dll")))
        files.append(PluginFileName(file));
    return files;
}

QVersionNumber lineOf(const PluginFileName &file)
{
    return {file.major, file.minor};
}

QVersionNumber parse(const QString &asked)
{
    // Not by the index where fromString ended: compilers that believe Qt's "pure" never see it
    // change.
    const QVersionNumber version = QVersionNumber::fromString(asked);
    if (version.isNull() || version.toString() != asked)
        throw KvSyncTool::Exception(
            InvalidParameter, QStringLiteral("\"%1\" is no version such as \"1.0\"").arg(asked));
    return {version.majorVersion(), version.minorVersion()};
}

QString shown(const QList<PluginFileName> &files)
{
    QStringList plugins;
    for (const PluginFileName &file : files)
        plugins.append(QStringLiteral("%1 %2").arg(file.name, file.version()));
    plugins.removeDuplicates();
    return plugins.isEmpty() ? QStringLiteral("it holds none")
                             : QStringLiteral("it holds ") + plugins.join(QStringLiteral(", "));
}

[[noreturn]] void raiseAbsent(const QString &directory, const QString &plugin, const QString &asked,
                              const QList<PluginFileName> &files)
{
    const QString wanted = asked.isEmpty() ? plugin : QStringLiteral("%1 %2").arg(plugin, asked);
    throw KvSyncTool::Exception(PluginFileNotExist,
                                QStringLiteral("There is no plug-in %1 in %2; %3")
                                    .arg(wanted, QDir::cleanPath(directory), shown(files)));
}

} // namespace

QVersionNumber choosePluginVersion(const QString &directory, const QString &plugin,
                                   const QString &asked)
{
    const QVersionNumber wanted = asked.isEmpty() ? QVersionNumber() : parse(asked);
    const QList<PluginFileName> files = pluginFiles(directory);
    QList<QVersionNumber> versions;
    // By letters of any case, as the core finds files.
    for (const PluginFileName &file : files) {
        const bool isWanted = wanted.isNull() || lineOf(file) == wanted;
        if (isWanted && file.name.compare(plugin, Qt::CaseInsensitive) == 0)
            versions.append(lineOf(file));
    }
    if (versions.isEmpty())
        raiseAbsent(directory, plugin, asked, files);
    return *std::max_element(versions.begin(), versions.end());
}

} // namespace KvSyncCli
