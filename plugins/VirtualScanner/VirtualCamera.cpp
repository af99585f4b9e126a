#include "VirtualCamera.h"

namespace VirtualScanner {

VirtualCamera::VirtualCamera(DeviceGate &deviceGate, PropertyTable &properties, int sensorCount)
    : gate(deviceGate)
    , sensors(static_cast<std::size_t>(sensorCount))
    , delivery(deviceGate, sensors)
{
    gate.onLoss([this] {
        for (CameraSensor &sensor : sensors)
            sensor = CameraSensor();
    });
    addProperties(properties);
}

CameraSensor *VirtualCamera::sensorAt(int selector)
{
    if (selector < 0 || selector >= static_cast<int>(sensors.size()))
        return nullptr;
    return &sensors[static_cast<std::size_t>(selector)];
}

ErrorCode VirtualCamera::getExposureTimeRange(unsigned int &minimumUs, unsigned int &maximumUs,
                                              signed char selector)
{
    return withSensor("getExposureTimeRange", selector, [&](CameraSensor &) {
        minimumUs = CameraSensor::minimumExposureUs;
        maximumUs = CameraSensor::maximumExposureUs;
        return Success;
    });
}

ErrorCode VirtualCamera::getGainRange(unsigned short &minimum, unsigned int &maximum,
                                      signed char selector)
{
    return withSensor("getGainRange", selector, [&](CameraSensor &) {
        minimum = 0;
        maximum = CameraSensor::maximumGain;
        return Success;
    });
}

ErrorCode VirtualCamera::getMaxImageSize(unsigned int &width, unsigned int &height,
                                         signed char selector)
{
    return withSensor("getMaxImageSize", selector, [&](CameraSensor &) {
        width = sensorWidth;
        height = sensorHeight;
        return Success;
    });
}

ErrorCode VirtualCamera::setInterestSize(unsigned int width, unsigned int height,
                                         signed char selector)
{
    return withSensor("setInterestSize", selector,
                      [&](CameraSensor &sensor) { return sensor.setInterestSize(width, height); });
}

ErrorCode VirtualCamera::getInterestSize(unsigned int &width, unsigned int &height,
                                         signed char selector)
{
    return withSensor("getInterestSize", selector, [&](CameraSensor &sensor) {
        width = sensor.settings().width;
        height = sensor.settings().height;
        return Success;
    });
}

ErrorCode VirtualCamera::setAOIOffset(unsigned int x, unsigned int y, signed char selector)
{
    return withSensor("setAOIOffset", selector,
                      [&](CameraSensor &sensor) { return sensor.setOffset(x, y); });
}

ErrorCode VirtualCamera::getAOIOffset(unsigned int &x, unsigned int &y, signed char selector)
{
    return withSensor("getAOIOffset", selector, [&](CameraSensor &sensor) {
        x = sensor.settings().offsetX;
        y = sensor.settings().offsetY;
        return Success;
    });
}

ErrorCode VirtualCamera::getPixelFormat(CameraSpace::PixelFormatType &format, signed char selector)
{
    return withSensor("getPixelFormat", selector, [&](CameraSensor &sensor) {
        format = sensor.settings().format;
        return Success;
    });
}

ErrorCode VirtualCamera::setTriggerMode(CameraSpace::TriggerMode mode, signed char selector)
{
    return withSensor("setTriggerMode", selector,
                      [&](CameraSensor &sensor) { return sensor.setTriggerMode(mode); });
}

ErrorCode VirtualCamera::getTriggerMode(CameraSpace::TriggerMode &mode, signed char selector)
{
    return withSensor("getTriggerMode", selector, [&](CameraSensor &sensor) {
        mode = sensor.triggerMode();
        return Success;
    });
}

ErrorCode VirtualCamera::discardFrames(signed char selector)
{
    return withSensor("discardFrames", selector, [](CameraSensor &sensor) {
        sensor.discard();
        return Success;
    });
}

ErrorCode VirtualCamera::startStream(signed char selector)
{
    return withSensor("startStream", selector, [this](CameraSensor &sensor) {
        if (!delivery.start())
            return NoThread;
        gate.wake(); // the delivery waits for the stream's first frame now
        return sensor.start();
    });
}

ErrorCode VirtualCamera::stopStream(signed char selector)
{
    return withSensor("stopStream", selector, [this](CameraSensor &sensor) {
        gate.wake(); // whoever waits for a frame waits in vain now
        return sensor.stop();
    });
}

} // namespace VirtualScanner
