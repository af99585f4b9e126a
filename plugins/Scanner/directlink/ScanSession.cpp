#include "ScanSession.h"

#include "Errors.h"

#include <utility>

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

constexpr int longestPeriodMs = 60000;
constexpr int colorlessMode = 1;
constexpr int highestColorMode = 255;

int presentPeriodMs(DirectLink &link)
{
    int periodMs = 0;
    check(link.call([&](DeviceController &c) { return c.getVideoTriggerPeriod(periodMs); }),
          QStringLiteral("The scanner does not give its trigger period"));
    return periodMs;
}

} // namespace

ScanRequest ScanRequest::from(const Parameters &parameters, DirectLink &link)
{
    const auto periodMs =
        parameters.optionalWholeNumber(QStringLiteral("periodMs"), 1, longestPeriodMs);
    const bool color = parameters.flag(QStringLiteral("color"));
    const auto colorMode =
        parameters.optionalWholeNumber(QStringLiteral("colorMode"), 0, highestColorMode);
    // Stopping goes by the colour mode; a scan without colour is started in mode 1.
    return {periodMs ? *periodMs : presentPeriodMs(link), color,
            color ? colorMode.value_or(0) : colorlessMode};
}

ScanSession::ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                         std::shared_ptr<FrameSink> sink)
    : link(directLink)
    , receiver(frameReceiver)
{
    receiver.begin(std::move(sink));
}

// Once the delegate is done the destructor runs, even if what follows throws.
ScanSession::ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                         std::shared_ptr<FrameSink> sink, const ScanRequest &request)
    : ScanSession(directLink, frameReceiver, std::move(sink))
{
    QMap<QString, QVariant> parameters{{QStringLiteral("bEnableColor"), request.color},
                                       {QStringLiteral("colorMode"), request.colorMode},
                                       {QStringLiteral("iPeriod"), request.periodMs}};
    link.call([&](DeviceController &c) {
        check(c.setScanCallback(DirectLink::handle,
                                reinterpret_cast<void *>(&FrameReceiver::receive), &receiver),
              QStringLiteral("The scanner refuses the scan callback"));
        c.startScan(parameters);
    });
}

ScanSession::~ScanSession()
{
    link.callIfOpen([](DeviceController &c) {
        c.stopScan();
        c.setScanCallback(DirectLink::handle, nullptr, nullptr);
    });
    receiver.end();
}

} // namespace Scanner
