#ifndef SCANNER_STREAM_H
#define SCANNER_STREAM_H

#include "EventThread.h"
#include "Publish.h"
#include "ScanSession.h"

#include <memory>
#include <mutex>

namespace Scanner {

/// A scan that runs until it is stopped; its frames reach the host as events.
class Stream
{
public:
    Stream(DirectLink &directLink, FrameReceiver &frameReceiver, EventThread &eventThread,
           Publish publishFrame);

    /// Takes what ScanRequest reads. Publishes "frameArrived" on the event thread; frames that find
    /// eight others waiting for the host are dropped. Throws `CameraFailed`, also if a scan runs.
    void start(const QVariantMap &parameters);

    /// Stops the scan and answers with {"delivered", "dropped"}; an event that is under way may
    /// still reach the host. Nothing happens, and both are 0, if none runs.
    QVariantMap stop();

private:
    class Relay;

    DirectLink &link;
    FrameReceiver &receiver;
    EventThread &events;
    Publish publish;
    std::mutex mutex;
    std::shared_ptr<Relay> relay;
    std::unique_ptr<ScanSession> session;
};

} // namespace Scanner

#endif
