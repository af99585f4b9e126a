#ifndef KVSYNCDEVICE_DEVICEHANDLE_H
#define KVSYNCDEVICE_DEVICEHANDLE_H

#include <QtCore/qglobal.h>

/// Names one device made by a device plug-in: the address of its DeviceInterface taken as a signed
/// 64-bit number. Valid from createDevice until deleteDevice succeeded; 0 names no device.
using DeviceHandle = qint64;

#endif
