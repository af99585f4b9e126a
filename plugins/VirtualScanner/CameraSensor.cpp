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

const ImageSettings &CameraSensor::settings() const
{
    return present;
}

ErrorCode CameraSensor::setInterestSize(unsigned int width, unsigned int height)
{
    if (streaming)
        return StreamRunning;
    if (!fits(present.offsetX, width, sensorWidth) || !fits(present.offsetY, height, sensorHeight))
        return BadValue;
    present.width = width;
    present.height = height;
    return Success;
}

ErrorCode CameraSensor::setOffset(unsigned int x, unsigned int y)
{
    if (!fits(x, present.width, sensorWidth) || !fits(y, present.height, sensorHeight))
        return BadValue;
    takeDue(Clock::now()); // with the old offset
    present.offsetX = x;
    present.offsetY = y;
    return Success;
}

ErrorCode CameraSensor::setExposure(qint64 microseconds)
{
    if (microseconds < minimumExposureUs || microseconds > maximumExposureUs)
        return BadValue;
    if (streaming)
        return StreamRunning;
    present.exposureUs = static_cast<unsigned int>(microseconds);
    return Success;
}

ErrorCode CameraSensor::setGain(qint64 steps)
{
    if (steps < 0 || steps > maximumGain)
        return BadValue;
    takeDue(Clock::now()); // with the old gain
    present.gain = static_cast<unsigned int>(steps);
    return Success;
}

ErrorCode CameraSensor::setPixelFormat(qint64 format)
{
    if (format < CameraSpace::Mono8 || format > CameraSpace::RGB8)
        return BadValue;
    if (streaming)
        return StreamRunning;
    present.format = static_cast<CameraSpace::PixelFormatType>(format);
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
    discard();
    streaming = true;
    startTime = Clock::now();
    lastNumber = 0;
    return Success;
}

ErrorCode CameraSensor::stop()
{
    takeDue(Clock::now());
    streaming = false;
    return Success;
}

bool CameraSensor::isStreaming() const
{
    return streaming;
}

ErrorCode CameraSensor::trigger(CameraSpace::TriggerMode kind)
{
    if (!streaming || mode != kind || kind == CameraSpace::FreeRunning)
        return WrongTriggerMode;
    take();
    return Success;
}

void CameraSensor::takeDue(Clock::time_point now)
{
    if (!streaming || mode != CameraSpace::FreeRunning)
        return;
    const qint64 due = (now - startTime) / framePeriod();
    // After a long time only the last ones are worth the making.
    lastNumber = std::max(lastNumber, due - bufferedFrames);
    while (lastNumber < due)
        take();
}

Clock::time_point CameraSensor::nextFrameTime(Clock::time_point atLatest) const
{
    if (!streaming || mode != CameraSpace::FreeRunning)
        return atLatest;
    const Clock::time_point next = startTime + (lastNumber + 1) * framePeriod();
    return std::min(atLatest, next);
}

void CameraSensor::discard()
{
    takeDue(Clock::now());
    while (hasFrame())
        loseOldest();
}

bool CameraSensor::hasFrame() const
{
    return !waiting.empty();
}

FramePointer CameraSensor::fetchOldest()
{
    FramePointer frame = waiting.front();
    waiting.pop_front();
    return frame;
}

FramePointer CameraSensor::nextToRender()
{
    if (unrendered.empty())
        return {};
    FramePointer frame = unrendered.front();
    unrendered.pop_front();
    return frame;
}

Clock::duration CameraSensor::framePeriod() const
{
    return std::max(shortestPeriod, std::chrono::microseconds(present.exposureUs));
}

void CameraSensor::take()
{
    const auto frame = std::make_shared<TakenFrame>(TakenFrame{++lastNumber, present, {}, false});
    waiting.push_back(frame);
    unrendered.push_back(frame);
    if (waiting.size() > static_cast<std::size_t>(bufferedFrames))
        loseOldest();
}

void CameraSensor::loseOldest()
{
    const auto rendering = std::find(unrendered.begin(), unrendered.end(), waiting.front());
    if (rendering != unrendered.end())
        unrendered.erase(rendering);
    waiting.pop_front();
}

} // namespace VirtualScanner
