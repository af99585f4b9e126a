#ifndef SCANNER_FRAMERECEIVER_H
#define SCANNER_FRAMERECEIVER_H

#include "Frame.h"
#include "Scan.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Scanner {

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

} // namespace Scanner

#endif
