#include "FrameQueue.h"

#include <utility>

namespace Scanner {

namespace {

constexpr std::size_t mostWaiting = 8;

} // namespace

FrameQueue::FrameQueue(int framesAskedFor)
    : framesAsked(framesAskedFor)
    , frames(framesAskedFor)
{
}

void FrameQueue::whenTaken(std::function<void()> notify)
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

} // namespace Scanner
