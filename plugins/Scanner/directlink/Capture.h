#ifndef SCANNER_DIRECTLINK_CAPTURE_H
#define SCANNER_DIRECTLINK_CAPTURE_H

#include "EventThread.h"
#include "Session.h"

#include <functional>
#include <memory>
#include <mutex>

namespace Scanner::DirectLink {

/// Scans until "frames" frames (1 to 1000000000) were delivered and returns one map per image,
/// in order of arrival. Besides it reads what ScanRequest reads; "timeoutMs": how long to wait for
/// the next frame, 10 seconds and ten periods if missing; and "keep": true if missing, which holds
/// all images in memory. Without it the list is empty, and the images of a few frames are held.
///
/// Publishes "frameArrived" (the maps of one delivery), "progress" and "scanEnded" on the calling
/// thread; frames that find eight others waiting for its slots are dropped. Throws
/// `InvalidParameter` for what cannot be used, `ConnectFailed` if the connection was lost before,
/// and `CameraFailed` if the scanner refuses, falls silent, is lost or is stopped from elsewhere.
QVariantList captureScan(Connection &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish);

/// Takes a snapshot with the color camera and returns one map for each plane of its sensor,
/// as captureScan does for an image: "camera" is the plane's place, "frame" the library's number.
/// Reads "route", the library's control route (0 to 255; 2, as in a scan, if missing). Throws
/// `InvalidParameter`, or `CameraFailed` if the scanner refuses.
QVariantList captureSnapshot(Connection &link, const QVariantMap &parameters);

/// A scan that runs until it is cancelled; its frames reach the host as events.
class Stream
{
public:
    /// `checkConnection` runs on the event thread whenever a running scan is quiet.
    Stream(Connection &connection, FrameReceiver &frameReceiver, EventThread &eventThread,
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

    Connection &link;
    FrameReceiver &receiver;
    EventThread &events;
    const Publish publish;
    const std::function<void()> check;
    std::mutex mutex;
    std::shared_ptr<FrameQueue> queue;
    std::unique_ptr<Session> session;
};

} // namespace Scanner::DirectLink

#endif
