#include "FrameSource.h"

#include "Simulator.h"

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
    if (calledFromCallback())
        return;
    const auto running = callbacks;
    changed.wait(lock, [&] { return callbackThread == std::thread::id() || callbacks != running; });
}

void FrameSource::awaitIdle(Lock &lock)
{
    if (calledFromCallback())
        return;
    awaitCallback(lock);
    changed.wait(lock, [&] { return !takingPicture; });
}

bool FrameSource::calledFromCallback() const
{
    return callbackThread == std::this_thread::get_id();
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
    const Trigger &trigger = simulator.connection.trigger;
    if (!trigger.enabled) {
        changed.wait(lock);
        return;
    }
    if (trigger.session != session) {
        beginSession(lock);
        return;
    }
    if (trigger.periodMs != period.count()) {
        period = std::chrono::milliseconds(trigger.periodMs);
        lastTick = Clock::now();
    }
    if (Clock::now() < lastTick + period) {
        changed.wait_until(lock, lastTick + period);
        return;
    }
    dropOverdue(&Account::simulatorSlow);
    makeFrame(lock);
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

/// Making the scene ready is no part of the scanner's time: the clock starts afterwards.
void FrameSource::beginSession(Lock &lock)
{
    session = simulator.connection.trigger.session;
    const Shot shot = nextShot();
    lock.unlock();
    Picture::prepare(shot);
    lock.lock();
    lastTick = Clock::now();
}

/// Returns whether the scene had to be made ready for it.
bool FrameSource::takePicture(Lock &lock, const Shot &shot)
{
    takingPicture = true;
    lock.unlock();
    const bool prepared = Picture::prepare(shot);
    picture.take(shot);
    lock.lock();
    takingPicture = false;
    changed.notify_all();
    return prepared;
}

void FrameSource::makeFrame(Lock &lock)
{
    const Connection &connection = simulator.connection;
    const Shot shot = nextShot();
    ++simulator.connection.trigger.frame;
    lastTick += period;
    if (!connection.callbacks.scan) {
        drop(&Account::noCallback);
        return;
    }

    if (takePicture(lock, shot))
        lastTick = Clock::now();
    if (!connection.trigger.enabled || connection.trigger.session != session) {
        drop(&Account::stopped);
        return;
    }
    dropOverdue(&Account::simulatorSlow);
    if (!connection.callbacks.scan) {
        drop(&Account::noCallback);
        return;
    }
    deliver(lock, shot);
    if (connection.trigger.enabled && connection.trigger.session == session)
        dropOverdue(&Account::hostSlow);
}

void FrameSource::deliver(Lock &lock, const Shot &shot)
{
    const Callbacks callbacksNow = simulator.connection.callbacks;
    ++counted.produced;
    ++counted.delivered;
    callBack(lock, [&] {
        std::vector<unsigned char *> images;
        for (auto &image : picture.images())
            images.push_back(image.data());
        std::vector<int> perImage(images.size(), shot.frame);
        const void *context = callbacksNow.scanContext;
        callbacksNow.scan(context, images, shot.width, shot.height, perImage);
    });
}

/// Runs host code, one callback at a time, with the mutex released.
void FrameSource::callBack(Lock &lock, const std::function<void()> &callback)
{
    ++callbacks;
    callbackThread = std::this_thread::get_id();
    lock.unlock();
    callback();
    lock.lock();
    callbackThread = std::thread::id();
    changed.notify_all();
}

void FrameSource::drop(Cause cause)
{
    ++counted.produced;
    ++(counted.*cause);
}

/// The buffers hold a few frames that the host has not taken; what was due before those is lost.
void FrameSource::dropOverdue(Cause cause)
{
    const Clock::time_point oldest = Clock::now() - bufferedFrames * period;
    while (lastTick + period < oldest) {
        ++simulator.connection.trigger.frame;
        lastTick += period;
        drop(cause);
    }
}

} // namespace Tessel3SyncSimulator
