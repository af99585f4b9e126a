#include "MotorAxis.h"

#include <cmath>

namespace VirtualScanner {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double longestTurn = 36000.0; // degrees of one movement: a hundred turns

} // namespace

MotorAxis::MotorAxis(MotorSpace::AxisType type)
    : axisType(type)
{
}

MotorSpace::AxisType MotorAxis::type() const
{
    return axisType;
}

ErrorCode MotorAxis::check(const MotorSpace::RotateInfo &movement) const
{
    // Written so that a NaN is refused, too. A slower movement would outlast what the clock counts.
    const double speed = movement.speedDegreesPerSecond;
    if (speed != 0.0 && !(speed >= lowestSpeed && speed <= highestSpeed))
        return BadValue;
    if (!(std::abs(movement.angleDegrees) <= longestTurn))
        return BadValue;
    if (isMoving())
        return AxisMoving;
    const double target = positionDegrees() + movement.angleDegrees;
    if (axisType == MotorSpace::TiltAxis && std::abs(target) > tiltLimit)
        return BadValue;
    return Success;
}

void MotorAxis::move(const MotorSpace::RotateInfo &movement)
{
    const double speed = movement.speedDegreesPerSecond;
    moveTo(positionDegrees() + movement.angleDegrees, speed > 0.0 ? speed : defaultSpeed);
}

void MotorAxis::moveToReference()
{
    moveTo(0.0, defaultSpeed);
}

void MotorAxis::stop()
{
    targetDegrees = positionDegrees();
    startDegrees = targetDegrees;
    endTime = Clock::now();
}

double MotorAxis::positionDegrees() const
{
    const Clock::time_point now = Clock::now();
    if (now >= endTime)
        return targetDegrees;
    const double done = Seconds(now - startTime) / Seconds(endTime - startTime);
    return startDegrees + (targetDegrees - startDegrees) * done;
}

bool MotorAxis::isMoving() const
{
    return Clock::now() < endTime;
}

Clock::time_point MotorAxis::arrivalTime() const
{
    return endTime;
}

void MotorAxis::moveTo(double degrees, double speed)
{
    startDegrees = positionDegrees();
    targetDegrees = degrees;
    startTime = Clock::now();
    const Seconds duration(std::abs(targetDegrees - startDegrees) / speed);
    endTime = startTime + std::chrono::duration_cast<Clock::duration>(duration);
}

} // namespace VirtualScanner
