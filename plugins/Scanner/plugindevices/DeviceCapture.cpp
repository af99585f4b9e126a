#include "DeviceCapture.h"

#include "CameraStream.h"
#include "Errors.h"
#include "Frame.h"
#include "Parameters.h"
#include "Scan.h"
#include "Thrown.h"

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

/// Every sensor that is asked for, streaming.
class CameraStreams
{
public:
    CameraStreams(OpenDevice &usedDevice, const CaptureRequest &captureRequest)
        : device(usedDevice)
        , request(captureRequest)
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

    void stop() { streams.clear(); }

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

class DeviceFrames : public FrameSource
{
public:
    DeviceFrames(OpenDevice &usedDevice, const CaptureRequest &request)
        : device(usedDevice)
        , frames(request.frames)
        , streams(usedDevice, request)
    {
    }

    QVariantList next() override
    {
        QVariantList maps = streams.next();
        const double timeMs = millisecondsBetween(startTime, steady_clock::now());
        frames.came(maps.first().toMap().value(QStringLiteral("frame")).toInt());
        frames.delivered();
        for (QVariant &image : maps) {
            QVariantMap map = image.toMap();
            map.insert(QStringLiteral("timeMs"), timeMs);
            image = map;
        }
        return maps;
    }

    void stop() override { streams.stop(); }

    ScanEnd thrownEnd() override
    {
        if (device.isEnding())
            return {EndReason::Stopped, closedText()};
        if (device.isLost())
            return {EndReason::ConnectionLost,
                    QStringLiteral("The connection to the device was lost during the scan")};
        return {EndReason::Failed, thrownText()};
    }

    FrameAccount account() const override { return frames; }

private:
    OpenDevice &device;
    FrameAccount frames;
    const steady_clock::time_point startTime = steady_clock::now();
    CameraStreams streams;
};

} // namespace

QVariantList captureFrames(OpenDevice &device, const QVariantMap &parameters,
                           const Publish &publish)
{
    const CaptureRequest request = readScanRequest(device, parameters);
    return untilClosed(device, [&] {
        DeviceFrames source(device, request);
        return runScan(source, request.frames, request.keep, publish);
    });
}

QVariantList captureColor(OpenDevice &device, const QVariantMap &parameters)
{
    const int sensors = requireSensors(device);
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A color image of a device"),
                   {QStringLiteral("camera"), QStringLiteral("timeoutMs")});
    const CaptureRequest request(read, sensors);
    return untilClosed(device, [&] { return CameraStreams(device, request).next(); });
}

} // namespace Scanner
