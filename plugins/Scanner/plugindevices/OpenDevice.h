#ifndef SCANNER_OPENDEVICE_H
#define SCANNER_OPENDEVICE_H

#include <KvSyncCore/DeviceController.h>
#include <QtCore/QString>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Scanner {

/// One device of a device plug-in, from its opening to its end. The core lets any thread use it,
/// but nobody may delete it meanwhile: every call goes through here, and the end waits for them.
class OpenDevice
{
public:
    OpenDevice(KvSyncCore::DeviceController &deviceController, qint64 deviceHandle);
    OpenDevice(const OpenDevice &) = delete;
    OpenDevice &operator=(const OpenDevice &) = delete;

    qint64 handle() const { return ownHandle; }
    const QString &name() const { return ownName; }
    /// The capabilities that the device says it has, by name.
    QStringList capabilities() const;
    bool has(BaseDeviceSpace::DeviceType capability) const { return types.testFlag(capability); }
    /// Throws `FunctionNotExist` if the device lacks it.
    void require(BaseDeviceSpace::DeviceType capability) const;

    /// Runs `action` with the controller and the handle; several threads at once. Throws
    /// `HandleInvalid` when the device is ending or has ended.
    template <typename Action>
    auto call(Action action)
    {
        const Turn turn(*this);
        return action(controller, ownHandle);
    }

    /// Waits until that time. Throws `HandleInvalid` as soon as the device is ending.
    void waitUntil(std::chrono::steady_clock::time_point time);

    /// Lets no further call begin, makes those end that wait on the device, and deletes it. If the
    /// plug-in refuses, that is answered and the device stays open, at rest.
    ErrorCode end();
    /// The core that it came from is gone, and the device with it.
    void abandon();
    bool isEnding() const;
    /// Whether the device says that its connection is gone. One that cannot tell is not lost.
    bool isLost();

    /// Stops streams and motors and darkens the projector, as far as the device has them and lets
    /// itself.
    void rest();

private:
    class Turn
    {
    public:
        explicit Turn(OpenDevice &device);
        ~Turn();
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;

    private:
        OpenDevice &device;
    };

    void beginEnd();
    [[noreturn]] void raiseEnded() const;

    KvSyncCore::DeviceController &controller;
    const qint64 ownHandle;
    const QString ownName;
    const BaseDeviceSpace::DeviceTypes types;

    mutable std::mutex mutex;
    std::condition_variable changed;
    int running = 0; ///< calls
    bool ending = false;
};

/// How many sensors a camera has: it is asked for one after another.
int countSensors(KvSyncCore::DeviceController &controller, qint64 handle);

} // namespace Scanner

#endif
