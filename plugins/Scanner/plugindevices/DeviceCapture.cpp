#include "DeviceCapture.h"

#include "CameraStream.h"
#include "Errors.h"
#include "Frame.h"
#include "Parameters.h"

#include <list>
#include <optional>

namespace Scanner {

using BaseDeviceSpace::CameraDevice;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int mostFrames = 10000;
constexpr int longestTimeMs = 3600000;
constexpr int longestPeriodMs = 60000;
constexpr int defaultTimeoutMs = 10000;

struct CaptureRequest
{
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
};

int requireSensors(OpenDevice &device)
{
    device.require(CameraDevice);
    const int sensors = device.call(countSensors);
    if (sensors == 0)
        raise(CameraFailed, QStringLiteral("The camera \"%1\" does not answer").arg(device.name()));
    return sensors;
}

/// All the sensors of one scan.
class Rig
{
public:
    Rig(OpenDevice &device, const CaptureRequest &request)
        : timeoutMs(request.timeoutMs)
    {
        const auto mode =
            request.periodMs ? CameraSpace::SoftwareTrigger : CameraSpace::FreeRunning;
        for (const int sensor : request.sensors)
            streams.emplace_back(device, sensor, mode, request.color);
    }

    /// One map a sensor.
    QVariantList next()
    {
        for (CameraStream &stream : streams)
            stream.trigger();
        QVariantList maps;
        for (CameraStream &stream : streams)
            maps.append(stream.fetch(timeoutMs));
        return maps;
    }

private:
    const int timeoutMs;
    std::list<CameraStream> streams;
};

using Arrived = std::function<void(const QVariantList &maps)>;

QVariantList run(OpenDevice &device, const CaptureRequest &request, const Arrived &arrived)
{
    Rig rig(device, request);
    QVariantList images;
    auto due = steady_clock::now();
    for (int frame = 0; frame < request.frames; ++frame) {
        if (request.periodMs) {
            device.waitUntil(due);
            due += milliseconds(*request.periodMs);
        }
        const QVariantList maps = rig.next();
        images += maps;
        arrived(maps);
    }
    return images;
}

// The device answers a closing with whatever it likes; the host is told the reason.
QVariantList runUntilClosed(OpenDevice &device, const CaptureRequest &request,
                            const Arrived &arrived)
{
    try {
        return run(device, request, arrived);
    } catch (const KvSyncTool::Exception &) {
        if (device.isEnding())
            raise(CameraFailed, QStringLiteral("The device was closed during the scan"));
        throw;
    }
}

} // namespace

QVariantList captureFrames(OpenDevice &device, const QVariantMap &parameters,
                           const Publish &publish)
{
    const Parameters read(parameters);
    CaptureRequest request(read, requireSensors(device));
    request.frames = read.wholeNumber(QStringLiteral("frames"), 1, mostFrames);
    request.periodMs = read.optionalWholeNumber(QStringLiteral("periodMs"), 1, longestPeriodMs);
    request.color = read.flag(QStringLiteral("color"));
    FrameAccount account(-1); // a camera's numbers begin at 0
    return runUntilClosed(device, request, [&](const QVariantList &maps) {
        account.add(maps.first().toMap().value(QStringLiteral("frame")).toInt());
        publish(QStringLiteral("frameArrived"), maps);
        publish(QStringLiteral("progress"), progressOf(account, request.frames));
    });
}

QVariantList captureColor(OpenDevice &device, const QVariantMap &parameters)
{
    const CaptureRequest request(Parameters(parameters), requireSensors(device));
    return runUntilClosed(device, request, [](const QVariantList &) {});
}

} // namespace Scanner
