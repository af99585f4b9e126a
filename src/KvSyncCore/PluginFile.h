#ifndef KVSYNCCORE_PLUGINFILE_H
#define KVSYNCCORE_PLUGINFILE_H

#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVersionNumber>

class QObject;
class QPluginLoader;

// Plug-in files are called <name>.<major>.<minor>.<build>.dll, on every platform. A name that holds
// a dot shifts the numbers: part of the contract (docs/compatibility.md).
namespace KvSyncCore::PluginFile {

/// "%s.%d.%d" of name, major and minor; a missing segment counts as 0. The name goes through
/// Latin-1, like every text that is formatted here.
QString key(const QString &name, const QVersionNumber &version);

/// Name filter for the builds of one version line.
QString buildPattern(const QString &name, const QVersionNumber &version);

/// Name filter for every version of one name.
QString versionPattern(const QString &name);

/// The application's folder + "/" + `pluginDir`, also when that is absolute; never cleaned.
QString directory(const QString &pluginDir);

QString noPathText(const QString &directory);
QString noFileText(const QString &directory);

/// The files of `directory` that match `pattern`, in listing order.
QStringList list(const QString &directory, const QString &pattern);

/// Major, minor and build of a bare file name; anything that is not a number counts as 0.
QVersionNumber versionOf(const QString &fileName);

/// The first file with the highest build, or the highest version; empty for an empty list.
QString highestBuild(const QStringList &fileNames);
QString highestVersion(const QStringList &fileNames);

/// What a search for a plug-in file found, or why it found none.
struct Search
{
    ErrorCode code = Success; ///< or `PathNotExist`, `PluginFileNotExist`
    QString failure;          ///< the fixed text of such a code
    QString fileName;         ///< bare
    QString filePath;         ///< absolute and clean
};

/// Looks below the application's folder for the highest build of one version line.
Search findHighestBuild(const QString &pluginDir, const QString &name,
                        const QVersionNumber &version);
/// Looks there for the highest version of one name.
Search findHighestVersion(const QString &pluginDir, const QString &name);

/// The root object, created if need be; null on failure, which the loader then explains. From then
/// on the loader counts as a user of the file: nobody else's unload() destroys the object.
QObject *rootObject(QPluginLoader &loader);

} // namespace KvSyncCore::PluginFile

#endif
