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
void moveHighestToFront(QStringList &fileNames, Measure measure)
{
    if (fileNames.size() < 2)
        return;
    auto highest = measure(fileNames.first());
    for (int i = 1; i < fileNames.size(); ++i) {
        const auto candidate = measure(fileNames.at(i));
        if (highest < candidate) {
            highest = candidate;
            fileNames.swapItemsAt(i, 0);
        }
    }
}

} // namespace

// QString::asprintf reads %s as UTF-8, so that a Latin-1 letter above 127 comes out as U+FFFD:
// keys and texts have always been made so.

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

// The directory, not the pattern, is named: people search their logs for it.
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

void moveHighestBuildToFront(QStringList &fileNames)
{
    moveHighestToFront(fileNames, buildNumberOf);
}

void moveHighestVersionToFront(QStringList &fileNames)
{
    moveHighestToFront(fileNames, versionOf);
}

QObject *rootObject(QPluginLoader &loader)
{
    // instance() alone does not count a loader that finds the module loaded already.
    loader.load();
    return loader.instance();
}

} // namespace KvSyncCore::PluginFile
