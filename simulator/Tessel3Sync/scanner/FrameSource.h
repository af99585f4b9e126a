// What the frame thread does: it makes frames and calls the host back, one after another.
#ifndef TESSEL3SYNCSIMULATOR_FRAMESOURCE_H
#define TESSEL3SYNCSIMULATOR_FRAMESOURCE_H

#include "scanner/CallbackGate.h"
#include "scanner/Delivery.h"
#include "scanner/PictureSource.h"
#include "scanner/ScannerSide.h"

namespace Tessel3SyncSimulator {

/// All operations are called with the simulator's mutex held.
class FrameSource final : public Work
{
public:
    FrameSource(ScannerSide &served, PictureSource &camera);

    std::optional<TimePoint> step(Lock &lock) override;

    /// Waits for the callback that is running, if any, unless called from it.
    void awaitCallback(Lock &lock);

    /// Whether the host is inside a callback.
    bool isHostBusy() const { return hostBusy; }

    /// Has the pictures taken by another from now on.
    void usePictures(PictureSource &camera) { pictures = &camera; }

private:
    using Session = std::shared_ptr<ScanSession>;

    void deliverEvent(Lock &lock, const StatusBytes &event);
    std::optional<TimePoint> follow(Lock &lock, const Session &session);
    void makeFrame(Lock &lock, const Session &session, const DueFrame &due);
    void makeReady(Lock &lock, const Session &session, const Shot &shot);
    Delivery takePicture(Lock &lock, const Session &session, const DueFrame &frame);
    void deliver(Lock &lock, const Callbacks &registered, Delivery &delivery);
    void callHost(Lock &lock, const std::function<void()> &callback);

    ScannerSide &scanner;
    PictureSource *pictures;
    CallbackGate gate;
    bool hostBusy = false;
};

} // namespace Tessel3SyncSimulator

#endif
