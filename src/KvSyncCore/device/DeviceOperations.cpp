#include "LogChannels.h"
#include "device/DeviceManager.h"

namespace KvSyncCore {

using BaseDeviceSpace::DeviceInterface;
using CameraSpace::CameraInterface;
using ControllerSpace::ControllerInterface;
using MotorSpace::MotorInterface;
using ProjectorSpace::ProjectorInterface;

// Null for an unknown handle and for a device without the capability alike.
template <typename Capability>
Capability *DeviceManager::capability(const DeviceHandle handle)
{
    return dynamic_cast<Capability *>(device(handle));
}

// The one shape of every operation below. A macro, for the operation's signature in the log.
#define KVSYNC_CALL_DEVICE(Capability, invalidHandleText, call)                                    \
    do {                                                                                           \
        auto *const target = capability<Capability>(handle);                                       \
        if (!target) {                                                                             \
            KVSYNC_CRITICAL << (invalidHandleText);                                                \
            return HandleInvalid;                                                                  \
        }                                                                                          \
        return target->call;                                                                       \
    } while (false)

#define KVSYNC_CALL(Capability, call) KVSYNC_CALL_DEVICE(Capability, "handle is invalid", call)

// DeviceInterface

ErrorCode DeviceManager::connectDeviceByIndex(const DeviceHandle handle, int index)
{
    // Only this one begins with "The": part of the contract.
    KVSYNC_CALL_DEVICE(DeviceInterface, "The handle is invalid", connectDeviceByIndex(index));
}

ErrorCode DeviceManager::getProperty(const DeviceHandle handle, const QString &property,
                                     QMap<QString, QVariant> &values)
{
    KVSYNC_CALL(DeviceInterface, getProperty(property, values));
}

ErrorCode DeviceManager::setProperty(const DeviceHandle handle, const QString &property,
                                     const QMap<QString, QVariant> &values)
{
    KVSYNC_CALL(DeviceInterface, setProperty(property, values));
}

// CameraInterface

ErrorCode DeviceManager::getExposureTimeRange(const DeviceHandle handle, unsigned int &minimumUs,
                                              unsigned int &maximumUs, signed char selector)
{
    KVSYNC_CALL(CameraInterface, getExposureTimeRange(minimumUs, maximumUs, selector));
}

ErrorCode DeviceManager::getGainRange(const DeviceHandle handle, unsigned short &minimum,
                                      unsigned int &maximum, signed char selector)
{
    KVSYNC_CALL(CameraInterface, getGainRange(minimum, maximum, selector));
}

ErrorCode DeviceManager::getMaxImageSize(const DeviceHandle handle, unsigned int &width,
                                         unsigned int &height, signed char selector)
{
    KVSYNC_CALL(CameraInterface, getMaxImageSize(width, height, selector));
}

ErrorCode DeviceManager::setInterestSize(const DeviceHandle handle, unsigned int width,
                                         unsigned int height, signed char selector)
{
    KVSYNC_CALL(CameraInterface, setInterestSize(width, height, selector));
}

ErrorCode DeviceManager::getInterestSize(const DeviceHandle handle, unsigned int &width,
                                         unsigned int &height, signed char selector)
{
    KVSYNC_CALL(CameraInterface, getInterestSize(width, height, selector));
}

ErrorCode DeviceManager::setAOIOffset(const DeviceHandle handle, unsigned int x, unsigned int y,
                                      signed char selector)
{
    KVSYNC_CALL(CameraInterface, setAOIOffset(x, y, selector));
}

ErrorCode DeviceManager::getAOIOffset(const DeviceHandle handle, unsigned int &x, unsigned int &y,
                                      signed char selector)
{
    KVSYNC_CALL(CameraInterface, getAOIOffset(x, y, selector));
}

ErrorCode DeviceManager::getPixelFormat(const DeviceHandle handle,
                                        CameraSpace::PixelFormatType &format, signed char selector)
{
    KVSYNC_CALL(CameraInterface, getPixelFormat(format, selector));
}

ErrorCode DeviceManager::setTriggerMode(const DeviceHandle handle, CameraSpace::TriggerMode mode,
                                        signed char selector)
{
    KVSYNC_CALL(CameraInterface, setTriggerMode(mode, selector));
}

ErrorCode DeviceManager::getTriggerMode(const DeviceHandle handle, CameraSpace::TriggerMode &mode,
                                        signed char selector)
{
    KVSYNC_CALL(CameraInterface, getTriggerMode(mode, selector));
}

ErrorCode DeviceManager::discardFrames(const DeviceHandle handle, signed char selector)
{
    KVSYNC_CALL(CameraInterface, discardFrames(selector));
}

ErrorCode DeviceManager::startStream(const DeviceHandle handle, signed char selector)
{
    KVSYNC_CALL(CameraInterface, startStream(selector));
}

ErrorCode DeviceManager::stopStream(const DeviceHandle handle, signed char selector)
{
    KVSYNC_CALL(CameraInterface, stopStream(selector));
}

// ControllerInterface

ErrorCode DeviceManager::updateFireware(const DeviceHandle handle,
                                        ControllerSpace::FirewareType type, const QByteArray &image)
{
    KVSYNC_CALL(ControllerInterface, updateFireware(type, image));
}

ErrorCode DeviceManager::sendCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                                     const QByteArray &payload)
{
    KVSYNC_CALL(ControllerInterface, sendCommand(type, payload));
}

