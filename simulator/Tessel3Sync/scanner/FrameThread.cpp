#include "scanner/FrameThread.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

namespace {

constexpr TimePoint atOnce = TimePoint::min();

} // namespace

FrameThread::FrameThread(ScannerView &served, PictureSource &source)
    : scanner(served)
    , pictures(&source)
{
}

void FrameThread::awaitCallback(Lock &lock)
{
    gate.await(lock);
}

std::optional<TimePoint> FrameThread::step(Lock &lock)
{
    scanner.catchUp();
    if (const auto event = scanner.takeEvent()) {
        deliverEvent(lock, *event);
        return atOnce;
    }
    const Session session = scanner.session();
    const auto due = session ? serveScan(lock, session) : std::nullopt;
    const auto change = scanner.nextChange();
    return due && change ? std::min(due, change) : due ? due : change;
}

void FrameThread::deliverEvent(Lock &lock, const StatusBytes &event)
{
    const Callbacks registered = scanner.callbacks();
    if (!registered.status)
        return;
    callHost(lock, [&] {
        const void *context = registered.statusContext;
        registered.status(context, event.first, event.second);
    });
}

std::optional<TimePoint> FrameThread::serveScan(Lock &lock, const Session &session)
{
    SessionClock &clock = session->clock;
    if (clock.isPaused()) {
        prepareScene(lock, session, scanner.shot());
        return atOnce;
    }
    const DueFrame *frame = clock.takeNext(scanner.now());
    if (!frame)
        return clock.nextDue();
    if (scanner.now() < clock.currentReady())
        return clock.currentReady();
    finishFrame(lock, session, *frame);
    return atOnce;
}

void FrameThread::finishFrame(Lock &lock, const Session &session, const DueFrame &due)
{
    // A copy: the clock's own ends with the session.
    const DueFrame frame = due;
    SessionClock &clock = session->clock;
    if (frame.fault.drop || frame.fault.disconnect) {
        clock.drop(&Account::planned);
        if (frame.fault.disconnect)
            scanner.loseConnection(frame.fault.backAfterMs);
        return;
    }
    if (!scanner.callbacks().scan) {
        clock.drop(&Account::noCallback);
        return;
    }
    Delivery delivery = takePicture(lock, session, frame);
    scanner.catchUp();
    if (scanner.session() != session)
        return; // it was counted when the session ended
    const Callbacks registered = scanner.callbacks();
    if (!registered.scan) {
        clock.drop(&Account::noCallback);
        return;
    }
    clock.deliver();
    deliver(lock, registered, delivery);
}

/// The clock is paused meanwhile: a real scanner has nothing to prepare.
void FrameThread::prepareScene(Lock &lock, const Session &session, const Shot &shot)
{
    session->clock.pause(scanner.now());
    lock.unlock();
    pictures->prepare(shot);
    lock.lock();
    session->clock.resume(scanner.now());
}

Delivery FrameThread::takePicture(Lock &lock, const Session &session, const DueFrame &frame)
{
    Shot shot = *frame.shown;
    shot.frame = frame.number;
    if (!pictures->isReady(shot))
        prepareScene(lock, session, shot);
    lock.unlock();
    Delivery delivery;
    for (auto &image : pictures->take(shot))
        delivery.images.push_back(image.data());
    delivery.width = shot.width;
    delivery.height = shot.height;
    delivery.numbers.assign(delivery.images.size(), frame.reportedNumber);
    applyFault(delivery, frame.fault);
    lock.lock();
    return delivery;
}

void FrameThread::deliver(Lock &lock, const Callbacks &registered, Delivery &delivery)
{
    callHost(lock, [&] {
        const void *context = registered.scanContext;
        registered.scan(context, delivery.images, delivery.width, delivery.height,
                        delivery.numbers);
    });
}

void FrameThread::callHost(Lock &lock, const std::function<void()> &callback)
{
    scanner.setHostBusy(true);
    gate.call(lock, scanner.isHostile(), callback);
    scanner.catchUp();
    scanner.setHostBusy(false);
}

} // namespace Tessel3SyncSimulator
