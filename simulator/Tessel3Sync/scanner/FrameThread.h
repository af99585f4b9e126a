// What the frame thread does: it makes frames and calls the host back, one after another.
#ifndef TESSEL3SYNCSIMULATOR_FRAMETHREAD_H
#define TESSEL3SYNCSIMULATOR_FRAMETHREAD_H

#include "scanner/CallbackGate.h"
#include "scanner/Delivery.h"
#include "scanner/ScannerView.h"

namespace Tessel3SyncSimulator {

/// All operations are called with the simulator's mutex held.
class FrameThread final : public Work
{
public:
    FrameThread(ScannerView &served, PictureSource &source);

    std::optional<TimePoint> step(Lock &lock) override;

    /// Waits for the callback that is running, if any, unless called from it.
    void awaitCallback(Lock &lock);

    /// Has the pictures made by another source from now on.
    void usePictures(PictureSource &source) { pictures = &source; }

private:
    using Session = std::shared_ptr<ScanSession>;

    void deliverEvent(Lock &lock, const StatusBytes &event);
    std::optional<TimePoint> serveScan(Lock &lock, const Session &session);
    void finishFrame(Lock &lock, const Session &session, const DueFrame &due);
    void prepareScene(Lock &lock, const Session &session, const Shot &shot);
    Delivery takePicture(Lock &lock, const Session &session, const DueFrame &frame);
    void deliver(Lock &lock, const Callbacks &registered, Delivery &delivery);
    void callHost(Lock &lock, const std::function<void()> &callback);

    ScannerView &scanner;
    PictureSource *pictures;
    CallbackGate gate;
};

} // namespace Tessel3SyncSimulator

#endif
