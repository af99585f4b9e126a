#include "Connection.h"

#include "Errors.h"

#include <QtCore/QStringList>

namespace Scanner::PluginDevices {

using KvSyncCore::DeviceController;
using namespace BaseDeviceSpace;

namespace {

struct Capability
{
    DeviceType type;
    QLatin1String name;
};

const Capability capabilityTable[] = {
    {CameraDevice, QLatin1String("camera")},
    {ProjectorDevice, QLatin1String("projector")},
    {MotorDevice, QLatin1String("motor")},
    {ControllerDevice, QLatin1String("controller")},
};

constexpr int mostSensors = 16;

} // namespace

Connection::Connection(DeviceController &deviceController, qint64 deviceHandle)
    : controller(deviceController)
    , ownHandle(deviceHandle)
    , ownName(controller.name(deviceHandle).second)
    , types(controller.types(deviceHandle).second)
{
}

QStringList Connection::capabilities() const
{
    QStringList names;
    for (const Capability &capability : capabilityTable) {
        if (has(capability.type))
            names.append(capability.name);
    }
    return names;
}

void Connection::require(DeviceType capability) const
{
    for (const Capability &each : capabilityTable) {
        if (each.type == capability && !has(capability))
            raise(FunctionNotExist,
                  QStringLiteral("The device \"%1\" has no %2").arg(ownName, each.name));
    }
}

void Connection::waitUntil(std::chrono::steady_clock::time_point time)
{
    std::unique_lock<std::mutex> lock(mutex);
    if (changed.wait_until(lock, time, [this] { return ending; }))
        raiseEnded();
}

ErrorCode Connection::end()
{
    struct ReopenUnlessDeleted
    {
        Connection &device;
        bool isDue = true;

        ~ReopenUnlessDeleted()
        {
            const std::lock_guard<std::mutex> lock(device.mutex);
            device.ending = !isDue;
        }
    };
    beginEnd();
    ReopenUnlessDeleted reopen{*this};
    try {
        stopAll();
    } catch (...) {
        // The plug-in's; a device that cannot even rest is deleted all the same.
    }
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return running == 0; });
    }
    const ErrorCode result = controller.deleteDevice(ownHandle);
    reopen.isDue = result != Success;
    return result;
}

void Connection::abandon()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ending = true;
    }
    changed.notify_all();
}

bool Connection::isEnding() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return ending;
}

// The contract has no operation for it, so it goes by a property.
bool Connection::isLost()
{
    const QString connected = QStringLiteral("connected");
    QMap<QString, QVariant> facts;
    try {
        const ErrorCode result = call([&](DeviceController &c, qint64 handle) {
            return c.getProperty(handle, QStringLiteral("info"), facts);
        });
        return result == Success && facts.contains(connected) && !facts.value(connected).toBool();
    } catch (...) {
        return false; // the plug-in's; it is asked because another failure is under way
    }
}

void Connection::stopAll()
{
    if (has(MotorDevice))
        controller.stopMotor(ownHandle, {});
    if (has(CameraDevice)) {
        const int sensors = countSensors(controller, ownHandle);
        for (int sensor = 0; sensor < sensors; ++sensor)
            controller.stopStream(ownHandle, static_cast<signed char>(sensor));
    }
    if (has(ProjectorDevice)) {
        controller.scan(ownHandle, ProjectorSpace::ContinuousScan, false);
        controller.projectorLEDSwitch(ownHandle, false);
        controller.projectorPWM(ownHandle, false);
    }
}

void Connection::beginEnd()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (ending)
            raiseEnded();
        ending = true;
    }
    changed.notify_all();
}

void Connection::raiseEnded() const
{
    raiseNotOpen(ownHandle);
}

Connection::CallGuard::CallGuard(Connection &usedDevice)
    : device(usedDevice)
{
    const std::lock_guard<std::mutex> lock(device.mutex);
    if (device.ending)
        device.raiseEnded();
    ++device.running;
}

Connection::CallGuard::~CallGuard()
{
    {
        const std::lock_guard<std::mutex> lock(device.mutex);
        --device.running;
    }
    device.changed.notify_all();
}

int countSensors(DeviceController &controller, qint64 handle)
{
    int count = 0;
    unsigned int width = 0;
    unsigned int height = 0;
    while (count < mostSensors &&
           controller.getMaxImageSize(handle, width, height, static_cast<signed char>(count)) ==
               Success)
        ++count;
    return count;
}

} // namespace Scanner::PluginDevices
