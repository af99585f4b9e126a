#include "Capture.h"

#include "Errors.h"
#include "Parameters.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace Scanner::DirectLink {

using CameraSpace::ImageBlock;
using KvSyncCore::DeviceController;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int longestTimeoutMs = 3600000;

struct CaptureRequest
{
    CaptureRequest(const Parameters &read, Connection &link)
    {
        read.allowOnly(QStringLiteral("A scan"),
                       namesOf(ScanRequest::parameters()) +
                           QStringList{QStringLiteral("frames"), QStringLiteral("keep"),
                                       QStringLiteral("timeoutMs")});
        frames = read.wholeNumber(QStringLiteral("frames"), 1, mostFrames);
        keep = read.flag(QStringLiteral("keep"), true);
        const auto limitMs =
            read.optionalWholeNumber(QStringLiteral("timeoutMs"), 1, longestTimeoutMs);
        scan = ScanRequest::from(read, link);
        limit = milliseconds(limitMs.value_or(10000 + 10 * scan.periodMs));
    }

    int frames;
    bool keep;
    ScanRequest scan;
    milliseconds limit{0};
};

class CapturedFrames : public FrameSource
{
public:
    CapturedFrames(Connection &connection, FrameReceiver &receiver, const CaptureRequest &request)
        : link(connection)
        , queue(std::make_shared<FrameQueue>(request.frames))
        , frames(request.frames)
        , limit(request.limit)
        , session(link, receiver, queue, request.scan)
    {
    }

    QVariantList next() override
    {
        const std::optional<Frame> frame = awaitFrame();
        if (!frame)
            raise(CameraFailed,
                  QStringLiteral("The scanner fell silent: %1 of %2 frames came, then none for "
                                 "%3 ms")
                      .arg(arrived)
                      .arg(frames)
                      .arg(limit.count()));
        ++arrived;
        return imageMaps(*frame, queue->start());
    }

    void stop() override
    {
        session.stop();
        queue->close();
    }

    ScanEnd thrownEnd() override
    {
        const std::optional<ScanEnd> end = queue->cancelled();
        return end ? *end : endOfThrown(link);
    }

    FrameAccount account() const override { return queue->account(); }

private:
    /// The next frame, or none if it does not come in time. A scanner that is quiet for a while is
    /// asked whether it is still there.
    std::optional<Frame> awaitFrame()
    {
        const auto deadline = steady_clock::now() + limit;
        while (true) {
            const auto left =
                std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
            if (std::optional<Frame> frame = queue->next(std::min(left, quietTime)))
                return frame;
            if (const std::optional<ScanEnd> end = queue->cancelled())
                raise(CameraFailed, end->text);
            link.ifLost([this] { queue->cancel(lostConnection()); });
            if (left <= quietTime && !queue->cancelled())
                return std::nullopt;
        }
    }

    Connection &link;
    const std::shared_ptr<FrameQueue> queue;
    const int frames;
    const milliseconds limit;
    int arrived = 0;
    Session session;
};

} // namespace

QVariantList captureScan(Connection &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish)
{
    const CaptureRequest request(Parameters(parameters), link);
    CapturedFrames source(link, receiver, request);
    return runScan(source, request.frames, request.keep, publish);
}

namespace {

constexpr int scanRoute = 2;
constexpr int highestRoute = 255;

std::vector<std::unique_ptr<ImageBlock>> grabBlocks(Connection &link, unsigned int route)
{
    QList<ImageBlock *> grabbed;
    link.run(QStringLiteral("The scanner refuses a color snapshot"),
             [&](DeviceController &c) { return c.grabImage(Connection::handle, route, grabbed); });
    return {grabbed.begin(), grabbed.end()};
}

} // namespace

QVariantList captureSnapshot(Connection &link, const QVariantMap &parameters)
{
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A color snapshot"), {QStringLiteral("route")});
    const int route =
        read.optionalWholeNumber(QStringLiteral("route"), 0, highestRoute).value_or(scanRoute);
    QVariantList images;
    for (const auto &block : grabBlocks(link, static_cast<unsigned int>(route)))
        images.append(
            imageMap(Image{images.size(), block->tag, block->width, block->height, block->data}));
    return images;
}

Stream::Stream(Connection &connection, FrameReceiver &frameReceiver, EventThread &eventThread,
               Publish publishEvent, std::function<void()> checkConnection)
    : link(connection)
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
    newQueue->onFrame([this, waiting = std::weak_ptr<FrameQueue>(newQueue)] {
        events.post([this, waiting] {
            if (const std::shared_ptr<FrameQueue> frames = waiting.lock())
                passFrame(*frames);
        });
    });
    const std::lock_guard<std::mutex> lock(mutex);
    session = std::make_unique<Session>(link, receiver, newQueue, request);
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
    FrameAccount account = queue->account();
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

} // namespace Scanner::DirectLink
