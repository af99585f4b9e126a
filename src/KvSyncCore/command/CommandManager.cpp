#include "command/CommandManager.h"

#include "LeakChecker.h"
#include "PluginFile.h"
#include "command/Raise.h"

#include <QtCore/QPluginLoader>

#include <algorithm>

namespace KvSyncCore {

namespace {

// No cast at lookup: a command plug-in's root class has CommandInterface as its first base.
CommandInterface *interfaceOf(const CommandPluginEntry &entry)
{
    return entry.isCommandPlugin ? static_cast<CommandInterface *>(entry.instance) : nullptr;
}

} // namespace

void CommandManager::setPluginDirPath(const QString &path)
{
    if (path.isEmpty()) {
        // The log carries the words, the exception none: part of the contract.
        KVSYNC_CRITICAL << "plugin path is null";
        throw KvSyncTool::Exception(InvalidParameter, QString());
    }
    pluginDirPath = path;
}

CommandInterface *CommandManager::load(const QString &name, const QVersionNumber &version)
{
    if (name.isEmpty() || version.isNull())
        KVSYNC_RAISE(InvalidParameter, QStringLiteral("plugin name or version is null"));
    return loadSpecifyVersionPlugin(name, version);
}

CommandInterface *CommandManager::loadSpecifyVersionPlugin(const QString &name,
                                                           const QVersionNumber &version)
{
    if (isLoaded(name, version))
        return getCommandInterface(name, version);

    const PluginFile::Search search = PluginFile::findHighestBuild(pluginDirPath, name, version);
    if (search.code != Success)
        KVSYNC_RAISE(search.code, search.failure);
    // It says "device" though a command plug-in is loaded: part of the contract.
    KVSYNC_DEBUG << "load device plugin " << search.filePath;
    auto loader = std::make_unique<QPluginLoader>(search.filePath);
    QObject *const instance = PluginFile::rootObject(*loader);
    if (!instance)
        KVSYNC_RAISE(PluginLoadFailed, loader->errorString());
    return store(name, version, search.fileName, instance, std::move(loader));
}

CommandInterface *CommandManager::loadMaxVersionPlugin(const QString &name)
{
    const PluginFile::Search search = PluginFile::findHighestVersion(pluginDirPath, name);
    if (search.code != Success)
        KVSYNC_RAISE(search.code, search.failure);
    KVSYNC_DEBUG << "load device plugin " << search.filePath;
    auto loader = std::make_unique<QPluginLoader>(search.filePath);
    QObject *const instance = PluginFile::rootObject(*loader);
    if (!instance)
        KVSYNC_RAISE(PluginLoadFailed, loader->errorString());
    const QVersionNumber found = PluginFile::versionOf(search.fileName);
    return store(name, {found.majorVersion(), found.minorVersion()}, search.fileName, instance,
                 std::move(loader));
}

CommandInterface *CommandManager::getCommandInterface(const QString &name,
                                                      const QVersionNumber &version)
{
    const QString key = lookupKey(name, version);
    KVSYNC_DEBUG << "find " << key << " plugin";
    const auto entry = plugins.constFind(key);
    if (entry == plugins.constEnd())
        KVSYNC_RAISE(PluginNotLoaded, key + QStringLiteral(" plugin is not exist"));
    return interfaceOf(*entry);
}

bool CommandManager::isLoaded(const QString &name, const QVersionNumber &version) const
{
    return plugins.contains(PluginFile::key(name, version));
}

QVersionNumber CommandManager::maxLoadedVersion(const QString &name) const
{
    // Not counted up from the null version, which is higher than a version below zero.
    const QList<QVersionNumber> versions = loadedVersions.value(name);
    const auto highest = std::max_element(versions.begin(), versions.end());
    return highest == versions.end() ? QVersionNumber() : *highest;
}

QString CommandManager::lookupKey(const QString &name, const QVersionNumber &version) const
{
    return PluginFile::key(name, version.isNull() ? maxLoadedVersion(name) : version);
}

void CommandManager::recordLoadedVersion(const QString &name, const QVersionNumber &version)
{
    loadedVersions[name].append(version);
}

CommandInterface *CommandManager::store(const QString &name, const QVersionNumber &version,
                                        const QString &fileName, QObject *instance,
                                        std::unique_ptr<QPluginLoader> loader)
{
    auto *const plugin = qobject_cast<CommandInterface *>(instance);
    // Plug-ins stay loaded and their objects alive, beyond this manager too.
    keepUntilProcessEnd(loader.get());
    keepUntilProcessEnd(instance);
    const CommandPluginEntry entry{fileName, instance, loader.release(), plugin != nullptr};
    plugins.insert(PluginFile::key(name, version), entry);
    recordLoadedVersion(name, version);
    return plugin;
}

} // namespace KvSyncCore
