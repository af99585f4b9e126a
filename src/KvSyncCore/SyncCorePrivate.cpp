#include "SyncCorePrivate.h"

#include "KvSyncTool/Exception.h"
#include "PluginFile.h"

namespace KvSyncCore {

SyncCorePrivate::SyncCorePrivate()
    : deviceController(&deviceManager)
{
}

SyncCorePrivate::~SyncCorePrivate() = default;

void SyncCorePrivate::init(const QString &commandPluginDir, const QString &devicePluginDir)
{
    const bool differ = QString::compare(commandPluginDir, devicePluginDir, Qt::CaseSensitive) != 0;
    if (!differ || commandPluginDir.isEmpty() || devicePluginDir.isEmpty()) {
        // The two blanks after the first "path" are part of the contract.
        throw KvSyncTool::Exception(
            InvalidParameter,
            QString::asprintf("Plug-in path  %s and Plug-in path %s cannot be the same or null",
                              commandPluginDir.toLatin1().constData(),
                              devicePluginDir.toLatin1().constData()));
    }
    deviceManager.setPluginDirPath(devicePluginDir);
    commandManager.setPluginDirPath(commandPluginDir);
}

void SyncCorePrivate::loadCommandPlugin(const QString &pluginName, const QVersionNumber &version)
{
    CommandInterface *const plugin = commandManager.load(pluginName, version);
    if (!plugin) {
        throw KvSyncTool::Exception(PluginLoadFailed,
                                    PluginFile::key(pluginName, version) +
                                        QStringLiteral(" is not a command plug-in"));
    }
    plugin->setDeviceController(&deviceController);
    // Not unique, so that n calls make each event arrive n times: part of the contract. By text,
    // since plug-ins carry a meta-object of their own.
    QObject::connect(plugin, "2sendSignals(bool, QString, QString, QVariantList, QVersionNumber)",
                     this, "2sendSignals(bool, QString, QString, QVariantList, QVersionNumber)",
                     Qt::DirectConnection);
}

CommandInterface *SyncCorePrivate::getCommandPlugin(const QString &pluginName,
                                                    const QVersionNumber &version)
{
    return commandManager.getCommandInterface(pluginName, version);
}

QVariant SyncCorePrivate::execute(const QString &pluginName, const QString &funcName,
                                  const QList<QVariant> &args, const QVersionNumber &version)
{
    return commandManager.execute(pluginName, funcName, args, version);
}

} // namespace KvSyncCore
