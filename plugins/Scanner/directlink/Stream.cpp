#include "Stream.h"

#include <chrono>
#include <utility>

namespace Scanner {

Stream::Stream(DirectLink &directLink, FrameReceiver &frameReceiver, EventThread &eventThread,
               Publish publishEvent, std::function<void()> checkConnection)
    : link(directLink)
    , receiver(frameReceiver)
    , events(eventThread)
    , publish(std::move(publishEvent))
    , check(std::move(checkConnection))
{
}

void Stream::start(const QVariantMap &parameters)
{
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A scan"), ScanRequest::keys());
    const ScanRequest request = ScanRequest::from(read, link);
    const auto newQueue = std::make_shared<FrameQueue>(withoutEnd);
    newQueue->whenTaken([this, waiting = std::weak_ptr<FrameQueue>(newQueue)] {
        events.post([this, waiting] {
            if (const std::shared_ptr<FrameQueue> frames = waiting.lock())
                passFrame(*frames);
        });
    });
    const std::lock_guard<std::mutex> lock(mutex);
    session = std::make_unique<ScanSession>(link, receiver, newQueue, request);
    queue = newQueue;
    events.whenQuiet(check);
}

FrameAccount Stream::finish()
{
    const std::lock_guard<std::mutex> lock(mutex);
    const std::optional<ScanEnd> end = queue ? queue->cancelled() : std::nullopt;
    if (!end)
        return FrameAccount();
    session.reset();
    events.whenQuiet(nullptr);
    queue->close();
    FrameAccount account = queue->account();
    queue.reset();
    events.post([this, end, account] { publishEnd(publish, *end, account); });
    return account;
}

void Stream::passFrame(FrameQueue &frames)
{
    if (const std::optional<Frame> frame = frames.next(std::chrono::milliseconds(0)))
        publish(QStringLiteral("frameArrived"), imageMaps(*frame, frames.start()));
}

} // namespace Scanner
