#ifndef VIRTUALSCANNER_CAMERASENSOR_H
#define VIRTUALSCANNER_CAMERASENSOR_H

#include "CameraImage.h"
#include "DeviceGate.h"

namespace VirtualScanner {

/// One sensor of a camera: its settings and its stream. It has no thread and no lock of its own:
/// which frames were taken follows from the clock, and the device's gate guards it.
class CameraSensor
{
public:
    static constexpr unsigned int minimumExposureUs = 20;
    static constexpr unsigned int maximumExposureUs = 1000000;
    static constexpr unsigned int maximumGain = 64;
    static constexpr qint64 bufferedFrames = 8; ///< beyond that the oldest is lost

    ImageSettings settings;

    ErrorCode setInterestSize(unsigned int width, unsigned int height);
    ErrorCode setOffset(unsigned int x, unsigned int y);
    ErrorCode setExposure(qint64 microseconds);
    ErrorCode setGain(qint64 steps);
    ErrorCode setPixelFormat(qint64 format);
    ErrorCode setTriggerMode(CameraSpace::TriggerMode mode);
    CameraSpace::TriggerMode triggerMode() const;

    ErrorCode start();
    ErrorCode stop();
    /// Takes one frame; the camera must wait for this kind of trigger.
    ErrorCode trigger(CameraSpace::TriggerMode kind);
    void discard();

    /// Whether a frame waits, and whether one will come by itself; if so, when.
    bool hasFrame() const;
    bool isStreaming() const;
    Clock::time_point nextFrameTime(Clock::time_point atLatest) const;
    /// The number of the oldest frame that waits, from 0; it counts as fetched.
    qint64 takeFrame();

private:
    Clock::duration framePeriod() const;
    qint64 framesTaken() const;
    qint64 oldestWaiting() const;

    CameraSpace::TriggerMode mode = CameraSpace::FreeRunning;
    bool streaming = false;
    Clock::time_point startTime;
    qint64 countedFrames = 0; ///< by triggers, or at the end of a free-running stream
    qint64 nextFrame = 0;
};

} // namespace VirtualScanner

#endif
