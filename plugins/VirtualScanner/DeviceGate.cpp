#include "DeviceGate.h"

namespace VirtualScanner {

namespace {

QString operationIn(const Values &order)
{
    return order.value(QStringLiteral("operation")).toString();
}

} // namespace

DeviceGate::Lock DeviceGate::lockAlways()
{
    return Lock(mutex);
}

void DeviceGate::wake()
{
    changed.notify_all();
}

ErrorCode DeviceGate::connect()
{
    const Lock lock(mutex);
    if (vanished)
        return DeviceVanished;
    connected = true;
    return Success;
}

bool DeviceGate::isConnected() const
{
    const Lock lock(mutex);
    return connected;
}

ErrorCode DeviceGate::setFailure(const Values &order)
{
    bool isCode = false;
    const int code = order.value(QStringLiteral("code")).toInt(&isCode);
    const int times = order.value(QStringLiteral("times"), -1).toInt();
    if (!isCode || times == 0)
        return BadValue;
    const Lock lock(mutex);
    if (code == Success)
        failures.remove(operationIn(order));
    else
        failures.insert(operationIn(order), {static_cast<ErrorCode>(code), times});
    return Success;
}

ErrorCode DeviceGate::setDelay(const Values &order)
{
    bool isNumber = false;
    const int ms = order.value(QStringLiteral("ms")).toInt(&isNumber);
    if (!isNumber || ms < 0)
        return BadValue;
    const Lock lock(mutex);
    delaysMs.insert(operationIn(order), ms);
    return Success;
}

ErrorCode DeviceGate::setVanished(const Values &order)
{
    if (!order.contains(QStringLiteral("vanished")))
        return BadValue;
    const Lock lock(mutex);
    vanished = order.value(QStringLiteral("vanished")).toBool();
    connected = false;
    wake();
    return Success;
}

ErrorCode DeviceGate::getVanished(Values &values) const
{
    const Lock lock(mutex);
    values.insert(QStringLiteral("vanished"), vanished);
    return Success;
}

ErrorCode DeviceGate::enter(Lock &lock, const QString &operation)
{
    const std::chrono::milliseconds delay = delayOf(operation);
    if (delay.count() > 0)
        waitUntil(lock, Clock::now() + delay, [] { return false; });
    if (vanished)
        return DeviceVanished;
    if (!connected)
        return NotConnected;
    return takeFailure(operation);
}

std::chrono::milliseconds DeviceGate::delayOf(const QString &operation) const
{
    return std::chrono::milliseconds(delaysMs.value(operation, delaysMs.value(QString())));
}

ErrorCode DeviceGate::takeFailure(const QString &operation)
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

} // namespace VirtualScanner
