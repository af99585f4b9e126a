// A command plug-in whose operations do next to nothing: what is left is the call path to them.

#include <KvSyncCore/CommandInterface.h>

class Echo : public CommandInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CommandInterface_iid)
    Q_INTERFACES(CommandInterface)

public:
    void setDeviceController(KvSyncCore::DeviceController *) override {}
    QVariantList getRunningDevList() override { return {}; }
    qint64 openDevices(const QVariantMap &) override { return 1; }
    Q_INVOKABLE void closeDevices(qint64 handle) override { lastHandle = handle; }
    void resetDevices(qint64) override {}
    Q_INVOKABLE QVariant getProperty(qint64, const QString &, const QVariant &value) override
    {
        return value;
    }
    void setProperty(qint64, const QString &, const QVariant &) override {}
    void resetInterface(qint64, const QString &) override {}
    void setFlagBitInterface(qint64, const QString &, bool) override {}
    void project(qint64, const QString &) override {}
    QVariantList captureImage(qint64, const QString &, const QVariantMap &) override { return {}; }
    void turntableRotate(qint64, const QString &, const QVariantMap &, bool) override {}
    QVariant execute(qint64, const QString &, const QVariantList &) override { return {}; }

private:
    qint64 lastHandle = 0;
};

#include "Echo.moc"
