// The least that a device plug-in is: a factory as root, and a device with one property. What it
// has to tell goes to the system's one log category.

#include <KvSyncDevice/DeviceInterface.h>
#include <KvSyncDevice/IFactory.h>
#include <KvSyncTool/ToolLogger.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

class Lamp : public BaseDeviceSpace::DeviceInterface
{
public:
    QString name() override { return QStringLiteral("Lamp"); }
    QFlags<BaseDeviceSpace::DeviceType> types() override { return {}; }
    ErrorCode connectDeviceByIndex(int) override { return Success; }

    ErrorCode getProperty(const QString &property, QMap<QString, QVariant> &values) override
    {
        if (property != QLatin1String("on"))
            return InvalidParameter;
        values[property] = isOn.load();
        return Success;
    }

    ErrorCode setProperty(const QString &property, const QMap<QString, QVariant> &values) override
    {
        if (property != QLatin1String("on"))
            return InvalidParameter;
        const bool wanted = values.value(property).toBool();
        if (isOn.exchange(wanted) != wanted)
            qCInfo(KvSyncTool::ToolLogger, "the lamp is %s", wanted ? "on" : "off");
        return Success;
    }

private:
    std::atomic<bool> isOn{false}; // any thread may call, several at once
};

class Blinker : public IFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IFactory_iid)
    Q_INTERFACES(IFactory)

public:
    int enumDevices() override { return 1; }

    BaseDeviceSpace::DeviceInterface *createDevice() override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        lamps.push_back(std::make_unique<Lamp>());
        return lamps.back().get();
    }

    // The pointer is left as it is: the core finds the handle by it.
    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (auto lamp = lamps.begin(); lamp != lamps.end(); ++lamp) {
            if (lamp->get() == device) {
                lamps.erase(lamp);
                return Success;
            }
        }
        return HandleInvalid;
    }

private:
    std::mutex mutex;
    std::vector<std::unique_ptr<Lamp>> lamps;
};

#include "Blinker.moc"
