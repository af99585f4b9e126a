#include "CameraSensor.h"

#include <algorithm>

namespace VirtualScanner {

namespace {

constexpr std::chrono::microseconds shortestPeriod(20000); // 50 frames a second

bool fits(unsigned int offset, unsigned int length, unsigned int whole)
{
    return length >= 1 && length <= whole && offset <= whole - length;
}

} // namespace

ErrorCode CameraSensor::setInterestSize(unsigned int width, unsigned int height)
{
    if (streaming)
        return StreamRunning;
    if (!fits(settings.offsetX, width, sensorWidth) ||
        !fits(settings.offsetY, height, sensorHeight))
        return BadValue;
    settings.width = width;
    settings.height = height;
    return Success;
}

ErrorCode CameraSensor::setOffset(unsigned int x, unsigned int y)
{
    if (!fits(x, settings.width, sensorWidth) || !fits(y, settings.height, sensorHeight))
        return BadValue;
    settings.offsetX = x;
    settings.offsetY = y;
    return Success;
}

ErrorCode CameraSensor::setExposure(qint64 microseconds)
{
    if (microseconds < minimumExposureUs || microseconds > maximumExposureUs)
        return BadValue;
    if (streaming)
        return StreamRunning;
    settings.exposureUs = static_cast<unsigned int>(microseconds);
    return Success;
}

ErrorCode CameraSensor::setGain(qint64 steps)
{
    if (steps < 0 || steps > maximumGain)
        return BadValue;
    settings.gain = static_cast<unsigned int>(steps);
    return Success;
}

ErrorCode CameraSensor::setPixelFormat(qint64 format)
{
    if (format < CameraSpace::Mono8 || format > CameraSpace::RGB8)
        return BadValue;
    if (streaming)
        return StreamRunning;
    settings.format = static_cast<CameraSpace::PixelFormatType>(format);
    return Success;
}

ErrorCode CameraSensor::setTriggerMode(CameraSpace::TriggerMode triggerMode)
{
    if (triggerMode < CameraSpace::FreeRunning || triggerMode > CameraSpace::HardwareTrigger)
        return BadValue;
    if (streaming)
        return StreamRunning;
    mode = triggerMode;
    return Success;
}

CameraSpace::TriggerMode CameraSensor::triggerMode() const
{
    return mode;
}

ErrorCode CameraSensor::start()
{
    if (streaming)
        return StreamRunning;
    streaming = true;
    startTime = Clock::now();
    countedFrames = 0;
    nextFrame = 0;
    return Success;
}

ErrorCode CameraSensor::stop()
{
    countedFrames = framesTaken();
    streaming = false;
    return Success;
}

ErrorCode CameraSensor::trigger(CameraSpace::TriggerMode kind)
{
    if (!streaming || mode != kind || kind == CameraSpace::FreeRunning)
        return WrongTriggerMode;
    ++countedFrames;
    return Success;
}

void CameraSensor::discard()
{
    nextFrame = framesTaken();
}

bool CameraSensor::hasFrame() const
{
    return oldestWaiting() < framesTaken();
}

bool CameraSensor::isStreaming() const
{
    return streaming;
}

Clock::time_point CameraSensor::nextFrameTime(Clock::time_point atLatest) const
{
    if (mode != CameraSpace::FreeRunning)
        return atLatest;
    const Clock::time_point next = startTime + (framesTaken() + 1) * framePeriod();
    return std::min(atLatest, next);
}

qint64 CameraSensor::takeFrame()
{
    const qint64 frame = oldestWaiting();
    nextFrame = frame + 1;
    return frame;
}

Clock::duration CameraSensor::framePeriod() const
{
    return std::max(shortestPeriod, std::chrono::microseconds(settings.exposureUs));
}

qint64 CameraSensor::framesTaken() const
{
    if (!streaming || mode != CameraSpace::FreeRunning)
        return countedFrames;
    return (Clock::now() - startTime) / framePeriod();
}

qint64 CameraSensor::oldestWaiting() const
{
    return std::max(nextFrame, framesTaken() - bufferedFrames);
}

} // namespace VirtualScanner
