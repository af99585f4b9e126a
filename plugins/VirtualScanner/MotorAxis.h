#ifndef VIRTUALSCANNER_MOTORAXIS_H
#define VIRTUALSCANNER_MOTORAXIS_H

#include "DeviceGate.h"

#include "KvSyncDevice/MotorInterface.h"

namespace VirtualScanner {

/// One axis. Where it stands follows from the clock: it has no thread and no lock of its own, and
/// the device's gate guards it.
class MotorAxis
{
public:
    static constexpr double defaultSpeed = 90.0;  ///< degrees a second
    static constexpr double lowestSpeed = 0.01;   ///< degrees a second
    static constexpr double highestSpeed = 720.0; ///< degrees a second
    static constexpr double tiltLimit = 45.0;     ///< degrees to both sides; a turntable has none

    explicit MotorAxis(MotorSpace::AxisType type);

    MotorSpace::AxisType type() const;
    /// Whether the movement can be carried out from where the axis stands.
    ErrorCode check(const MotorSpace::RotateInfo &movement) const;
    void move(const MotorSpace::RotateInfo &movement);
    /// To 0, at the default speed, from where it is.
    void moveToReference();
    void stop();

    double positionDegrees() const;
    bool isMoving() const;
    Clock::time_point arrivalTime() const;

private:
    void moveTo(double degrees, double speed);

    MotorSpace::AxisType axisType;
    double startDegrees = 0.0;
    double targetDegrees = 0.0;
    Clock::time_point startTime;
    Clock::time_point endTime;
};

} // namespace VirtualScanner

#endif
