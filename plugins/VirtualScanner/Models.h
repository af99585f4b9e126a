#ifndef VIRTUALSCANNER_MODELS_H
#define VIRTUALSCANNER_MODELS_H

#include "VirtualDevice.h"

namespace VirtualScanner {

/// The plug-in's list of devices: 0 the scanner with all four capabilities, 1 a camera, 2 a
/// turntable (motor), 3 a device with no capability.
int modelCount();

/// A new device of the kind that stands at `index` (0 to modelCount() - 1).
DevicePointer makeDevice(int index);

} // namespace VirtualScanner

#endif
