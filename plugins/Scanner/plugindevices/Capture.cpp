#include "Capture.h"

#include "Errors.h"
#include "Parameters.h"

#include <QtCore/QMap>

#include <chrono>
#include <list>
#include <optional>

namespace Scanner::PluginDevices {

using BaseDeviceSpace::CameraDevice;
using KvSyncCore::DeviceController;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

/// One sensor of a plug-in's camera, streaming for as long as this object lives; then it is left as
/// it was. Throws the plug-in's own code if it refuses.
class CameraStream
{
public:
    CameraStream(Connection &streamingDevice, int sensor, CameraSpace::TriggerMode mode,
                 bool inColor);
    ~CameraStream();
    CameraStream(const CameraStream &) = delete;
    CameraStream &operator=(const CameraStream &) = delete;

    /// Makes the sensor take a frame, if it waits for that.
    void trigger();
    /// The next frame as a map for the host; see captureScan.
    QVariantMap fetch(int timeoutMs);

private:
    /// Reads what is to be put back later.
    CameraStream(Connection &streamingDevice, int sensor);

    void setMode(CameraSpace::TriggerMode mode);
    void setFormat(CameraSpace::PixelFormatType format);
    void setProperty(const QString &text, const QString &name, const QVariantMap &values);

    Connection &device;
    const signed char selector;
    CameraSpace::TriggerMode firstMode = CameraSpace::FreeRunning;
    CameraSpace::PixelFormatType firstFormat = CameraSpace::Mono8;
    CameraSpace::TriggerMode presentMode;
    CameraSpace::PixelFormatType presentFormat;
};

QVariant whole(const QVariantMap &image, const QString &key)
{
    const int number = image.value(key).toInt();
    if (number <= 0)
        raise(CameraFailed, QStringLiteral("The camera gave no whole image"));
    return number;
}

CameraStream::CameraStream(Connection &streamingDevice, int sensor)
    : device(streamingDevice)
    , selector(static_cast<signed char>(sensor))
{
    device.run(QStringLiteral("Camera %1 does not give its trigger mode").arg(selector),
               [&](DeviceController &c, qint64 handle) {
                   return c.getTriggerMode(handle, firstMode, selector);
               });
    device.run(QStringLiteral("Camera %1 does not give its pixel format").arg(selector),
               [&](DeviceController &c, qint64 handle) {
                   return c.getPixelFormat(handle, firstFormat, selector);
               });
    presentMode = firstMode;
    presentFormat = firstFormat;
}

// Once the delegate is done the destructor runs, even if what follows throws.
CameraStream::CameraStream(Connection &streamingDevice, int sensor, CameraSpace::TriggerMode mode,
                           bool inColor)
    : CameraStream(streamingDevice, sensor)
{
    setMode(mode);
    if (inColor)
        setFormat(CameraSpace::RGB8);
    device.run(QStringLiteral("Camera %1 refuses to start").arg(selector),
               [&](DeviceController &c, qint64 handle) {
                   c.discardFrames(handle, selector);
                   return c.startStream(handle, selector);
               });
}

CameraStream::~CameraStream()
{
    try {
        device.call([&](DeviceController &c, qint64 handle) {
            c.stopStream(handle, selector);
            return c.discardFrames(handle, selector);
        });
        setMode(firstMode);
        setFormat(firstFormat);
    } catch (...) {
        // The device is closing, or gone, or throws what it likes: another failure tells the host.
    }
}

void CameraStream::trigger()
{
    if (presentMode != CameraSpace::SoftwareTrigger)
        return;
    setProperty(QStringLiteral("Camera %1 refuses the trigger").arg(selector),
                QStringLiteral("trigger"), {});
}

QVariantMap CameraStream::fetch(int timeoutMs)
{
    QMap<QString, QVariant> values{{QStringLiteral("selector"), int(selector)},
                                   {QStringLiteral("timeoutMs"), timeoutMs}};
    device.run(QStringLiteral("Camera %1 gave no frame").arg(selector),
               [&](DeviceController &c, qint64 handle) {
                   return c.getProperty(handle, QStringLiteral("frame"), values);
               });
    const QByteArray data = values.value(QStringLiteral("data")).toByteArray();
    if (data.isEmpty())
        raise(CameraFailed, QStringLiteral("The camera gave no whole image"));
    return {{QStringLiteral("camera"), int(selector)},
            {QStringLiteral("frame"), values.value(QStringLiteral("frame")).toInt()},
            {QStringLiteral("width"), whole(values, QStringLiteral("width"))},
            {QStringLiteral("height"), whole(values, QStringLiteral("height"))},
            {QStringLiteral("bitDepth"), whole(values, QStringLiteral("bitDepth"))},
            {QStringLiteral("format"), static_cast<int>(presentFormat)},
            {QStringLiteral("data"), data}};
}

void CameraStream::setMode(CameraSpace::TriggerMode mode)
{
    if (mode == presentMode)
        return;
    device.run(QStringLiteral("Camera %1 refuses the trigger mode").arg(selector),
               [&](DeviceController &c, qint64 handle) {
                   return c.setTriggerMode(handle, mode, selector);
               });
    presentMode = mode;
}

void CameraStream::setFormat(CameraSpace::PixelFormatType format)
{
    if (format == presentFormat)
        return;
    setProperty(QStringLiteral("Camera %1 refuses the pixel format").arg(selector),
                QStringLiteral("pixelFormat"),
                {{QStringLiteral("value"), static_cast<int>(format)}});
    presentFormat = format;
}

void CameraStream::setProperty(const QString &text, const QString &name, const QVariantMap &values)
{
    QMap<QString, QVariant> sent = values;
    sent.insert(QStringLiteral("selector"), int(selector));
    device.run(text, [&](DeviceController &c, qint64 handle) {
        return c.setProperty(handle, name, sent);
    });
}

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

int requireSensors(Connection &device)
{
    device.require(CameraDevice);
    const int sensors = device.call(countSensors);
    if (sensors == 0)
        raise(CameraFailed, QStringLiteral("The camera \"%1\" does not answer").arg(device.name()));
    return sensors;
}

CaptureRequest readScanRequest(Connection &device, const QVariantMap &parameters)
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
    CameraStreams(Connection &usedDevice, const CaptureRequest &captureRequest)
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
    Connection &device;
    const CaptureRequest &request;
    steady_clock::time_point due = steady_clock::now();
    std::list<CameraStream> streams;
};

