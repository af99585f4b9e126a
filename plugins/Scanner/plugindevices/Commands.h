#ifndef SCANNER_PLUGINDEVICES_COMMANDS_H
#define SCANNER_PLUGINDEVICES_COMMANDS_H

#include "Connection.h"

#include <QtCore/QVariant>

namespace Scanner::PluginDevices {

/// What of a plug-in's device has no function of its own. Bytes may be given as a text, which goes
/// in UTF-8. Kinds are the numbers of the enumerations in ControllerInterface.h and
/// ProjectorInterface.h.
///
///   sendCommand     [kind, bytes]  sends one command to the controller
///   readCommand     [kind]         its answer, as bytes
///   updateFirmware  [kind, bytes]  writes a whole image of firmware
///   writePattern    [{"major", "sub", "index", "width", "height", "data"}]
///   stopMotor       []             stops all axes where they are
///
/// Throws `FunctionNotExist` for another command or a device without that capability,
/// `InvalidParameter`, or the plug-in's own code.
QVariant runCommand(Connection &device, const QString &name, const QVariantList &arguments);

/// Those of them that a device with its capabilities has: see CommandInfo::describe.
QVariantList listCommands(const Connection &device);

} // namespace Scanner::PluginDevices

#endif
