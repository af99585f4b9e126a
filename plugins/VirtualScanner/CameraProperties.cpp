#include "VirtualCamera.h"

namespace VirtualScanner {

namespace {

int selectorIn(const Values &values)
{
    return values.value(QStringLiteral("selector"), 0).toInt();
}

qint64 valueIn(const Values &order)
{
    bool isNumber = false;
    const qint64 value = order.value(QStringLiteral("value")).toLongLong(&isNumber);
    return isNumber ? value : -1; // below every range
}

void describeFrame(Values &values, const TakenFrame &frame, int sensor)
{
    const ImageSettings &settings = frame.settings;
    values.insert(QStringLiteral("data"), frame.pixels);
    values.insert(QStringLiteral("width"), settings.width);
    values.insert(QStringLiteral("height"), settings.height);
    values.insert(QStringLiteral("bitDepth"), bitDepthOf(settings.format));
    values.insert(QStringLiteral("format"), static_cast<int>(settings.format));
    values.insert(QStringLiteral("frame"), frame.number);
    values.insert(QStringLiteral("selector"), sensor);
}

} // namespace

void VirtualCamera::addProperties(PropertyTable &properties)
{
    const auto addSetting = [&](const char *name, auto read, auto write) {
        properties.add(
            QString::fromLatin1(name),
            [this, read](Values &values) {
                return withSensor("getProperty", selectorIn(values), [&](CameraSensor &sensor) {
                    values.insert(QStringLiteral("value"), read(sensor.settings()));
                    return Success;
                });
            },
            [this, write](const Values &order) {
                return withSensor("setProperty", selectorIn(order), [&](CameraSensor &sensor) {
                    return write(sensor, valueIn(order));
                });
            });
    };
    addSetting(
        "exposure", [](const ImageSettings &settings) { return settings.exposureUs; },
        [](CameraSensor &sensor, qint64 value) { return sensor.setExposure(value); });
    addSetting(
        "gain", [](const ImageSettings &settings) { return settings.gain; },
        [](CameraSensor &sensor, qint64 value) { return sensor.setGain(value); });
    addSetting(
        "pixelFormat", [](const ImageSettings &settings) { return int(settings.format); },
        [](CameraSensor &sensor, qint64 value) { return sensor.setPixelFormat(value); });

    properties.add(QStringLiteral("frame"), [this](Values &values) { return fetchFrame(values); });
    properties.add(QStringLiteral("trigger"), {},
                   [this](const Values &order) { return trigger(order); });
}

ErrorCode VirtualCamera::fetchFrame(Values &values)
{
    return gate.runWaiting("getProperty", [&](DeviceGate::Call &call) {
        const int selector = selectorIn(values);
        CameraSensor *const sensor = sensorAt(selector);
        if (!sensor)
            return NoSuchSensor;
        const int timeoutMs = values.value(QStringLiteral("timeoutMs"), 1000).toInt();
        ErrorCode code = waitForFrame(call, *sensor, std::chrono::milliseconds(timeoutMs));
        if (code != Success)
            return code;
        // From here on the frame is this caller's, and sure to become ready.
        const FramePointer frame = sensor->fetchOldest();
        code = gate.wait(call, [&] { return frame->isReady; });
        if (code != Success)
            return code;
        if (frame->pixels.isEmpty())
            return NoFrame;
        describeFrame(values, *frame, selector);
        return Success;
    });
}

ErrorCode VirtualCamera::waitForFrame(DeviceGate::Call &call, CameraSensor &sensor,
                                      Clock::duration timeout)
{
    const auto deadline = Clock::now() + timeout;
    const auto settled = [&] {
        sensor.takeDue(Clock::now());
        return sensor.hasFrame() || !sensor.isStreaming();
    };
    while (!settled() && Clock::now() < deadline) {
        const ErrorCode code = gate.waitUntil(call, sensor.nextFrameTime(deadline), settled);
        if (code != Success)
            return code;
    }
    return sensor.hasFrame() ? Success : NoFrame;
}

ErrorCode VirtualCamera::trigger(const Values &order)
{
    const bool isHardware = order.value(QStringLiteral("hardware")).toBool();
    const auto kind = isHardware ? CameraSpace::HardwareTrigger : CameraSpace::SoftwareTrigger;
    return withSensor("setProperty", selectorIn(order), [&](CameraSensor &sensor) {
        gate.wake();
        return sensor.trigger(kind);
    });
}

} // namespace VirtualScanner
