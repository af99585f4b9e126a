#include "DeviceGate.h"

#include <utility>

namespace VirtualScanner {

DeviceGate::Call::Call(DeviceGate &passedGate)
    : gate(passedGate)
    , lock(passedGate.mutex)
    , lossesAtEntry(passedGate.losses)
{
    ++gate.calls;
}

DeviceGate::Call::~Call()
{
    --gate.calls;
    gate.wake(); // under the lock: afterwards the gate may be gone
}

bool DeviceGate::Call::isOver() const
{
    return gate.losses != lossesAtEntry;
}

ErrorCode DeviceGate::passAgain(Call &call, const char *step)
{
    call.lock.unlock();
    call.lock.lock();
    return pass(call, step);
}

void DeviceGate::wake()
{
    changed.notify_all();
}

DeviceGate::Lock DeviceGate::lock() const
{
    return Lock(mutex);
}

void DeviceGate::idleUntil(Lock &held, Clock::time_point deadline)
{
    changed.wait_until(held, deadline);
}

bool DeviceGate::isConnected() const
{
    const Lock held = lock();
    return connected;
}

void DeviceGate::lose(const Lock &)
{
    connected = false;
    ++losses;
    for (const std::function<void()> &forget : forgetters)
        forget();
    wake();
}

void DeviceGate::onLoss(std::function<void()> forget)
{
    forgetters.push_back(std::move(forget));
}

void DeviceGate::close()
{
    Lock held = lock();
    closed = true;
    lose(held);
    changed.wait(held, [this] { return calls == 0; });
}

void DeviceGate::setInspector(Inspector asked)
{
    inspector = std::move(asked);
}

int DeviceGate::callsInside(const Lock &) const
{
    return calls;
}

ErrorCode DeviceGate::admit(Call &call, const char *operation)
{
    if (closed || call.isOver())
        return DeviceVanished;
    return inspector ? inspector(call, QString::fromLatin1(operation)) : Success;
}

ErrorCode DeviceGate::pass(Call &call, const char *operation)
{
    const ErrorCode refusal = admit(call, operation);
    if (refusal != Success)
        return refusal;
    return connected ? Success : NotConnected;
}

} // namespace VirtualScanner
