#include "PluginFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QPluginLoader>

namespace KvSyncCore::PluginFile {

namespace {

int numberAt(const QString &fileName, int part)
{
    return fileName.split(QLatin1Char('.')).value(part).toInt();
}

int buildNumberOf(const QString &fileName)
{
    return numberAt(fileName, 3);
}

template <typename Measure>
QString firstOfTheHighest(const QStringList &fileNames, Measure measure)
{
    QString chosen = fileNames.value(0);
    auto highest = measure(chosen);
    for (const QString &candidate : fileNames) {
        const auto measured = measure(candidate);
        if (highest < measured) {
            highest = measured;
            chosen = candidate;
        }
    }
    return chosen;
}

Search search(const QString &pluginDir, const QString &pattern,
              QString (*choose)(const QStringList &fileNames))
{
    const QString folder = directory(pluginDir);
    if (!QDir(folder).exists())
        return {PathNotExist, noPathText(folder), {}, {}};
    const QStringList fileNames = list(folder, pattern);
    if (fileNames.isEmpty())
        return {PluginFileNotExist, noFileText(folder), {}, {}};
    const QString fileName = choose(fileNames);
    return {Success, {}, fileName, QDir(folder).absoluteFilePath(fileName)};
}

} // namespace

// QString::asprintf reads %s as UTF-8, so that a Latin-1 letter above 127 comes out as U+FFFD: part
// of the contract.

QString key(const QString &name, const QVersionNumber &version)
{
    return QString::asprintf("%s.%d.%d", name.toLatin1().constData(), version.majorVersion(),
                             version.minorVersion());
}

QString buildPattern(const QString &name, const QVersionNumber &version)
{
    return QString::asprintf("%s.%d.%d.*.dll", name.toLatin1().constData(), version.majorVersion(),
                             version.minorVersion());
}

QString versionPattern(const QString &name)
{
    return QString::asprintf("%s.*.*.*.dll", name.toLatin1().constData());
}

QString directory(const QString &pluginDir)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + pluginDir;
}

QString noPathText(const QString &directory)
{
    return QString::asprintf("%s is no exist path", directory.toLatin1().constData());
}

// It names the directory, not the pattern: part of the contract.
QString noFileText(const QString &directory)
{
    return QString::asprintf("%s is no exist dll", directory.toLatin1().constData());
}

QStringList list(const QString &directory, const QString &pattern)
{
    return QDir(directory).entryList({pattern}, QDir::Files, QDir::NoSort);
}

QVersionNumber versionOf(const QString &fileName)
{
    return {numberAt(fileName, 1), numberAt(fileName, 2), numberAt(fileName, 3)};
}

QString highestBuild(const QStringList &fileNames)
{
    return firstOfTheHighest(fileNames, buildNumberOf);
}

QString highestVersion(const QStringList &fileNames)
{
    return firstOfTheHighest(fileNames, versionOf);
}

Search findHighestBuild(const QString &pluginDir, const QString &name,
                        const QVersionNumber &version)
{
    return search(pluginDir, buildPattern(name, version), highestBuild);
}

Search findHighestVersion(const QString &pluginDir, const QString &name)
{
    return search(pluginDir, versionPattern(name), highestVersion);
}

QObject *rootObject(QPluginLoader &loader)
{
    // instance() alone does not count a loader that finds the module loaded already.
    loader.load();
    return loader.instance();
}

} // namespace KvSyncCore::PluginFile
