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
    link.run(QStringLiteral("The scanner does not give its trigger period"),
             [&](DeviceController &c) { return c.getVideoTriggerPeriod(periodMs); });
    return periodMs;
}

// Stopping goes by the color mode; a scan without color is started in mode 1.
int colorModeFrom(const Parameters &parameters, bool color)
{
    const QString key = QStringLiteral("colorMode");
    const auto mode = parameters.optionalWholeNumber(key, 0, highestColorMode);
    if (mode && !color)
        raise(InvalidParameter, QStringLiteral("\"colorMode\" needs \"color\": true"));
    return color ? mode.value_or(0) : colorlessMode;
}

} // namespace

ScanRequest ScanRequest::from(const Parameters &parameters, DirectLink &link)
{
    const auto periodMs =
        parameters.optionalWholeNumber(QStringLiteral("periodMs"), 1, longestPeriodMs);
    ScanRequest request;
    request.color = parameters.flag(QStringLiteral("color"), false);
    request.colorMode = colorModeFrom(parameters, request.color);
    request.light = ScanLight::from(parameters);
    request.periodMs = periodMs ? *periodMs : presentPeriodMs(link);
    return request;
}

QStringList ScanRequest::keys()
{
    return QStringList{QStringLiteral("periodMs"), QStringLiteral("color"),
                       QStringLiteral("colorMode")} +
           ScanLight::keys();
}

ScanSession::ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                         std::shared_ptr<FrameSink> sink, const ScanRequest &scanRequest, Claimed)
    : link(directLink)
    , receiver(frameReceiver)
    , request(scanRequest)
{
    receiver.begin(std::move(sink));
}

// Once the delegate is done the destructor runs, even if what follows throws.
ScanSession::ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                         std::shared_ptr<FrameSink> sink, const ScanRequest &scanRequest)
    : ScanSession(directLink, frameReceiver, std::move(sink), scanRequest, Claimed())
{
    link.requireConnection();
    if (request.light.isAsked()) {
        startInOtherLight();
    } else {
        setCallback(reinterpret_cast<void *>(&FrameReceiver::receive));
        start();
    }
}

ScanSession::~ScanSession()
{
    link.callIfOpen([this](DeviceController &c) {
        c.stopScan();
        c.setScanCallback(DirectLink::handle, nullptr, nullptr);
        request.light.end(c);
    });
    receiver.end();
}

void ScanSession::setCallback(void *function)
{
    link.run(QStringLiteral("The scanner refuses the scan callback"), [&](DeviceController &c) {
        return c.setScanCallback(DirectLink::handle, function, function ? &receiver : nullptr);
    });
}

void ScanSession::start()
{
    QMap<QString, QVariant> parameters{{QStringLiteral("bEnableColor"), request.color},
                                       {QStringLiteral("colorMode"), request.colorMode},
                                       {QStringLiteral("iPeriod"), request.periodMs}};
    link.run({}, [&](DeviceController &c) { return c.startScan(parameters); });
}

/// The link starts a scan in a light of its own, and frames in that light may be on their way when
/// the other light is on. So the trigger runs without a callback until then, and is started anew.
void ScanSession::startInOtherLight()
{
    setCallback(nullptr);
    start();
    request.light.apply(link);
    switchTrigger(false);
    setCallback(reinterpret_cast<void *>(&FrameReceiver::receive));
    switchTrigger(true);
}

void ScanSession::switchTrigger(bool on)
{
    QMap<QString, QVariant> parameters{{QStringLiteral("cameraTriggerMode"), request.colorMode},
                                       {QStringLiteral("bEnable"), on}};
    link.run(QStringLiteral("The scanner refuses to switch \"trigger\""), [&](DeviceController &c) {
        return c.executeCommand(DirectLink::handle, QStringLiteral("EnableVideoTrigger"),
                                parameters);
    });
}

} // namespace Scanner
