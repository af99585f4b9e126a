#ifndef KVSYNCCORE_COMMANDMANAGER_H
#define KVSYNCCORE_COMMANDMANAGER_H

#include "KvSyncCore/CommandInterface.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVersionNumber>

#include <memory>

class QPluginLoader;

namespace KvSyncCore {

/// One loaded command plug-in file. The loader and the root object live until the process ends.
struct CommandPluginEntry
{
    QString fileName; ///< bare file name
    QObject *instance;
    QPluginLoader *loader;
    bool isCommandPlugin; ///< whether the root object implements the interface
};

/// Finds, loads and looks up command plug-ins, and dispatches calls to them. A failure is logged
/// once and thrown as KvSyncTool::Exception; it leaves the state unchanged. Not thread-safe.
class CommandManager
{
public:
    CommandManager() = default;
    CommandManager(const CommandManager &) = delete;
    CommandManager &operator=(const CommandManager &) = delete;

    void setPluginDirPath(const QString &path);

    /// The newest build of name.major.minor, loaded at most once. Null if its root object is not a
    /// command plug-in; the entry stays nevertheless.
    CommandInterface *load(const QString &name, const QVersionNumber &version);
    CommandInterface *loadSpecifyVersionPlugin(const QString &name, const QVersionNumber &version);

    /// The highest version present, loaded anew by every call. The facade does not offer it.
    CommandInterface *loadMaxVersionPlugin(const QString &name);

    /// A loaded plug-in; a null version means the highest one loaded.
    CommandInterface *getCommandInterface(const QString &name, const QVersionNumber &version);

    QVariant execute(const QString &pluginName, const QString &funcName,
                     const QList<QVariant> &args, const QVersionNumber &version);

private:
    bool isLoaded(const QString &name, const QVersionNumber &version) const;
    QVersionNumber maxLoadedVersion(const QString &name) const;
    QString lookupKey(const QString &name, const QVersionNumber &version) const;
    void recordLoadedVersion(const QString &name, const QVersionNumber &version);
    CommandInterface *store(const QString &name, const QVersionNumber &version,
                            const QString &fileName, QObject *instance,
                            std::unique_ptr<QPluginLoader> loader);

    QString pluginDirPath = QStringLiteral("Logic");
    QMap<QString, QList<QVersionNumber>> loadedVersions; ///< by plug-in name, in load order
    QMap<QString, CommandPluginEntry> plugins;           ///< by plug-in key
};

} // namespace KvSyncCore

#endif
