#include "FrameDelivery.h"

#include <new>
#include <system_error>
#include <utility>

namespace VirtualScanner {

namespace {

QByteArray renderIfThereIsMemory(const TakenFrame &frame, int sensor)
{
    try {
        return renderImage(frame.settings, sensor, frame.number);
    } catch (const std::bad_alloc &) {
        return {}; // one frame is lost; what leaves a thread would end the process
    }
}

} // namespace

FrameDelivery::FrameDelivery(DeviceGate &deviceGate, std::vector<CameraSensor> &cameraSensors)
    : gate(deviceGate)
    , sensors(cameraSensors)
{
}

FrameDelivery::~FrameDelivery()
{
    if (!thread.joinable())
        return;
    {
        const DeviceGate::Lock lock = gate.lock();
        ending = true;
    }
    gate.wake();
    thread.join(); // without the lock: the thread needs it to end
}

bool FrameDelivery::start()
{
    if (thread.joinable())
        return true;
    try {
        thread = std::thread([this] { run(); });
    } catch (const std::system_error &) {
        return false;
    }
    return true;
}

void FrameDelivery::run()
{
    DeviceGate::Lock lock = gate.lock();
    while (!ending) {
        if (!renderOne(lock))
            gate.idleUntil(lock, nextFrameTime());
    }
}

bool FrameDelivery::renderOne(DeviceGate::Lock &lock)
{
    for (std::size_t tried = 0; tried < sensors.size(); ++tried) {
        const std::size_t sensor = turn;
        turn = (turn + 1) % sensors.size();
        sensors[sensor].takeDue(Clock::now());
        const FramePointer frame = sensors[sensor].nextToRender();
        if (!frame)
            continue;
        lock.unlock();
        QByteArray pixels = renderIfThereIsMemory(*frame, static_cast<int>(sensor));
        lock.lock();
        frame->pixels = std::move(pixels);
        frame->isReady = true;
        gate.wake();
        return true;
    }
    return false;
}

Clock::time_point FrameDelivery::nextFrameTime() const
{
    // Far enough to be no load, near enough for every clock.
    Clock::time_point next = Clock::now() + std::chrono::hours(1);
    for (const CameraSensor &sensor : sensors)
        next = sensor.nextFrameTime(next);
    return next;
}

} // namespace VirtualScanner