double millisecondsSince(steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(steady_clock::now() - start).count();
}

QString closedText()
{
    return QStringLiteral("The device was closed during the scan");
}

// Whatever code a device that is closing returns, the host is told the reason.
template <typename Action>
QVariantList untilClosed(const Connection &device, const Action &action)
{
    try {
        return action();
    } catch (const KvSyncTool::Exception &) {
        if (device.isEnding())
            raise(CameraFailed, closedText());
        throw;
    }
}

class CapturedFrames : public FrameSource
{
public:
    CapturedFrames(Connection &usedDevice, const CaptureRequest &request)
        : device(usedDevice)
        , frames(request.frames)
        , streams(usedDevice, request)
    {
    }

    QVariantList next() override
    {
        QVariantList maps = streams.next();
        const double timeMs = millisecondsSince(startTime);
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
    Connection &device;
    FrameAccount frames;
    const steady_clock::time_point startTime = steady_clock::now();
    CameraStreams streams;
};

} // namespace

QVariantList captureScan(Connection &device, const QVariantMap &parameters, const Publish &publish)
{
    const CaptureRequest request = readScanRequest(device, parameters);
    return untilClosed(device, [&] {
        CapturedFrames source(device, request);
        return runScan(source, request.frames, request.keep, publish);
    });
}

QVariantList captureSnapshot(Connection &device, const QVariantMap &parameters)
{
    const int sensors = requireSensors(device);
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A color image of a device"),
                   {QStringLiteral("camera"), QStringLiteral("timeoutMs")});
    const CaptureRequest request(read, sensors);
    return untilClosed(device, [&] { return CameraStreams(device, request).next(); });
}

} // namespace Scanner::PluginDevices
