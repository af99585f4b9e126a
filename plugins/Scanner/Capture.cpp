#include "Capture.h"

#include "Errors.h"
#include "ScanSession.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <optional>
#include <utility>

namespace Scanner {

namespace {

using std::chrono::milliseconds;

constexpr int mostFrames = 10000;
constexpr int longestTimeoutMs = 3600000;

int defaultTimeoutMs(int periodMs)
{
    return 5000 + 10 * periodMs;
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

} // namespace

QVariantList captureScan(DirectLink &link, FrameReceiver &receiver, const QVariantMap &values,
                         const Publish &publish)
{
    const Parameters parameters(values);
    const int frames = parameters.wholeNumber(QStringLiteral("frames"), 1, mostFrames);
    const ScanRequest request = ScanRequest::from(parameters, link);
    const milliseconds limit(
        parameters.optionalWholeNumber(QStringLiteral("timeoutMs"), 1, longestTimeoutMs)
            .value_or(defaultTimeoutMs(request.periodMs)));

    const auto queue = std::make_shared<CaptureQueue>(frames);
    const ScanSession session(link, receiver, queue, request);
    QVariantList images;
    FrameAccount account;
    while (account.delivered() < frames) {
        const std::optional<Frame> frame = queue->next(limit);
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

QVariantList progressOf(const FrameAccount &account, int frames)
{
    return {QVariantMap{{QStringLiteral("delivered"), account.delivered()},
                        {QStringLiteral("dropped"), account.dropped()},
                        {QStringLiteral("frames"), frames}}};
}

} // namespace Scanner
