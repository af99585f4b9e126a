#include "Stream.h"

#include <KvSyncTool/Exception.h>

#include <chrono>
#include <exception>
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
    read.allowOnly(QStringLiteral("A scan"), namesOf(ScanRequest::parameters()));
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
    events.whenQuiet(quietTime, check);
}

FrameAccount Stream::stop(const ScanEnd &end)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!queue)
        return FrameAccount();
    queue->cancel(end);
    return finishCancelled(lock);
}

void Stream::finish()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!queue || !queue->cancelled())
        return;
    try {
        finishCancelled(lock);
    } catch (const KvSyncTool::Exception &) {
        // The end was told as an event.
    }
}

FrameAccount Stream::finishCancelled(const std::lock_guard<std::mutex> &)
{
    ScanEnd end = *queue->cancelled();
    std::exception_ptr refusal;
    try {
        session->stop();
    } catch (const KvSyncTool::Exception &) {
        if (end.reason == EndReason::Stopped) {
            refusal = std::current_exception();
            end = endOfThrown(link);
        }
    }
    session.reset();
    events.whenQuiet(quietTime, nullptr);
    queue->close();
    const FrameAccount account = queue->account();
    queue.reset();
    events.post([this, end, account] { publishEnd(publish, end, account); });
    if (refusal)
        std::rethrow_exception(refusal);
    return account;
}

void Stream::passFrame(FrameQueue &frames)
{
    if (const std::optional<Frame> frame = frames.next(std::chrono::milliseconds(0)))
        publish(QStringLiteral("frameArrived"), imageMaps(*frame, frames.start()));
}

} // namespace Scanner
