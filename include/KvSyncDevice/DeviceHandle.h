#ifndef KVSYNCDEVICE_DEVICEHANDLE_H
#define KVSYNCDEVICE_DEVICEHANDLE_H

#include <QtCore/qglobal.h>

/// Identifies one device created by a device plug-in: the address of its DeviceInterface as a
/// signed 64-bit number. Valid from createDevice until deleteDevice succeeds; 0 is no device.
using DeviceHandle = qint64;

#endif
