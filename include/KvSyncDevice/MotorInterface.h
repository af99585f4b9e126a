#ifndef KVSYNCDEVICE_MOTORINTERFACE_H
#define KVSYNCDEVICE_MOTORINTERFACE_H

#include "KvSyncDevice/Visibility.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QList>

namespace MotorSpace {

/// One axis of a device.
enum AxisType : int {
    TurntableAxis = 0,
    TiltAxis = 1,
    LiftAxis = 2,
};

/// One movement of one axis.
struct RotateInfo
{
    AxisType axis = TurntableAxis;
    double angleDegrees = 0.0;          ///< relative; negative turns the other way
    double speedDegreesPerSecond = 0.0; ///< 0 leaves the speed to the motor
};

/// The motor capability. It has no base class; a device offers it by deriving from it in
/// addition to DeviceInterface. The order of the virtual operations is a binary contract. Threads,
/// codes and exceptions: as for DeviceInterface.
class KVSYNC_SHARED_TYPE MotorInterface
{
public:
    /// Starts the movements and returns at once; waitMotorStop waits for their end.
    virtual ErrorCode rotate(const QList<RotateInfo> &movements) = 0;

    /// Returns once every listed axis has stopped.
    virtual ErrorCode waitMotorStop(const QList<AxisType> &axes) = 0;

    /// Moves the listed axes to their reference position.
    virtual ErrorCode resetMotor(const QList<AxisType> &axes) = 0;

    /// Stops the listed axes where they are.
    virtual ErrorCode stopMotor(const QList<AxisType> &axes) = 0;

    /// Last, so that it takes no slot of the operations above.
    virtual ~MotorInterface() = default;
};

} // namespace MotorSpace

#endif
