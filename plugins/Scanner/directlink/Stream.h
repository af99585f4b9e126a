#ifndef SCANNER_STREAM_H
#define SCANNER_STREAM_H

#include "EventThread.h"
#include "FrameQueue.h"
#include "Publish.h"
#include "ScanSession.h"

#include <functional>
#include <memory>
#include <mutex>

namespace Scanner {

/// A scan that runs until it is cancelled; its frames reach the host as events.
class Stream
{
public:
    /// `checkConnection` runs on the event thread whenever a running scan is quiet.
    Stream(DirectLink &directLink, FrameReceiver &frameReceiver, EventThread &eventThread,
           Publish publishEvent, std::function<void()> checkConnection);

    /// Takes what ScanRequest reads. Publishes "frameArrived" on the event thread; frames that find
    /// eight others waiting for the host are dropped. Throws `CameraFailed`, also if a scan runs.
    void start(const QVariantMap &parameters);

    /// Stops a scan that runs, publishes "scanEnded" on the event thread and returns the scan's
    /// account; an event that is under way may still reach the host. Throws what the scanner
    /// refused of that. Without a scan nothing happens, and the account is empty.
    FrameAccount stop(const ScanEnd &end);
    /// The same for a scan that the receiver cancelled already; throws nothing.
    void finish();

private:
    FrameAccount finishCancelled(const std::lock_guard<std::mutex> &lock);
    void passFrame(FrameQueue &frames);

    DirectLink &link;
    FrameReceiver &receiver;
    EventThread &events;
    const Publish publish;
    const std::function<void()> check;
    std::mutex mutex;
    std::shared_ptr<FrameQueue> queue;
    std::unique_ptr<ScanSession> session;
};

} // namespace Scanner

#endif
