#ifndef SCANNER_LIGHT_H
#define SCANNER_LIGHT_H

#include "DirectLink.h"

#include <QtCore/QString>

namespace Scanner {

/// Switches a flag: "infraredLaser", "blueLaser" (in work mode 0) or "trigger" (without colour).
/// Throws `FunctionNotExist` for another name, `CommandFailed` if the scanner refuses.
void switchFlag(DirectLink &link, const QString &name, bool on);

/// Projects "off", "stripes", "speckle" or "cross". Throws `FunctionNotExist` for another name,
/// `ProjectorFailed` if the scanner refuses.
void projectPattern(DirectLink &link, const QString &name);

/// Lasers and projector off, in this order, up to the first that the scanner refuses: that throws.
void switchLightOff(DirectLink &link);

} // namespace Scanner

#endif
