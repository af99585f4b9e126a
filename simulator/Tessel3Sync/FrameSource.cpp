#include "FrameSource.h"

#include "Simulator.h"
#include "render/Random.h"

namespace Tessel3SyncSimulator {

namespace {

constexpr int bufferedFrames = 4;

} // namespace

FrameSource::FrameSource(Simulator &owner)
    : simulator(owner)
{
}

void FrameSource::start()
{
    if (!thread.joinable())
        thread = std::thread([this] { run(); });
    wake();
}

void FrameSource::wake()
{
    changed.notify_all();
}

void FrameSource::awaitCallback(Lock &lock)
{
    gate.await(lock);
}

void FrameSource::awaitIdle(Lock &lock)
{
    if (gate.isHere())
        return;
    gate.await(lock);
    changed.wait(lock, [&] { return !makingFrame; });
}

void FrameSource::run()
{
    Lock lock(simulator.mutex);
    for (;;)
        work(lock);
}

/// Does the next thing there is to do, or waits for one.
void FrameSource::work(Lock &lock)
{
    const Connection &connection = simulator.connection;
    if (simulator.backAt && Clock::now() >= *simulator.backAt)
        simulator.attach();
    else if (!connection.events.empty())
        deliverEvent(lock);
    else if (connection.trigger.runs())
        followTrigger(lock);
    else
        idle(lock);
}

void FrameSource::idle(Lock &lock)
{
    if (!simulator.backAt) {
        changed.wait(lock);
        return;
    }
    const Clock::time_point until = *simulator.backAt;
    changed.wait_until(lock, until);
}

void FrameSource::deliverEvent(Lock &lock)
{
    Connection &connection = simulator.connection;
    const StatusBytes event = connection.events.front();
    connection.events.pop_front();
    const Callbacks registered = connection.callbacks;
    if (!registered.status)
        return;
    gate.call(lock, simulator.isHostile(), [&] {
        const void *context = registered.statusContext;
        registered.status(context, event.first, event.second);
    });
    dropOverdue(&Account::hostSlow);
}

/// Whether the trigger is still the one that the thread is following.
bool FrameSource::follows() const
{
    const Trigger &trigger = simulator.connection.trigger;
    return trigger.runs() && trigger.session == session;
}

void FrameSource::followTrigger(Lock &lock)
{
    const Trigger &trigger = simulator.connection.trigger;
    if (trigger.session != session) {
        beginSession(lock);
        return;
    }
    if (trigger.periodMs != period.count()) {
        period = std::chrono::milliseconds(trigger.periodMs);
        lastTick = Clock::now();
    }
    const Clock::time_point due = nextDue();
    if (Clock::now() < due) {
        changed.wait_until(lock, due);
        return;
    }
    dropOverdue(&Account::simulatorSlow);
    if (!follows())
        return;
    makingFrame = true;
    makeFrame(lock);
    makingFrame = false;
    changed.notify_all();
}

/// Making the scene ready is no part of the scanner's time: the clock starts afterwards.
void FrameSource::beginSession(Lock &lock)
{
    session = simulator.connection.trigger.session;
    burst = 0;
    const Shot shot = nextShot();
    lock.unlock();
    Picture::prepare(shot);
    lock.lock();
    lastTick = Clock::now();
}

/// A hostile scanner holds frames back and sends them together.
FrameSource::Clock::time_point FrameSource::nextDue()
{
    if (burst == 0) {
        const auto frame = static_cast<std::uint32_t>(simulator.connection.trigger.frame);
        const std::uint64_t dice = scramble(simulator.setup.seed, frame);
        burst = simulator.isHostile() ? 1 + static_cast<int>(dice % bufferedFrames) : 1;
    }
    return lastTick + burst * period;
}

Shot FrameSource::nextShot() const
{
    const Connection &connection = simulator.connection;
    const bool color = connection.trigger.mode != Tessel3Sync::CAMERA_TRIGGER_MODE_NO_COLOR;
    Shot shot;
    shot.frame = connection.trigger.frame + 1;
    shot.width = simulator.setup.width;
    shot.height = simulator.setup.height;
    shot.seed = simulator.setup.seed;
    shot.tableDegrees = simulator.tableDegrees;
    shot.purpose = color ? Purpose::ColorScan : Purpose::Scan;
    shot.light = connection.light;
    for (const ConnectedCamera &camera : connection.cameras) {
        if (color || camera.kind != CameraKind::Color)
            shot.cameras.push_back(camera);
    }
    return shot;
}

/// Gives out the next frame number, with what is planned for it.
FrameFault FrameSource::nextFrame()
{
    lastTick += period;
    const FrameFault *planned = simulator.faultOf(++simulator.connection.trigger.frame);
    return planned ? *planned : FrameFault();
}

void FrameSource::makeFrame(Lock &lock)
{
    const Connection &connection = simulator.connection;
    const Shot shot = nextShot();
    const FrameFault fault = nextFrame();
    --burst;
    const Cause lateness = fault.delayMs > 0 ? &Account::planned : &Account::simulatorSlow;
    changed.wait_for(lock, std::chrono::milliseconds(fault.delayMs), [&] { return !follows(); });
    if (dropIfPlanned(fault)) {
        dropOverdue(lateness);
        return;
    }
    if (connection.callbacks.scan && takePicture(lock, shot))
        lastTick = Clock::now();
    if (fault.corrupt)
        picture.corrupt();

    if (!follows()) {
        drop(&Account::stopped);
        return;
    }
    dropOverdue(lateness);
    if (!connection.callbacks.scan) {
        drop(&Account::noCallback);
        return;
    }
    deliver(lock, shot);
    dropOverdue(&Account::hostSlow);
}

/// Returns whether the scene had to be made ready for it.
bool FrameSource::takePicture(Lock &lock, const Shot &shot)
{
    lock.unlock();
    const bool prepared = Picture::prepare(shot);
    picture.take(shot);
    lock.lock();
    return prepared;
}

void FrameSource::deliver(Lock &lock, const Shot &shot)
{
    const Callbacks registered = simulator.connection.callbacks;
    ++counted.produced;
    ++counted.delivered;
    gate.call(lock, simulator.isHostile(), [&] {
        std::vector<unsigned char *> images;
        for (auto &image : picture.images())
            images.push_back(image.data());
        std::vector<int> perImage(images.size(), shot.frame);
        const void *context = registered.scanContext;
        registered.scan(context, images, shot.width, shot.height, perImage);
    });
}

void FrameSource::drop(Cause cause)
{
    ++counted.produced;
    ++(counted.*cause);
}

/// Returns whether the frame is lost, and the connection perhaps with it.
bool FrameSource::dropIfPlanned(const FrameFault &fault)
{
    if (!fault.drop && !fault.disconnect)
        return false;
    drop(&Account::planned);
    if (fault.disconnect && follows())
        simulator.detach(fault.backAfterMs);
    return true;
}

/// The buffers hold a few frames that the host has not taken; what was due before those is lost.
void FrameSource::dropOverdue(Cause cause)
{
    const Clock::time_point oldest = Clock::now() - bufferedFrames * period;
    while (follows() && lastTick + period < oldest) {
        if (!dropIfPlanned(nextFrame()))
            drop(cause);
    }
}

} // namespace Tessel3SyncSimulator
