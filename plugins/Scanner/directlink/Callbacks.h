#ifndef SCANNER_DIRECTLINK_CALLBACKS_H
#define SCANNER_DIRECTLINK_CALLBACKS_H

#include "Frame.h"
#include "Scan.h"

#include <QtCore/QVariant>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Scanner::DirectLink {

/// Takes the frames of one scan. Both operations may be called from any thread.
class FrameSink
{
public:
    virtual ~FrameSink() = default;

    /// Runs on the library's thread: it must return at once.
    virtual void take(Frame frame) = 0;
    /// The scan is over: no further frame is wanted.
    virtual void cancel(const ScanEnd &end) = 0;
};

/// Stands behind the library's scan callback. It outlives every scan, as the callback's context
/// must: a library that refuses to remove the callback may call it at any later time.
class FrameReceiver
{
public:
    /// Passes frames on to `sink` from now on. Throws `CameraFailed` if a scan is running: there is
    /// one scanner, and it has one callback.
    void begin(std::shared_ptr<FrameSink> sink);
    /// Frames that still come are ignored.
    void end();
    /// Tells the running scan, if there is one, to end.
    void cancel(const ScanEnd &end);
    bool isReceiving() const;

    /// A Tessel3Sync::ScanCallBack whose context is a FrameReceiver. Whatever goes wrong ends the
    /// scan: nothing may be thrown into the library.
    static void receive(const void *const &context, std::vector<unsigned char *> &images,
                        const int &width, const int &height, std::vector<int> &numbers) noexcept;

private:
    std::shared_ptr<FrameSink> currentSink() const;

    mutable std::mutex mutex;
    std::shared_ptr<FrameSink> sink;
};

/// Stands for a number of frames asked for.
constexpr int withoutEnd = 0;

/// The frames of one scan on their way from the library's thread to the one that gives them to the
/// host: a few at most, since the host may be slow. It keeps the scan's account.
class FrameQueue : public FrameSink
{
public:
    explicit FrameQueue(int framesAskedFor);

    /// `notify` runs on the library's thread after each frame that was taken; to be set before any.
    void onFrame(std::function<void()> notify);

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

/// Status changes on their way from the library's thread to the host: the latest 64, since the
/// host's slots may be slow. Any thread may call.
class StatusQueue
{
public:
    static constexpr std::size_t mostWaiting = 64;

    /// Whether one more waits now. Otherwise the oldest was dropped for it.
    bool push(unsigned char first, unsigned char second);
    /// The oldest that waits, for the host: {"first", "second"}, and {"dropped"} if so many before
    /// it were dropped. Call it once for each that was pushed and did not drop another.
    QVariantMap pop();

private:
    struct Status
    {
        int first;
        int second;
    };

    std::mutex mutex;
    std::deque<Status> waiting;
    int dropped = 0; ///< before the oldest that waits
};

} // namespace Scanner::DirectLink

#endif
