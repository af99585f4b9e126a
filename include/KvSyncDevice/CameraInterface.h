#ifndef KVSYNCDEVICE_CAMERAINTERFACE_H
#define KVSYNCDEVICE_CAMERAINTERFACE_H

#include "KvSyncDevice/Visibility.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QByteArray>

namespace CameraSpace {

/// Layout of one pixel.
enum PixelFormatType : int {
    Mono8 = 0,
    Mono10 = 1,
    Mono12 = 2,
    BayerRG8 = 3,
    RGB8 = 4,
};

/// What triggers a frame.
enum TriggerMode : int {
    FreeRunning = 0,
    SoftwareTrigger = 1,
    HardwareTrigger = 2,
};

/// One captured image. Whoever receives a pointer to a block owns it and must delete it.
struct ImageBlock
{
    qint32 tag = 0;      ///< what the scanner library wrote along with the image
    quint16 width = 0;   ///< first dimension, in pixels
    quint16 height = 0;  ///< second dimension, in pixels
    quint8 bitDepth = 0; ///< bits per pixel
    QByteArray data;     ///< rows from top to bottom, without padding
};

/// The camera capability. It has no base class; a device offers it by deriving from it in addition
/// to DeviceInterface. The order of the virtual operations is a binary contract.
///
/// `selector` chooses a sensor of a multi-camera head; its values are defined by the plug-in, and
/// the core passes them through. Sizes and offsets are in pixels, exposure times in microseconds.
/// Threads, codes and exceptions: as for DeviceInterface.
class KVSYNC_SHARED_TYPE CameraInterface
{
public:
    /// Shortest and longest exposure time, in microseconds.
    virtual ErrorCode getExposureTimeRange(unsigned int &minimumUs, unsigned int &maximumUs,
                                           signed char selector) = 0;

    /// Reserved slots; never called by the core.
    virtual void cameraReserved1() {}
    virtual void cameraReserved2() {}

    /// Lowest and highest gain, in the camera's own steps. The 16-bit minimum beside the 32-bit
    /// maximum is part of the contract.
    virtual ErrorCode getGainRange(unsigned short &minimum, unsigned int &maximum,
                                   signed char selector) = 0;

    /// Reserved slots; never called by the core.
    virtual void cameraReserved3() {}
    virtual void cameraReserved4() {}

    /// Size of the whole sensor.
    virtual ErrorCode getMaxImageSize(unsigned int &width, unsigned int &height,
                                      signed char selector) = 0;

    /// Size of the region of interest.
    virtual ErrorCode setInterestSize(unsigned int width, unsigned int height,
                                      signed char selector) = 0;
    virtual ErrorCode getInterestSize(unsigned int &width, unsigned int &height,
                                      signed char selector) = 0;

    /// Position of that region's upper left corner on the sensor.
    virtual ErrorCode setAOIOffset(unsigned int x, unsigned int y, signed char selector) = 0;
    virtual ErrorCode getAOIOffset(unsigned int &x, unsigned int &y, signed char selector) = 0;

    /// Pixel format of the frames.
    virtual ErrorCode getPixelFormat(PixelFormatType &format, signed char selector) = 0;

    /// What triggers a frame.
    virtual ErrorCode setTriggerMode(TriggerMode mode, signed char selector) = 0;
    virtual ErrorCode getTriggerMode(TriggerMode &mode, signed char selector) = 0;

    /// Discards the frames that wait to be fetched.
    virtual ErrorCode discardFrames(signed char selector) = 0;

    /// Starts and stops acquisition.
    virtual ErrorCode startStream(signed char selector) = 0;
    virtual ErrorCode stopStream(signed char selector) = 0;

    /// Last, so that it takes no slot of the operations above.
    virtual ~CameraInterface() = default;
};

} // namespace CameraSpace

#endif
