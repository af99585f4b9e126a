#include "Callbacks.h"

#include "Errors.h"

#include <utility>

namespace Scanner::DirectLink {

namespace {

constexpr std::size_t mostWaiting = 8;

} // namespace

void FrameReceiver::begin(std::shared_ptr<FrameSink> newSink)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (sink)
        raise(CameraFailed, QStringLiteral("A scan is running already"));
    sink = std::move(newSink);
}

void FrameReceiver::end()
{
    std::shared_ptr<FrameSink> ended; // destroyed without the lock
    const std::lock_guard<std::mutex> lock(mutex);
    ended.swap(sink);
}

void FrameReceiver::cancel(const ScanEnd &end)
{
    if (const std::shared_ptr<FrameSink> running = currentSink())
        running->cancel(end);
}

bool FrameReceiver::isReceiving() const
{
    return currentSink() != nullptr;
}

void FrameReceiver::receive(const void *const &context, std::vector<unsigned char *> &images,
                            const int &width, const int &height, std::vector<int> &numbers) noexcept
{
    runLogged("The end of a scan", [&] {
        const std::shared_ptr<FrameSink> running =
            static_cast<const FrameReceiver *>(context)->currentSink();
        if (!running)
            return;
        try {
            running->take(copyFrame(images, width, height, numbers));
        } catch (...) {
            running->cancel({EndReason::Failed,
                             QStringLiteral("A frame could not be taken: %1").arg(thrownText())});
        }
    });
}

std::shared_ptr<FrameSink> FrameReceiver::currentSink() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return sink;
}

FrameQueue::FrameQueue(int framesAskedFor)
    : framesAsked(framesAskedFor)
    , frames(framesAskedFor)
{
}

void FrameQueue::onFrame(std::function<void()> notify)
{
    taken = std::move(notify);
}

void FrameQueue::take(Frame frame)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!isWanted())
            return;
        frames.came(frame.number());
        if (!frame.isWhole) {
            frames.dropped(DropCause::Unusable);
            return;
        }
        if (waiting.size() >= mostWaiting) {
            frames.dropped(DropCause::HostSlow);
            return;
        }
        waiting.push_back(std::move(frame));
        if (framesAsked != withoutEnd)
            ++accepted;
    }
    changed.notify_one();
    if (taken)
        taken();
}

void FrameQueue::cancel(const ScanEnd &newEnd)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!end)
            end = newEnd;
    }
    changed.notify_one();
}

std::optional<Frame> FrameQueue::next(std::chrono::milliseconds limit)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait_for(lock, limit, [this] { return end || !waiting.empty(); });
    if (waiting.empty() || (end && end->reason == EndReason::Stopped))
        return std::nullopt;
    Frame frame = std::move(waiting.front());
    waiting.pop_front();
    frames.delivered();
    return frame;
}

std::optional<ScanEnd> FrameQueue::cancelled() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return end;
}

void FrameQueue::close()
{
    std::deque<Frame> dropped; // destroyed without the lock
    const std::lock_guard<std::mutex> lock(mutex);
    isClosed = true;
    waiting.swap(dropped);
    frames.dropped(DropCause::Stopped, static_cast<int>(dropped.size()));
}

FrameAccount FrameQueue::account() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return frames;
}

bool FrameQueue::isWanted() const
{
    return !end && !isClosed && (framesAsked == withoutEnd || accepted < framesAsked);
}

bool StatusQueue::push(unsigned char first, unsigned char second)
{
    const std::lock_guard<std::mutex> lock(mutex);
    waiting.push_back({first, second});
    if (waiting.size() <= mostWaiting)
        return true;
    waiting.pop_front();
    ++dropped;
    return false;
}

QVariantMap StatusQueue::pop()
{
    const std::lock_guard<std::mutex> lock(mutex);
    const Status oldest = waiting.front();
    waiting.pop_front();
    QVariantMap map{{QStringLiteral("first"), oldest.first},
                    {QStringLiteral("second"), oldest.second}};
    if (const int before = std::exchange(dropped, 0))
        map.insert(QStringLiteral("dropped"), before);
    return map;
}

} // namespace Scanner::DirectLink
