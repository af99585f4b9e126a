#include "Stream.h"

#include <atomic>
#include <utility>

namespace Scanner {

class Stream::Relay : public FrameSink, public std::enable_shared_from_this<Relay>
{
public:
    Relay(EventThread &eventThread, Publish publishFrame)
        : events(eventThread)
        , publish(std::move(publishFrame))
    {
    }

    void take(Frame frame) override
    {
        if (waiting >= mostWaiting)
            return;
        events.post([self = shared_from_this(), taken = std::move(frame)] { self->pass(taken); });
        ++waiting;
    }

    void cancel(const QString &) override { cancelled = true; }

    FrameAccount account() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return frames;
    }

private:
    static constexpr int mostWaiting = 8;

    void pass(const Frame &frame)
    {
        --waiting;
        if (cancelled)
            return;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            frames.add(frame);
        }
        publish(QStringLiteral("frameArrived"), imageMaps(frame));
    }

    EventThread &events;
    const Publish publish;
    std::atomic<int> waiting{0};
    std::atomic<bool> cancelled{false};
    mutable std::mutex mutex;
    FrameAccount frames;
};

Stream::Stream(DirectLink &directLink, FrameReceiver &frameReceiver, EventThread &eventThread,
               Publish publishFrame)
    : link(directLink)
    , receiver(frameReceiver)
    , events(eventThread)
    , publish(std::move(publishFrame))
{
}

void Stream::start(const QVariantMap &parameters)
{
    const ScanRequest request = ScanRequest::from(Parameters(parameters), link);
    const auto newRelay = std::make_shared<Relay>(events, publish);
    const std::lock_guard<std::mutex> lock(mutex);
    session = std::make_unique<ScanSession>(link, receiver, newRelay, request);
    relay = newRelay;
}

QVariantMap Stream::stop()
{
    const std::lock_guard<std::mutex> lock(mutex);
    FrameAccount account;
    if (session) {
        relay->cancel(QString());
        session.reset();
        account = relay->account();
        relay.reset();
    }
    return {{QStringLiteral("delivered"), account.delivered()},
            {QStringLiteral("dropped"), account.dropped()}};
}

} // namespace Scanner
