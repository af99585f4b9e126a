#ifndef SCANNER_PLUGINDEVICES_SETTINGS_H
#define SCANNER_PLUGINDEVICES_SETTINGS_H

#include "Connection.h"

#include <QtCore/QVariant>

namespace Scanner::PluginDevices {

// What of a device has a name: the settings that its capabilities offer, which are the same for
// every device plug-in, and the properties that the plug-in itself names.
//
// A setting of a camera's sensor has it in front, from 0: "camera0.size". Unknown names and values
// that cannot be used throw with the plug-in's own code, or `FunctionNotExist` and
// `InvalidParameter` where it was not asked.

/// One map for each setting of the device's capabilities: {"name", "unit", "minimum", "maximum",
/// "count", "readable", "writable", "value"}. Then, if the device has the property
/// "properties" with their "names", {"name"} for each of its own.
QVariantList listSettings(Connection &device);

/// A setting: a number, a flag or a list of numbers. A property of the plug-in's own: the map that
/// it fills; the keys of `value`, if that is a map, go in. If all that came is "value", that alone.
QVariant readSetting(Connection &device, const QString &name, const QVariant &value);

/// `value` for a property of the plug-in's own is its map, or what goes under the key "value".
void writeSetting(Connection &device, const QString &name, const QVariant &value);

} // namespace Scanner::PluginDevices

#endif