ErrorCode DeviceManager::readCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                                     QByteArray &answer)
{
    KVSYNC_CALL(ControllerInterface, readCommand(type, answer));
}

ErrorCode DeviceManager::lockCommandChannel(const DeviceHandle handle)
{
    KVSYNC_CALL(ControllerInterface, lockCommandChannel());
}

ErrorCode DeviceManager::unlockCommandChannel(const DeviceHandle handle)
{
    KVSYNC_CALL(ControllerInterface, unlockCommandChannel());
}

// MotorInterface

ErrorCode DeviceManager::rotate(const DeviceHandle handle,
                                const QList<MotorSpace::RotateInfo> &movements)
{
    KVSYNC_CALL(MotorInterface, rotate(movements));
}

ErrorCode DeviceManager::waitMotorStop(const DeviceHandle handle,
                                       const QList<MotorSpace::AxisType> &axes)
{
    KVSYNC_CALL(MotorInterface, waitMotorStop(axes));
}

ErrorCode DeviceManager::resetMotor(const DeviceHandle handle,
                                    const QList<MotorSpace::AxisType> &axes)
{
    KVSYNC_CALL(MotorInterface, resetMotor(axes));
}

ErrorCode DeviceManager::stopMotor(const DeviceHandle handle,
                                   const QList<MotorSpace::AxisType> &axes)
{
    KVSYNC_CALL(MotorInterface, stopMotor(axes));
}

// ProjectorInterface

ErrorCode DeviceManager::projectorPWM(const DeviceHandle handle, bool on)
{
    KVSYNC_CALL(ProjectorInterface, projectorPWM(on));
}

ErrorCode DeviceManager::currentProjectorPWM(const DeviceHandle handle, bool &on)
{
    KVSYNC_CALL(ProjectorInterface, currentProjectorPWM(on));
}

ErrorCode DeviceManager::projectorLEDSwitch(const DeviceHandle handle, bool on)
{
    KVSYNC_CALL(ProjectorInterface, projectorLEDSwitch(on));
}

ErrorCode DeviceManager::currentProjectorLEDSwitch(const DeviceHandle handle, bool &on)
{
    KVSYNC_CALL(ProjectorInterface, currentProjectorLEDSwitch(on));
}

ErrorCode DeviceManager::setProjectorLuminance(const DeviceHandle handle, unsigned char red,
                                               unsigned char green, unsigned char blue)
{
    KVSYNC_CALL(ProjectorInterface, setProjectorLuminance(red, green, blue));
}

ErrorCode DeviceManager::getProjectorLuminance(const DeviceHandle handle, unsigned char &red,
                                               unsigned char &green, unsigned char &blue)
{
    KVSYNC_CALL(ProjectorInterface, getProjectorLuminance(red, green, blue));
}

ErrorCode DeviceManager::scan(const DeviceHandle handle, ProjectorSpace::ScanType type, bool on)
{
    KVSYNC_CALL(ProjectorInterface, scan(type, on));
}

ErrorCode DeviceManager::writePatternToFlash(const DeviceHandle handle,
                                             ProjectorSpace::MajorPatternType major,
                                             ProjectorSpace::SubPatternType sub, int index,
                                             int width, int height, const QByteArray &pattern)
{
    KVSYNC_CALL(ProjectorInterface, writePatternToFlash(major, sub, index, width, height, pattern));
}

} // namespace KvSyncCore
