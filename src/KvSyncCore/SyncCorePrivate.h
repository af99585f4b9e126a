#ifndef KVSYNCCORE_SYNCCOREPRIVATE_H
#define KVSYNCCORE_SYNCCOREPRIVATE_H

#include "KvSyncCore/DeviceController.h"
#include "command/CommandManager.h"
#include "device/DeviceManager.h"

#include <QtCore/QObject>

namespace KvSyncCore {

/// What stands behind SyncCore: both managers and the one controller that plug-ins receive.
class SyncCorePrivate : public QObject
{
    Q_OBJECT

public:
    SyncCorePrivate();
    ~SyncCorePrivate() override;

    void init(const QString &commandPluginDir, const QString &devicePluginDir);
    void loadCommandPlugin(const QString &pluginName, const QVersionNumber &version);
    CommandInterface *getCommandPlugin(const QString &pluginName, const QVersionNumber &version);
    QVariant execute(const QString &pluginName, const QString &funcName,
                     const QList<QVariant> &args, const QVersionNumber &version);

Q_SIGNALS:
    void sendSignals(bool isPub, QString pluginName, QString signalName, QVariantList list,
                     QVersionNumber verion);

private:
    // The order is the order of construction; the controller goes before the manager it serves.
    DeviceManager deviceManager;
    CommandManager commandManager;
    DeviceController deviceController;
};

} // namespace KvSyncCore

#endif
