#ifndef VIRTUALSCANNER_DEVICEGATE_H
#define VIRTUALSCANNER_DEVICEGATE_H

#include "Codes.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace VirtualScanner {

using Clock = std::chrono::steady_clock;
using Values = QMap<QString, QVariant>;

/// What every operation of a device passes: the device's lock, its connection, and the faults that
/// a host asked for.
///
/// The core calls from any thread and holds no lock, so a device serialises its own operations.
/// One mutex a device does it; an operation that waits gives the mutex up meanwhile.
class DeviceGate
{
public:
    using Lock = std::unique_lock<std::mutex>;

    /// For what must be done even when the device is failing or gone.
    Lock lockAlways();

    /// Runs `body` with the device locked, or answers why it must not run.
    template <typename Body>
    ErrorCode run(const char *operation, Body body)
    {
        return runWaiting(operation, [&body](Lock &) { return body(); });
    }

    /// The same for a body that waits: it receives the lock for waitUntil.
    template <typename Body>
    ErrorCode runWaiting(const char *operation, Body body)
    {
        Lock lock(mutex);
        const ErrorCode refusal = enter(lock, QString::fromLatin1(operation));
        return refusal == Success ? body(lock) : refusal;
    }

    /// Waits with the lock given up until `done` or the deadline; a vanished device ends it.
    template <typename Condition>
    ErrorCode waitUntil(Lock &lock, Clock::time_point deadline, Condition done)
    {
        changed.wait_until(lock, deadline, [&] { return vanished || done(); });
        return vanished ? DeviceVanished : Success;
    }

    /// Wakes whoever waits, after something changed under the lock.
    void wake();

    ErrorCode connect();
    bool isConnected() const;

    // Faults on order. They work on a vanished or unconnected device too.

    /// {"operation", "code", "times"}: answers with the code instead of running. Without
    /// "operation" it concerns all, without "times" it lasts until a code of 0 clears it.
    ErrorCode setFailure(const Values &order);
    /// {"operation", "ms"}: waits so long before running; 0 clears it.
    ErrorCode setDelay(const Values &order);
    /// {"vanished"}: true refuses everything; false brings the device back, not connected.
    ErrorCode setVanished(const Values &order);
    ErrorCode getVanished(Values &values) const;

private:
    struct Failure
    {
        ErrorCode code = Success;
        int timesLeft = -1; ///< negative: without end
    };

    ErrorCode enter(Lock &lock, const QString &operation);
    std::chrono::milliseconds delayOf(const QString &operation) const;
    ErrorCode takeFailure(const QString &operation);

    mutable std::mutex mutex;
    std::condition_variable changed;
    bool connected = false;
    bool vanished = false;
    QMap<QString, Failure> failures; ///< by operation; an empty name stands for all
    QMap<QString, int> delaysMs;
};

} // namespace VirtualScanner

#endif
