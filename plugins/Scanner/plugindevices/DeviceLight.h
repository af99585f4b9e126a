#ifndef SCANNER_DEVICELIGHT_H
#define SCANNER_DEVICELIGHT_H

#include "OpenDevice.h"

#include <QtCore/QString>

namespace Scanner {

// What these refuse throws `FunctionNotExist`, and what the plug-in refuses its own code.

/// Shows what the projector's memory holds: "single" or "continuous" switches the light on and
/// starts that sequence, "off" ends both sequences and switches the light off.
void runProjector(OpenDevice &device, const QString &name);

/// Switches "projectorPwm" or "projectorLed", or reserves the controller's "commandChannel".
void switchDeviceFlag(OpenDevice &device, const QString &name, bool on);

/// Light off, pulse-width modulation too.
void switchProjectorOff(OpenDevice &device);

} // namespace Scanner

#endif
