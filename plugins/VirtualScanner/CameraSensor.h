#ifndef VIRTUALSCANNER_CAMERASENSOR_H
#define VIRTUALSCANNER_CAMERASENSOR_H

#include "CameraImage.h"
#include "DeviceGate.h"

#include <deque>
#include <memory>

namespace VirtualScanner {

/// One frame that a sensor took. Its picture follows when the delivery has rendered it.
struct TakenFrame
{
    qint64 number;
    ImageSettings settings; ///< of the moment at which it was taken
    QByteArray pixels;      ///< stays empty if there was no memory for them
    bool isReady = false;
};
using FramePointer = std::shared_ptr<TakenFrame>;

/// One sensor of a camera: its settings, its stream, and the frames that it took. Which frames are
/// due follows from the clock alone, so it does not matter who asks first, or how late. It has no
/// lock of its own: the device's gate guards it.
class CameraSensor
{
public:
    static constexpr unsigned int minimumExposureUs = 20;
    static constexpr unsigned int maximumExposureUs = 1000000;
    static constexpr unsigned int maximumGain = 64;
    static constexpr qint64 bufferedFrames = 8; ///< beyond that the oldest is lost

    const ImageSettings &settings() const;
    ErrorCode setInterestSize(unsigned int width, unsigned int height);
    ErrorCode setOffset(unsigned int x, unsigned int y);
    ErrorCode setExposure(qint64 microseconds);
    ErrorCode setGain(qint64 steps);
    ErrorCode setPixelFormat(qint64 format);
    ErrorCode setTriggerMode(CameraSpace::TriggerMode mode);
    CameraSpace::TriggerMode triggerMode() const;

    ErrorCode start();
    ErrorCode stop();
    bool isStreaming() const;
    /// Takes one frame; the camera must wait for this kind of trigger.
    ErrorCode trigger(CameraSpace::TriggerMode kind);
    /// Takes the frames of a free-running stream that are due.
    void takeDue(Clock::time_point now);
    /// When the next frame comes by itself.
    Clock::time_point nextFrameTime(Clock::time_point atLatest) const;
    void discard();

    /// Whether a frame waits to be fetched, and the oldest one; it waits no longer. Fetched frames
    /// are rendered all the same.
    bool hasFrame() const;
    FramePointer fetchOldest();

    /// The frame whose turn it is to be rendered; null if there is none.
    FramePointer nextToRender();

private:
    Clock::duration framePeriod() const;
    void take();
    void loseOldest();

    ImageSettings present;
    CameraSpace::TriggerMode mode = CameraSpace::FreeRunning;
    bool streaming = false;
    Clock::time_point startTime;
    qint64 lastNumber = 0; ///< of this stream, from 1
    std::deque<FramePointer> waiting;
    std::deque<FramePointer> unrendered;
};

} // namespace VirtualScanner

#endif
