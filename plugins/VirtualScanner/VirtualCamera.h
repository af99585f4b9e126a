#ifndef VIRTUALSCANNER_VIRTUALCAMERA_H
#define VIRTUALSCANNER_VIRTUALCAMERA_H

#include "FrameDelivery.h"
#include "PropertyTable.h"

namespace VirtualScanner {

/// The camera capability, with one sensor or several; the selector counts them from 0.
///
/// The interface fixes no operation for fetching a frame, for exposure and gain, or for setting the
/// pixel format: these are properties (see README.md).
class VirtualCamera : public CameraSpace::CameraInterface
{
public:
    VirtualCamera(DeviceGate &gate, PropertyTable &properties, int sensorCount);

    ErrorCode getExposureTimeRange(unsigned int &minimumUs, unsigned int &maximumUs,
                                   signed char selector) override;
    ErrorCode getGainRange(unsigned short &minimum, unsigned int &maximum,
                           signed char selector) override;
    ErrorCode getMaxImageSize(unsigned int &width, unsigned int &height,
                              signed char selector) override;
    ErrorCode setInterestSize(unsigned int width, unsigned int height,
                              signed char selector) override;
    ErrorCode getInterestSize(unsigned int &width, unsigned int &height,
                              signed char selector) override;
    ErrorCode setAOIOffset(unsigned int x, unsigned int y, signed char selector) override;
    ErrorCode getAOIOffset(unsigned int &x, unsigned int &y, signed char selector) override;
    ErrorCode getPixelFormat(CameraSpace::PixelFormatType &format, signed char selector) override;
    ErrorCode setTriggerMode(CameraSpace::TriggerMode mode, signed char selector) override;
    ErrorCode getTriggerMode(CameraSpace::TriggerMode &mode, signed char selector) override;
    ErrorCode discardFrames(signed char selector) override;
    ErrorCode startStream(signed char selector) override;
    ErrorCode stopStream(signed char selector) override;

private:
    template <typename Body>
    ErrorCode withSensor(const char *operation, int selector, Body body)
    {
        return gate.run(operation, [&] {
            CameraSensor *const sensor = sensorAt(selector);
            return sensor ? body(*sensor) : NoSuchSensor;
        });
    }
    CameraSensor *sensorAt(int selector);

    void addProperties(PropertyTable &properties);
    ErrorCode fetchFrame(Values &values);
    ErrorCode waitForFrame(DeviceGate::Call &call, CameraSensor &sensor, Clock::duration timeout);
    ErrorCode trigger(const Values &order);

    DeviceGate &gate;
    std::vector<CameraSensor> sensors;
    FrameDelivery delivery; ///< last, so that its thread ends before what it uses
};

} // namespace VirtualScanner

#endif
