#include "DeviceCapture.h"

#include "CameraStream.h"
#include "Errors.h"
#include "Frame.h"
#include "Parameters.h"
#include "ScanEnd.h"
#include "Thrown.h"

#include <exception>
#include <list>
#include <optional>

namespace Scanner {

using BaseDeviceSpace::CameraDevice;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int longestTimeMs = 3600000;
constexpr int longestPeriodMs = 60000;
constexpr int defaultTimeoutMs = 10000;

struct CaptureRequest
{
    /// Reads "camera" and "timeoutMs".
    CaptureRequest(const Parameters &parameters, int sensorCount)
        : timeoutMs(parameters.optionalWholeNumber(QStringLiteral("timeoutMs"), 1, longestTimeMs)
                        .value_or(defaultTimeoutMs))
    {
        const auto only =
            parameters.optionalWholeNumber(QStringLiteral("camera"), 0, sensorCount - 1);
        for (int sensor = 0; sensor < sensorCount; ++sensor) {
            if (sensor == only.value_or(sensor))
                sensors.push_back(sensor);
        }
    }

    int timeoutMs;
    std::vector<int> sensors;
    int frames = 1;
    std::optional<int> periodMs;
    bool color = true;
    bool keep = true;
};

int requireSensors(OpenDevice &device)
{
    device.require(CameraDevice);
    const int sensors = device.call(countSensors);
    if (sensors == 0)
        raise(CameraFailed, QStringLiteral("The camera \"%1\" does not answer").arg(device.name()));
    return sensors;
}

CaptureRequest readScanRequest(OpenDevice &device, const QVariantMap &parameters)
{
    const int sensors = requireSensors(device);
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A scan of a device"),
                   {QStringLiteral("frames"), QStringLiteral("keep"), QStringLiteral("periodMs"),
                    QStringLiteral("timeoutMs"), QStringLiteral("color"),
                    QStringLiteral("camera")});
    CaptureRequest request(read, sensors);
    request.frames = read.wholeNumber(QStringLiteral("frames"), 1, mostFrames);
    request.keep = read.flag(QStringLiteral("keep"), true);
    request.periodMs = read.optionalWholeNumber(QStringLiteral("periodMs"), 1, longestPeriodMs);
    request.color = read.flag(QStringLiteral("color"), false);
    return request;
}

/// All the sensors of one scan.
class Rig
{
public:
    Rig(OpenDevice &usedDevice, const CaptureRequest &scanRequest)
        : device(usedDevice)
        , request(scanRequest)
    {
        const auto mode =
            request.periodMs ? CameraSpace::SoftwareTrigger : CameraSpace::FreeRunning;
        for (const int sensor : request.sensors)
            streams.emplace_back(device, sensor, mode, request.color);
    }

    /// One map a sensor.
    QVariantList next()
    {
        if (request.periodMs) {
            device.waitUntil(due);
            due += milliseconds(*request.periodMs);
        }
        for (CameraStream &stream : streams)
            stream.trigger();
        QVariantList maps;
        for (CameraStream &stream : streams)
            maps.append(stream.fetch(request.timeoutMs));
        return maps;
    }

private:
    OpenDevice &device;
    const CaptureRequest &request;
    steady_clock::time_point due = steady_clock::now();
    std::list<CameraStream> streams;
};

QString closedText()
{
    return QStringLiteral("The device was closed during the scan");
}

// The device answers a closing with whatever it likes; the host is told the reason.
template <typename Action>
QVariantList untilClosed(const OpenDevice &device, const Action &action)
{
    try {
        return action();
    } catch (const KvSyncTool::Exception &) {
        if (device.isEnding())
            raise(CameraFailed, closedText());
        throw;
    }
}

ScanEnd endOfThrown(const OpenDevice &device)
{
    return device.isEnding() ? ScanEnd{EndReason::Stopped, closedText()}
                             : ScanEnd{EndReason::Failed, thrownText()};
}

/// One scan as the host follows it.
class Scan
{
public:
    Scan(const CaptureRequest &scanRequest, const Publish &publishEvent)
        : request(scanRequest)
        , publish(publishEvent)
        , account(scanRequest.frames)
    {
    }

    void receiveAll(Rig &rig)
    {
        for (int frame = 0; frame < request.frames; ++frame)
            receive(rig.next());
    }

    void end(const ScanEnd &how) const { publishEnd(publish, how, account); }

    QVariantList images; ///< if they are to be kept

private:
    void receive(QVariantList maps)
    {
        const double timeMs = millisecondsBetween(startTime, steady_clock::now());
        account.came(maps.first().toMap().value(QStringLiteral("frame")).toInt());
        account.delivered();
        for (QVariant &image : maps) {
            QVariantMap map = image.toMap();
            map.insert(QStringLiteral("timeMs"), timeMs);
            image = map;
        }
        if (request.keep)
            images += maps;
        publish(QStringLiteral("frameArrived"), maps);
        publish(QStringLiteral("progress"), {account.toMap()});
    }

    const CaptureRequest &request;
    const Publish &publish;
    const steady_clock::time_point startTime = steady_clock::now();
    FrameAccount account;
};

QVariantList runScan(OpenDevice &device, const CaptureRequest &request, const Publish &publish)
{
    Scan scan(request, publish);
    ScanEnd end;
    std::exception_ptr thrown;
    {
        Rig rig(device, request);
        try {
            scan.receiveAll(rig);
        } catch (...) {
            thrown = std::current_exception();
            end = endOfThrown(device);
        }
    }
    scan.end(end);
    if (thrown)
        std::rethrow_exception(thrown);
    return scan.images;
}

} // namespace

QVariantList captureFrames(OpenDevice &device, const QVariantMap &parameters,
                           const Publish &publish)
{
    const CaptureRequest request = readScanRequest(device, parameters);
    return untilClosed(device, [&] { return runScan(device, request, publish); });
}

QVariantList captureColor(OpenDevice &device, const QVariantMap &parameters)
{
    const int sensors = requireSensors(device);
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A color image of a device"),
                   {QStringLiteral("camera"), QStringLiteral("timeoutMs")});
    const CaptureRequest request(read, sensors);
    return untilClosed(device, [&] { return Rig(device, request).next(); });
}

} // namespace Scanner
