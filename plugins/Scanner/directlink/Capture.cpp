#include "Capture.h"

#include "Errors.h"
#include "FrameQueue.h"
#include "ScanSession.h"
#include "Thrown.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <optional>

namespace Scanner {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int longestTimeoutMs = 3600000;
constexpr milliseconds quietTime(250);

struct CaptureRequest
{
    CaptureRequest(const Parameters &read, DirectLink &link)
    {
        read.allowOnly(QStringLiteral("A scan"),
                       ScanRequest::keys() + QStringList{QStringLiteral("frames"),
                                                         QStringLiteral("keep"),
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

/// The next frame, or none if it does not come in time. A scanner that is quiet for a while is
/// asked whether it is still there.
std::optional<Frame> nextFrame(FrameQueue &queue, DirectLink &link, milliseconds limit)
{
    const auto deadline = steady_clock::now() + limit;
    while (true) {
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
        if (std::optional<Frame> frame = queue.next(std::min(left, quietTime)))
            return frame;
        if (const std::optional<ScanEnd> end = queue.cancelled())
            raise(CameraFailed, end->text);
        link.ifLost([&] { queue.cancel(lostConnection()); });
        if (left <= quietTime && !queue.cancelled())
            return std::nullopt;
    }
}

void receiveFrames(FrameQueue &queue, DirectLink &link, const CaptureRequest &request,
                   const Publish &publish, QVariantList &images)
{
    for (int arrived = 0; arrived < request.frames; ++arrived) {
        const std::optional<Frame> frame = nextFrame(queue, link, request.limit);
        if (!frame)
            raise(CameraFailed,
                  QStringLiteral("The scanner fell silent: %1 of %2 frames came, then none for "
                                 "%3 ms")
                      .arg(arrived)
                      .arg(request.frames)
                      .arg(request.limit.count()));
        const QVariantList maps = imageMaps(*frame, queue.start());
        if (request.keep)
            images += maps;
        publish(QStringLiteral("frameArrived"), maps);
        publish(QStringLiteral("progress"), {queue.account().toMap()});
    }
}

} // namespace

QVariantList captureScan(DirectLink &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish)
{
    const CaptureRequest request(Parameters(parameters), link);
    const auto queue = std::make_shared<FrameQueue>(request.frames);
    QVariantList images;
    ScanEnd end;
    std::exception_ptr thrown;
    {
        const ScanSession session(link, receiver, queue, request.scan);
        try {
            receiveFrames(*queue, link, request, publish, images);
        } catch (...) {
            thrown = std::current_exception();
            end = queue->cancelled().value_or(ScanEnd{EndReason::Failed, thrownText()});
        }
    }
    queue->close();
    publishEnd(publish, end, queue->account());
    if (thrown)
        std::rethrow_exception(thrown);
    return images;
}

} // namespace Scanner
