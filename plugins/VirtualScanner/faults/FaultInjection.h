#ifndef VIRTUALSCANNER_FAULTINJECTION_H
#define VIRTUALSCANNER_FAULTINJECTION_H

#include "PropertyTable.h"

namespace VirtualScanner {

/// Faults on order, for those who test their host or their command plug-in against this one. A
/// driver has no use for it: leave the folder out, and the line of the factory that names it.
///
/// Gives a device the properties "fail", "slow" and "vanish" (see README.md). They pass no gate, so
/// they work on a device that is vanished, failing or not connected. Call it while the device is
/// made.
void injectFaults(DeviceGate &gate, PropertyTable &properties);

} // namespace VirtualScanner

#endif
