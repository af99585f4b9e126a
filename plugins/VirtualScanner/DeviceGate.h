#ifndef VIRTUALSCANNER_DEVICEGATE_H
#define VIRTUALSCANNER_DEVICEGATE_H

#include "Codes.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace VirtualScanner {

using Clock = std::chrono::steady_clock;
using Values = QMap<QString, QVariant>;

/// What every operation of a device passes: the device's lock, its connection, and its end.
///
/// The core calls from any thread and holds no lock, so a device serializes its own operations.
/// One mutex a device does it; an operation that waits gives the mutex up meanwhile. A lost
/// connection ends every wait for good, even if another connection follows at once.
class DeviceGate
{
public:
    using Lock = std::unique_lock<std::mutex>;

    /// One call while it is inside the device; the device is locked but while the call waits.
    class Call
    {
    public:
        explicit Call(DeviceGate &passedGate);
        ~Call();
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

        /// Whether the device was lost since the call came in.
        bool isOver() const;

    private:
        friend DeviceGate;
        DeviceGate &gate;
        Lock lock;
        const quint64 lossesAtEntry;
    };

    /// Runs `body` with the connected device locked, or returns why it must not run.
    template <typename Body>
    ErrorCode run(const char *operation, Body body)
    {
        return runWaiting(operation, [&body](Call &) { return body(); });
    }

    /// The same for a body that waits: it receives the call for the operations below.
    template <typename Body>
    ErrorCode runWaiting(const char *operation, Body body)
    {
        Call call(*this);
        const ErrorCode refusal = pass(call, operation);
        return refusal == Success ? body(call) : refusal;
    }

    /// For the operation that connects. The gate stands open once `body` returned `Success`.
    template <typename Body>
    ErrorCode connect(const char *operation, Body body)
    {
        Call call(*this);
        ErrorCode code = admit(call, operation);
        if (code == Success)
            code = body();
        connected = connected || code == Success;
        return code;
    }

    /// Waits until `done` or the deadline. Anything but `Success` ends the call.
    template <typename Condition>
    ErrorCode waitUntil(Call &call, Clock::time_point deadline, Condition done)
    {
        changed.wait_until(call.lock, deadline, [&] { return call.isOver() || done(); });
        return call.isOver() ? DeviceVanished : Success;
    }

    template <typename Condition>
    ErrorCode wait(Call &call, Condition done)
    {
        changed.wait(call.lock, [&] { return call.isOver() || done(); });
        return call.isOver() ? DeviceVanished : Success;
    }

    /// Between the steps of a long operation: lets others in, then passes the gate once more.
    ErrorCode passAgain(Call &call, const char *step);

    /// Wakes whoever waits, after something changed under the lock.
    void wake();

    // For the device's own threads, which are no callers: no lost connection ends them.

    Lock lock() const;

    /// Gives the lock up until something changes or the deadline has come.
    void idleUntil(Lock &held, Clock::time_point deadline);

    // The connection

    bool isConnected() const;
    /// The device is lost: it forgets what `onLoss` was told, and the calls inside end with
    /// DeviceVanished. A driver calls this when its device is unplugged.
    void lose(const Lock &held);
    /// What a device without power forgets. Runs with the device locked.
    void onLoss(std::function<void()> forget);
    /// Ends the device: lets nobody in any more, and returns when those inside have left.
    void close();

    /// Asked before every operation and step, with the device locked; it may wait. Anything but
    /// `Success` is returned in the operation's place. Set while the device is made.
    using Inspector = std::function<ErrorCode(Call &call, const QString &operation)>;
    void setInspector(Inspector asked);
    /// How many calls are inside.
    int callsInside(const Lock &held) const;

private:
    ErrorCode admit(Call &call, const char *operation);
    ErrorCode pass(Call &call, const char *operation);

    mutable std::mutex mutex;
    std::condition_variable changed;
    bool connected = false;
    bool closed = false;
    quint64 losses = 0;
    int calls = 0;
    std::vector<std::function<void()>> forgetters;
    Inspector inspector;
};

} // namespace VirtualScanner

#endif
