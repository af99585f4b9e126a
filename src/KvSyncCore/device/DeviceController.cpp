#include "KvSyncCore/DeviceController.h"

#include "device/DeviceManager.h"

// The controller itself and its operations of plug-in devices; directlink/ holds the others.

namespace KvSyncCore {

DeviceController::DeviceController(DeviceManager *deviceManager)
    : manager(deviceManager)
{
}

DeviceController::DeviceController(const DeviceController &other) = default;

DeviceController::~DeviceController() = default;

DeviceController &DeviceController::operator=(const DeviceController &other) = default;

ErrorCode DeviceController::loadDevicePlugin(QString pluginName, QVersionNumber version)
{
    return manager->loadDevicePlugin(pluginName, version);
}

QPair<ErrorCode, int> DeviceController::enumDevice(const QString &pluginName,
                                                   const QVersionNumber &version)
{
    return manager->enumDevice(pluginName, version);
}

QPair<ErrorCode, qint64> DeviceController::createDevice(const QString &pluginName,
                                                        const QVersionNumber &version)
{
    return manager->createDevice(pluginName, version);
}

ErrorCode DeviceController::deleteDevice(const DeviceHandle handle)
{
    return manager->deleteDevice(handle);
}

QPair<ErrorCode, QString> DeviceController::name(const DeviceHandle handle)
{
    return manager->name(handle);
}

QPair<ErrorCode, QFlags<BaseDeviceSpace::DeviceType>> DeviceController::types(
    const DeviceHandle handle)
{
    return manager->types(handle);
}

ErrorCode DeviceController::connectDeviceByIndex(const DeviceHandle handle, int index)
{
    return manager->connectDeviceByIndex(handle, index);
}

ErrorCode DeviceController::getProperty(const DeviceHandle handle, const QString &property,
                                        QMap<QString, QVariant> &values)
{
    return manager->getProperty(handle, property, values);
}

ErrorCode DeviceController::setProperty(const DeviceHandle handle, const QString &property,
                                        const QMap<QString, QVariant> &values)
{
    return manager->setProperty(handle, property, values);
}

ErrorCode DeviceController::getExposureTimeRange(const DeviceHandle handle, unsigned int &minimumUs,
                                                 unsigned int &maximumUs, signed char selector)
{
    return manager->getExposureTimeRange(handle, minimumUs, maximumUs, selector);
}

ErrorCode DeviceController::getGainRange(const DeviceHandle handle, unsigned short &minimum,
                                         unsigned int &maximum, signed char selector)
{
    return manager->getGainRange(handle, minimum, maximum, selector);
}

ErrorCode DeviceController::getMaxImageSize(const DeviceHandle handle, unsigned int &width,
                                            unsigned int &height, signed char selector)
{
    return manager->getMaxImageSize(handle, width, height, selector);
}

ErrorCode DeviceController::setInterestSize(const DeviceHandle handle, unsigned int width,
                                            unsigned int height, signed char selector)
{
    return manager->setInterestSize(handle, width, height, selector);
}

ErrorCode DeviceController::getInterestSize(const DeviceHandle handle, unsigned int &width,
                                            unsigned int &height, signed char selector)
{
    return manager->getInterestSize(handle, width, height, selector);
}

ErrorCode DeviceController::setAOIOffset(const DeviceHandle handle, unsigned int x, unsigned int y,
                                         signed char selector)
{
    return manager->setAOIOffset(handle, x, y, selector);
}

ErrorCode DeviceController::getAOIOffset(const DeviceHandle handle, unsigned int &x,
                                         unsigned int &y, signed char selector)
{
    return manager->getAOIOffset(handle, x, y, selector);
}

ErrorCode DeviceController::getPixelFormat(const DeviceHandle handle,
                                           CameraSpace::PixelFormatType &format,
                                           signed char selector)
{
    return manager->getPixelFormat(handle, format, selector);
}

ErrorCode DeviceController::setTriggerMode(const DeviceHandle handle, CameraSpace::TriggerMode mode,
                                           signed char selector)
{
    return manager->setTriggerMode(handle, mode, selector);
}

ErrorCode DeviceController::getTriggerMode(const DeviceHandle handle,
                                           CameraSpace::TriggerMode &mode, signed char selector)
{
    return manager->getTriggerMode(handle, mode, selector);
}

ErrorCode DeviceController::discardFrames(const DeviceHandle handle, signed char selector)
{
    return manager->discardFrames(handle, selector);
}

ErrorCode DeviceController::startStream(const DeviceHandle handle, signed char selector)
{
    return manager->startStream(handle, selector);
}

ErrorCode DeviceController::stopStream(const DeviceHandle handle, signed char selector)
{
    return manager->stopStream(handle, selector);
}

ErrorCode DeviceController::updateFireware(const DeviceHandle handle,
                                           ControllerSpace::FirewareType type,
                                           const QByteArray &image)
{
    return manager->updateFireware(handle, type, image);
}

ErrorCode DeviceController::sendCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                                        const QByteArray &payload)
{
    return manager->sendCommand(handle, type, payload);
}

