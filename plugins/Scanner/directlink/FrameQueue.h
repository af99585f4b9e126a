#ifndef SCANNER_FRAMEQUEUE_H
#define SCANNER_FRAMEQUEUE_H

#include "FrameReceiver.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace Scanner {

/// Stands for a number of frames asked for.
constexpr int withoutEnd = 0;

/// The frames of one scan on their way from the library's thread to the one that gives them to the
/// host: a few at most, since the host may be slow. It keeps the scan's account.
class FrameQueue : public FrameSink
{
public:
    explicit FrameQueue(int framesAskedFor);

    /// `notify` runs on the library's thread after each frame that was taken; to be set before any.
    void whenTaken(std::function<void()> notify);

    /// A frame that is not whole, or finds too many others waiting, is dropped.
    void take(Frame frame) override;
    /// The first end that is told holds.
    void cancel(const ScanEnd &end) override;

    /// The next frame, or none if it does not come in time or the scan is over. A scan that was
    /// stopped is over at once; other ends let the frames through that came before.
    std::optional<Frame> next(std::chrono::milliseconds limit);
    /// How the scan was cancelled, if it was.
    std::optional<ScanEnd> cancelled() const;
    /// Frames that still wait are dropped, and no further one is taken.
    void close();

    FrameAccount account() const;
    std::chrono::steady_clock::time_point start() const { return startTime; }

private:
    bool isWanted() const;

    const int framesAsked;
    const std::chrono::steady_clock::time_point startTime = std::chrono::steady_clock::now();
    std::function<void()> taken;

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Frame> waiting;
    int accepted = 0; ///< of the frames asked for
    std::optional<ScanEnd> end;
    bool isClosed = false;
    FrameAccount frames;
};

} // namespace Scanner

#endif
