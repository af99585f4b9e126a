#include "Capture.h"

#include "Errors.h"
#include "FrameQueue.h"
#include "ScanSession.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace Scanner {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int longestTimeoutMs = 3600000;

struct CaptureRequest
{
    CaptureRequest(const Parameters &read, DirectLink &link)
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

class LinkFrames : public FrameSource
{
public:
    LinkFrames(DirectLink &directLink, FrameReceiver &receiver, const CaptureRequest &request)
        : link(directLink)
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
        queue->close();
        session.stop();
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

    DirectLink &link;
    const std::shared_ptr<FrameQueue> queue;
    const int frames;
    const milliseconds limit;
    int arrived = 0;
    ScanSession session;
};

} // namespace

QVariantList captureScan(DirectLink &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish)
{
    const CaptureRequest request(Parameters(parameters), link);
    LinkFrames source(link, receiver, request);
    return runScan(source, request.frames, request.keep, publish);
}

} // namespace Scanner
