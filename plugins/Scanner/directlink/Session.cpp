#include "Session.h"

#include "Errors.h"

#include <utility>
#include <vector>

namespace Scanner::DirectLink {

using KvSyncCore::DeviceController;

namespace {

constexpr int longestPeriodMs = 60000;
constexpr int colorlessMode = 1;
constexpr int highestColorMode = 255;

// What the link's own startScan sends.
constexpr int scanRoute = 2;
constexpr int scanStrobe = 4;
constexpr int scanDistance = 3;
constexpr int projectorOff = 0;

ErrorCode send(DeviceController &controller, const char *command,
               QMap<QString, QVariant> parameters)
{
    return controller.executeCommand(Connection::handle, QString::fromLatin1(command), parameters);
}

int presentPeriodMs(Connection &link)
{
    int periodMs = 0;
    link.run(QStringLiteral("The scanner does not give its trigger period"),
             [&](DeviceController &c) { return c.getVideoTriggerPeriod(periodMs); });
    return periodMs;
}

int triggerModeFrom(const Parameters &parameters)
{
    const bool color = parameters.flag(QStringLiteral("color"), false);
    const QString key = QStringLiteral("colorMode");
    const auto mode = parameters.optionalWholeNumber(key, 0, highestColorMode);
    if (mode && !color)
        raise(InvalidParameter, QStringLiteral("\"colorMode\" needs \"color\": true"));
    return color ? mode.value_or(0) : colorlessMode;
}

} // namespace

ScanEnd lostConnection()
{
    return {EndReason::ConnectionLost,
            QStringLiteral("The connection to the scanner was lost during the scan")};
}

ScanEnd endOfThrown(Connection &link)
{
    ScanEnd end{EndReason::Failed, thrownText()};
    link.ifLost([&end] { end = lostConnection(); });
    return end;
}

ScanRequest ScanRequest::from(const Parameters &parameters, Connection &link)
{
    const auto periodMs =
        parameters.optionalWholeNumber(QStringLiteral("periodMs"), 1, longestPeriodMs);
    ScanRequest request;
    request.triggerMode = triggerModeFrom(parameters);
    request.light = ScanLight::from(parameters);
    request.periodMs = periodMs ? *periodMs : presentPeriodMs(link);
    return request;
}

std::vector<ParameterInfo> ScanRequest::parameters()
{
    return {{"periodMs", "int", "ms", std::pair(1, longestPeriodMs)},
            {"color", "bool"},
            {"colorMode", "int", "", std::pair(0, highestColorMode)},
            {"pattern", "text"},
            {"switch", "map"}};
}

Session::Session(Connection &connection, FrameReceiver &frameReceiver,
                 std::shared_ptr<FrameSink> sink, const ScanRequest &scanRequest, Claimed)
    : link(connection)
    , receiver(frameReceiver)
    , request(scanRequest)
{
    receiver.begin(std::move(sink));
}

// Once the delegate is done the destructor runs, even if what follows throws.
Session::Session(Connection &connection, FrameReceiver &frameReceiver,
                 std::shared_ptr<FrameSink> sink, const ScanRequest &scanRequest)
    : Session(connection, frameReceiver, std::move(sink), scanRequest, Claimed())
{
    link.requireConnection();
    start();
}

Session::~Session()
{
    try {
        stop();
    } catch (const KvSyncTool::Exception &) {
        // Another failure tells the host.
    }
}

/// The steps of the link's own startScan, in its order. That one passes over what the scanner
/// refuses, and the host would wait in vain for frames, or for the light that it asked for.
void Session::start()
{
    link.run(QStringLiteral("The scanner refuses to let its trigger control the strobe"),
             [](DeviceController &c) {
                 return send(c, "SetStrobeControlledByTrigger",
                             {{QStringLiteral("controlRoute"), scanRoute},
                              {QStringLiteral("strobeState"), scanStrobe}});
             });
    link.run(QStringLiteral("The scanner refuses to indicate the distance"),
             [](DeviceController &c) { return c.setDistanceIndicate(scanDistance); });
    request.light.apply(link);
    // A host may have left the trigger on, and frames in another light may be on their way.
    if (request.light.isAsked())
        switchTrigger(false);
    link.run(QStringLiteral("The scanner refuses the scan callback"), [this](DeviceController &c) {
        return c.setScanCallback(Connection::handle,
                                 reinterpret_cast<void *>(&FrameReceiver::receive), &receiver);
    });
    switchTrigger(true);
    link.run(QStringLiteral("The scanner refuses a period of %1 ms").arg(request.periodMs),
             [this](DeviceController &c) { return c.setVideoTriggerPeriod(request.periodMs); });
}

void Session::stop()
{
    if (isStopped)
        return;
    isStopped = true;
    struct Step
    {
        ErrorCode result;
        const char *refusal;
    };
    std::vector<Step> steps;
    link.callIfOpen([&](DeviceController &c) {
        steps = {{setTrigger(c, false), "The scanner refuses to stop its trigger"},
                 {send(c, "Project", {{QStringLiteral("projectWorkType"), projectorOff}}),
                  "The scanner refuses to switch its projector off"},
                 {c.setScanCallback(Connection::handle, nullptr, nullptr),
                  "The scanner refuses to remove the scan callback"},
                 {request.light.end(c), "The scanner refuses to switch its lasers off"}};
    });
    receiver.end();
    for (const Step &step : steps) {
        if (step.result == Success)
            continue;
        link.requireConnection();
        raise(step.result, QString::fromLatin1(step.refusal));
    }
}

void Session::switchTrigger(bool on)
{
    link.run(on ? QStringLiteral("The scanner refuses to start its trigger")
                : QStringLiteral("The scanner refuses to stop its trigger"),
             [&](DeviceController &c) { return setTrigger(c, on); });
}

ErrorCode Session::setTrigger(DeviceController &controller, bool on) const
{
    return send(controller, "EnableVideoTrigger",
                {{QStringLiteral("cameraTriggerMode"), request.triggerMode},
                 {QStringLiteral("bEnable"), on}});
}

} // namespace Scanner::DirectLink
