#ifndef KVSYNCDEVICE_PROJECTORINTERFACE_H
#define KVSYNCDEVICE_PROJECTORINTERFACE_H

#include "KvSyncDevice/Visibility.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QByteArray>

namespace ProjectorSpace {

/// Family of a projected pattern. The direct scanner link sends the number as the scanner's
/// projection work type.
enum MajorPatternType : int {
    NoPattern = 0,      ///< dark
    FlatPattern = 1,    ///< uniform light
    SpecklePattern = 2, ///< random dots, projected during a scan
    StripePattern = 3,
};

/// Variant within a family.
enum SubPatternType : int {
    DefaultVariant = 0,
    HorizontalVariant = 1,
    VerticalVariant = 2,
};

/// Kind of a projected scan sequence.
enum ScanType : int {
    SingleScan = 0,
    ContinuousScan = 1,
};

/// The projector capability. It has no base class; a device offers it by deriving from it in
/// addition to DeviceInterface. The order of the virtual operations is a binary contract. Threads,
/// codes and exceptions: as for DeviceInterface.
class KVSYNC_SHARED_TYPE ProjectorInterface
{
public:
    /// The pulse-width modulation of the light, on or off.
    virtual ErrorCode projectorPWM(bool on) = 0;
    virtual ErrorCode currentProjectorPWM(bool &on) = 0;

    /// The projector's light.
    virtual ErrorCode projectorLEDSwitch(bool on) = 0;
    virtual ErrorCode currentProjectorLEDSwitch(bool &on) = 0;

    /// Brightness of red, green and blue light, 0 to 255 each.
    virtual ErrorCode setProjectorLuminance(unsigned char red, unsigned char green,
                                            unsigned char blue) = 0;
    virtual ErrorCode getProjectorLuminance(unsigned char &red, unsigned char &green,
                                            unsigned char &blue) = 0;

    /// Reserved slot; never called by the core.
    virtual void projectorReserved1() {}

    /// Starts (`on`) or stops a scan sequence.
    virtual ErrorCode scan(ScanType type, bool on) = 0;

    /// Writes one pattern to the projector's memory: its position there (`index`, from 0), its size
    /// in pixels, and its pixels, one byte each, rows from top to bottom.
    virtual ErrorCode writePatternToFlash(MajorPatternType major, SubPatternType sub, int index,
                                          int width, int height, const QByteArray &pattern) = 0;

    /// Last, so that it takes no slot of the operations above.
    virtual ~ProjectorInterface() = default;
};

} // namespace ProjectorSpace

#endif
