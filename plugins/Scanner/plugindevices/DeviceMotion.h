#ifndef SCANNER_DEVICEMOTION_H
#define SCANNER_DEVICEMOTION_H

#include "OpenDevice.h"

#include <QtCore/QVariant>

namespace Scanner {

/// Turns an axis, "turntable", "tilt" or "lift", by {"degrees"}, and returns when it stands still.
/// "degreesPerSecond" (0, which leaves it to the motor, if missing) is the speed. If not
/// `isRelative`, it turns to that angle: then the device must give the property "position" with a
/// key of the axis's name. Throws `FunctionNotExist` for another axis, a device without a motor, or
/// one that does not give its position; `InvalidParameter`; or the plug-in's own code.
void rotateAxis(OpenDevice &device, const QString &name, const QVariantMap &parameters,
                bool isRelative);

/// Moves all axes to their reference position and returns when they stand still.
void resetMotor(OpenDevice &device);

/// Stops all axes where they are.
void stopMotor(OpenDevice &device);

} // namespace Scanner

#endif
