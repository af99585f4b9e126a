#include "Capture.h"

#include "Errors.h"
#include "ScanSession.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <optional>
#include <utility>

namespace Scanner {

namespace {

using KvSyncCore::DeviceController;
using std::chrono::milliseconds;

constexpr int mostFrames = 10000;
constexpr int longestTimeoutMs = 3600000;
constexpr milliseconds quietTime(250);

int defaultTimeoutMs(int periodMs)
{
    return 10000 + 10 * periodMs;
}

/// Frames on their way from the library's thread to the one that captures.
class CaptureQueue : public FrameSink
{
public:
    explicit CaptureQueue(int frames)
        : wanted(frames)
    {
    }

    void take(Frame frame) override
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            if (wanted == 0)
                return;
            waiting.push_back(std::move(frame));
            --wanted;
        }
        changed.notify_one();
    }

    void cancel(const QString &reason) override
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            cancelled = reason;
        }
        changed.notify_one();
    }

    /// The next frame, or none if it does not come in time. Throws `CameraFailed` once cancelled.
    std::optional<Frame> next(milliseconds limit)
    {
        std::unique_lock<std::mutex> lock(mutex);
        const bool inTime =
            changed.wait_for(lock, limit, [this] { return cancelled || !waiting.empty(); });
        if (!inTime)
            return std::nullopt;
        if (cancelled)
            raise(CameraFailed, *cancelled);
        Frame frame = std::move(waiting.front());
        waiting.pop_front();
        return frame;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Frame> waiting;
    int wanted;
    std::optional<QString> cancelled;
};

/// The next frame, or none if it does not come in time. A scanner that is quiet for a while is
/// asked whether it is still there.
std::optional<Frame> nextFrame(CaptureQueue &queue, DirectLink &link, milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (true) {
        const auto left =
            std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now());
        if (std::optional<Frame> frame = queue.next(std::min(left, quietTime)))
            return frame;
        if (left <= quietTime)
            return std::nullopt;
        ErrorCode answer = Success;
        int cameras = 0;
        link.callIfOpen([&](DeviceController &c) { answer = c.getConnectCameraCount(cameras); });
        check(answer == Success ? Success : CameraFailed,
              QStringLiteral("The connection to the scanner was lost during the scan"));
    }
}

} // namespace

QVariantList captureScan(DirectLink &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish)
{
    const Parameters read(parameters);
    const int frames = read.wholeNumber(QStringLiteral("frames"), 1, mostFrames);
    const ScanRequest request = ScanRequest::from(read, link);
    const milliseconds limit(
        read.optionalWholeNumber(QStringLiteral("timeoutMs"), 1, longestTimeoutMs)
            .value_or(defaultTimeoutMs(request.periodMs)));

    const auto queue = std::make_shared<CaptureQueue>(frames);
    const ScanSession session(link, receiver, queue, request);
    QVariantList images;
    FrameAccount account;
    while (account.delivered() < frames) {
        const std::optional<Frame> frame = nextFrame(*queue, link, limit);
        if (!frame)
            raise(CameraFailed,
                  QStringLiteral("The scanner fell silent: %1 of %2 frames came, then none for "
                                 "%3 ms")
                      .arg(account.delivered())
                      .arg(frames)
                      .arg(limit.count()));
        account.add(*frame);
        const QVariantList maps = imageMaps(*frame);
        images += maps;
        publish(QStringLiteral("frameArrived"), maps);
        publish(QStringLiteral("progress"), progressOf(account, frames));
    }
    return images;
}

} // namespace Scanner
