// The least that a command plug-in is: a root class with CommandInterface as its first base.

#include <KvSyncCore/CommandInterface.h>
#include <KvSyncCore/DeviceController.h>
#include <KvSyncTool/Exception.h>

class Greeter : public CommandInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CommandInterface_iid)
    Q_INTERFACES(CommandInterface)

public:
    void setDeviceController(KvSyncCore::DeviceController *controller) override
    {
        devices = controller;
    }

    QVariant execute(qint64, const QString &command, const QVariantList &arguments) override
    {
        if (command != QLatin1String("count devices"))
            refuse();
        const QString plugin = arguments.value(0).toString();
        const QVersionNumber version(1, 0);
        const ErrorCode loaded = devices->loadDevicePlugin(plugin, version);
        if (loaded != Success)
            throw KvSyncTool::Exception(loaded, QStringLiteral("cannot load ") + plugin);
        const QPair<ErrorCode, int> counted = devices->enumDevice(plugin, version);
        if (counted.first != Success)
            throw KvSyncTool::Exception(counted.first, plugin + QStringLiteral(" is no factory"));
        Q_EMIT sendSignals(true, QStringLiteral("Greeter"), QStringLiteral("counted"), {plugin},
                           version);
        return counted.second;
    }

    QVariantList getRunningDevList() override { return {}; }
    qint64 openDevices(const QVariantMap &) override { refuse(); }
    void closeDevices(qint64) override { refuse(); }
    void resetDevices(qint64) override { refuse(); }
    QVariant getProperty(qint64, const QString &, const QVariant &) override { refuse(); }
    void setProperty(qint64, const QString &, const QVariant &) override { refuse(); }
    void resetInterface(qint64, const QString &) override { refuse(); }
    void setFlagBitInterface(qint64, const QString &, bool) override { refuse(); }
    void project(qint64, const QString &) override { refuse(); }
    QVariantList captureImage(qint64, const QString &, const QVariantMap &) override { refuse(); }
    void turntableRotate(qint64, const QString &, const QVariantMap &, bool) override { refuse(); }

private:
    [[noreturn]] static void refuse()
    {
        throw KvSyncTool::Exception(FunctionNotExist,
                                    QStringLiteral("the Greeter only counts devices"));
    }

    KvSyncCore::DeviceController *devices = nullptr;
};

#include "Greeter.moc"
