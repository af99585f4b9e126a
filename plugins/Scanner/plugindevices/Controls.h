#ifndef SCANNER_PLUGINDEVICES_CONTROLS_H
#define SCANNER_PLUGINDEVICES_CONTROLS_H

#include "Connection.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Scanner::PluginDevices {

// What these refuse throws `FunctionNotExist`, and what the plug-in refuses its own code.

/// Shows what the projector's memory holds: "single" or "continuous" switches the light on and
/// starts that sequence, "off" ends both sequences and switches the light off.
void projectPattern(Connection &device, const QString &name);

/// Switches "projectorPwm" or "projectorLed", or reserves the controller's "commandChannel".
void switchFlag(Connection &device, const QString &name, bool on);

/// Light off, pulse-width modulation too.
void switchLightOff(Connection &device);

/// Turns an axis, "turntable", "tilt" or "lift", by {"degrees"}, and returns when it stands still.
/// "degreesPerSecond" (0, which leaves it to the motor, if missing) is the speed. If not
/// `isRelative`, it turns to that angle: then the device must give the property "position" with a
/// key of the axis's name. Throws `FunctionNotExist` for another axis, a device without a motor, or
/// one that does not give its position; `InvalidParameter`; or the plug-in's own code.
void rotateAxis(Connection &device, const QString &name, const QVariantMap &parameters,
                bool isRelative);

/// Moves all axes to their reference position and returns when they stand still.
void resetMotor(Connection &device);

/// Stops all axes where they are.
void stopMotor(Connection &device);

} // namespace Scanner::PluginDevices

#endif
