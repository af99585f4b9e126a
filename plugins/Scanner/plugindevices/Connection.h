#ifndef SCANNER_PLUGINDEVICES_CONNECTION_H
#define SCANNER_PLUGINDEVICES_CONNECTION_H

#include "Errors.h"

#include <KvSyncCore/DeviceController.h>
#include <QtCore/QString>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Scanner::PluginDevices {

/// One device of a device plug-in, from its opening to its end. The core lets any thread use it,
/// but nobody may delete it meanwhile: every call goes through here, and the end waits for them.
class Connection
{
public:
    Connection(KvSyncCore::DeviceController &deviceController, qint64 deviceHandle);
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

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
        const CallGuard guard(*this);
        return action(controller, ownHandle);
    }

    /// The same for an operation of the device: throws the code with which it refuses, with `text`.
    template <typename Action>
    void run(const QString &text, Action action)
    {
        check(call(action), text);
    }

    /// Waits until that time. Throws `HandleInvalid` as soon as the device is ending.
    void waitUntil(std::chrono::steady_clock::time_point time);

    /// Lets no further call begin, makes those end that wait on the device, and deletes it. If the
    /// plug-in refuses, its code is returned and the device stays open, at rest.
    ErrorCode end();
    /// The core that it came from is gone, and the device with it.
    void abandon();
    bool isEnding() const;
    /// Whether the device says that its connection is gone. One that cannot tell is not lost.
    bool isLost();

    /// Stops streams and motors and switches the projector off, whatever the device says to it.
    void stopAll();

private:
    class CallGuard
    {
    public:
        explicit CallGuard(Connection &device);
        ~CallGuard();
        CallGuard(const CallGuard &) = delete;
        CallGuard &operator=(const CallGuard &) = delete;

    private:
        Connection &device;
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

} // namespace Scanner::PluginDevices

#endif
