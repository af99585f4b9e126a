#ifndef KVSYNCCORE_PLUGINFILE_H
#define KVSYNCCORE_PLUGINFILE_H

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVersionNumber>

class QObject;
class QPluginLoader;

// Plug-in files are called <name>.<major>.<minor>.<build>.dll, on every platform. A name that holds
// a dot shifts the numbers; authors know it, and callers depend on it.
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

/// Major, minor and build of a bare file name; what is not a number counts as 0.
QVersionNumber versionOf(const QString &fileName);

/// Puts the first file with the highest build, or the highest version, in front by swapping.
void moveHighestBuildToFront(QStringList &fileNames);
void moveHighestVersionToFront(QStringList &fileNames);

/// The root object, made if need be; null on failure, which the loader then explains. The loader
/// counts as a user of the file from then on: nobody else's unload() takes the object away.
QObject *rootObject(QPluginLoader &loader);

} // namespace KvSyncCore::PluginFile

#endif