ErrorCode DeviceController::readCommand(const DeviceHandle handle, ControllerSpace::CmdType type,
                                        QByteArray &answer)
{
    return manager->readCommand(handle, type, answer);
}

ErrorCode DeviceController::lockCommandChannel(const DeviceHandle handle)
{
    return manager->lockCommandChannel(handle);
}

ErrorCode DeviceController::unlockCommandChannel(const DeviceHandle handle)
{
    return manager->unlockCommandChannel(handle);
}

ErrorCode DeviceController::rotate(const DeviceHandle handle,
                                   const QList<MotorSpace::RotateInfo> &movements)
{
    return manager->rotate(handle, movements);
}

ErrorCode DeviceController::waitMotorStop(const DeviceHandle handle,
                                          const QList<MotorSpace::AxisType> &axes)
{
    return manager->waitMotorStop(handle, axes);
}

ErrorCode DeviceController::resetMotor(const DeviceHandle handle,
                                       const QList<MotorSpace::AxisType> &axes)
{
    return manager->resetMotor(handle, axes);
}

ErrorCode DeviceController::stopMotor(const DeviceHandle handle,
                                      const QList<MotorSpace::AxisType> &axes)
{
    return manager->stopMotor(handle, axes);
}

ErrorCode DeviceController::projectorPWM(const DeviceHandle handle, bool on)
{
    return manager->projectorPWM(handle, on);
}

ErrorCode DeviceController::currentProjectorPWM(const DeviceHandle handle, bool &on)
{
    return manager->currentProjectorPWM(handle, on);
}

ErrorCode DeviceController::projectorLEDSwitch(const DeviceHandle handle, bool on)
{
    return manager->projectorLEDSwitch(handle, on);
}

ErrorCode DeviceController::currentProjectorLEDSwitch(const DeviceHandle handle, bool &on)
{
    return manager->currentProjectorLEDSwitch(handle, on);
}

ErrorCode DeviceController::setProjectorLuminance(const DeviceHandle handle, unsigned char red,
                                                  unsigned char green, unsigned char blue)
{
    return manager->setProjectorLuminance(handle, red, green, blue);
}

ErrorCode DeviceController::getProjectorLuminance(const DeviceHandle handle, unsigned char &red,
                                                  unsigned char &green, unsigned char &blue)
{
    return manager->getProjectorLuminance(handle, red, green, blue);
}

ErrorCode DeviceController::scan(const DeviceHandle handle, ProjectorSpace::ScanType type, bool on)
{
    return manager->scan(handle, type, on);
}

ErrorCode DeviceController::writePatternToFlash(const DeviceHandle handle,
                                                ProjectorSpace::MajorPatternType major,
                                                ProjectorSpace::SubPatternType sub, int index,
                                                int width, int height, const QByteArray &pattern)
{
    return manager->writePatternToFlash(handle, major, sub, index, width, height, pattern);
}

} // namespace KvSyncCore
