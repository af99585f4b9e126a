#include "FrameReceiver.h"

#include "Errors.h"
#include "Thrown.h"

#include <utility>

namespace Scanner {

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

} // namespace Scanner
