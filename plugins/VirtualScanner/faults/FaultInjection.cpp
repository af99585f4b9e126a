#include "FaultInjection.h"

#include <memory>

namespace VirtualScanner {

namespace {

QString operationIn(const Values &order)
{
    return order.value(QStringLiteral("operation")).toString();
}

/// The faults of one device, guarded by its gate.
class Faults
{
public:
    explicit Faults(DeviceGate &deviceGate)
        : gate(deviceGate)
    {
    }

    ErrorCode inspect(DeviceGate::Call &call, const QString &operation);

    ErrorCode setFailure(const Values &order);
    ErrorCode setDelay(const Values &order);
    ErrorCode setVanished(const Values &order);
    ErrorCode getVanished(Values &values) const;

private:
    struct Failure
    {
        ErrorCode code = Success;
        int timesLeft = -1; ///< negative: without end
    };

    ErrorCode takeFailure(const QString &operation);

    DeviceGate &gate;
    bool vanished = false;
    QMap<QString, Failure> failures; ///< by operation; an empty name stands for all
    QMap<QString, int> delaysMs;
};

ErrorCode Faults::inspect(DeviceGate::Call &call, const QString &operation)
{
    const int delayMs = delaysMs.value(operation, delaysMs.value(QString()));
    if (delayMs > 0 && !vanished) {
        const auto end = Clock::now() + std::chrono::milliseconds(delayMs);
        const ErrorCode code = gate.waitUntil(call, end, [] { return false; });
        if (code != Success)
            return code;
    }
    return vanished ? DeviceVanished : takeFailure(operation);
}

ErrorCode Faults::takeFailure(const QString &operation)
{
    auto failure = failures.find(operation);
    if (failure == failures.end())
        failure = failures.find(QString());
    if (failure == failures.end())
        return Success;
    const ErrorCode code = failure->code;
    if (failure->timesLeft > 0 && --failure->timesLeft == 0)
        failures.erase(failure);
    return code;
}

ErrorCode Faults::setFailure(const Values &order)
{
    bool isCode = false;
    const int code = order.value(QStringLiteral("code")).toInt(&isCode);
    const int times = order.value(QStringLiteral("times"), -1).toInt();
    if (!isCode || times == 0)
        return BadValue;
    const DeviceGate::Lock lock = gate.lock();
    if (code == Success)
        failures.remove(operationIn(order));
    else
        failures.insert(operationIn(order), {static_cast<ErrorCode>(code), times});
    return Success;
}

ErrorCode Faults::setDelay(const Values &order)
{
    bool isNumber = false;
    const int ms = order.value(QStringLiteral("ms")).toInt(&isNumber);
    if (!isNumber || ms < 0)
        return BadValue;
    const DeviceGate::Lock lock = gate.lock();
    delaysMs.insert(operationIn(order), ms);
    return Success;
}

ErrorCode Faults::setVanished(const Values &order)
{
    if (!order.contains(QStringLiteral("vanished")))
        return BadValue;
    const bool wanted = order.value(QStringLiteral("vanished")).toBool();
    const DeviceGate::Lock lock = gate.lock();
    if (wanted && !vanished)
        gate.lose(lock);
    vanished = wanted;
    return Success;
}

ErrorCode Faults::getVanished(Values &values) const
{
    const DeviceGate::Lock lock = gate.lock();
    values.insert(QStringLiteral("vanished"), vanished);
    values.insert(QStringLiteral("calls"), gate.callsInside(lock));
    return Success;
}

} // namespace

void injectFaults(DeviceGate &gate, PropertyTable &properties)
{
    // What is handed out here keeps the faults for as long as the device lives.
    const auto faults = std::make_shared<Faults>(gate);
    gate.setInspector([faults](DeviceGate::Call &call, const QString &operation) {
        return faults->inspect(call, operation);
    });
    properties.add(QStringLiteral("fail"), {},
                   [faults](const Values &order) { return faults->setFailure(order); });
    properties.add(QStringLiteral("slow"), {},
                   [faults](const Values &order) { return faults->setDelay(order); });
    properties.add(
        QStringLiteral("vanish"), [faults](Values &values) { return faults->getVanished(values); },
        [faults](const Values &order) { return faults->setVanished(order); });
}

} // namespace VirtualScanner
