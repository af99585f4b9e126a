#include "KvSyncCore/DeviceController.h"

#include "device/DeviceManager.h"

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

ErrorCode DeviceController::connectDeviceBySerial(const DeviceHandle handle, const QString &serial)
{
    return manager->connectDeviceBySerial(handle, serial);
}

ErrorCode DeviceController::reconnectDevice(const DeviceHandle handle)
{
    return manager->reconnectDevice(handle);
}

ErrorCode DeviceController::disconnectDevice(const DeviceHandle handle)
{
    return manager->disconnectDevice(handle);
}

ErrorCode DeviceController::isConnectedOnU3(const QString &deviceName, bool &connected)
{
    return manager->isConnectedOnU3(deviceName, connected);
}

ErrorCode DeviceController::getFirewareVersion(const QString &first, const QString &second,
                                               QString &version)
{
    return manager->getFirewareVersion(first, second, version);
}

ErrorCode DeviceController::getCamerasInformation(const QString &deviceName, QStringList &serials,
                                                  QVector<int> &valuesA, QVector<int> &valuesB,
                                                  QVector<bool> &flags, int &count)
{
    return manager->getCamerasInformation(deviceName, serials, valuesA, valuesB, flags, count);
}

ErrorCode DeviceController::getCameraCount(const QString &deviceName, int &count)
{
    return manager->getCameraCount(deviceName, count);
}

ErrorCode DeviceController::getStatusDescriptionString(const int &status, QString &text)
{
    return manager->getStatusDescriptionString(status, text);
}

ErrorCode DeviceController::getConnectCameraCount(int &count)
{
    return manager->getConnectCameraCount(count);
}

ErrorCode DeviceController::getCameraSerialNumber(const int &index, QString &serial)
{
    return manager->getCameraSerialNumber(index, serial);
}

ErrorCode DeviceController::getCameraResolution(const int &index, int &width, int &height)
{
    return manager->getCameraResolution(index, width, height);
}

ErrorCode DeviceController::setScanCallback(const DeviceHandle handle, void *function,
                                            void *context)
{
    return manager->setScanCallback(handle, function, context);
}

ErrorCode DeviceController::setStatusCallback(const DeviceHandle handle, void *function,
                                              void *context)
{
    return manager->setStatusCallback(handle, function, context);
}

ErrorCode DeviceController::startScan(QMap<QString, QVariant> &parameters)
{
    return manager->startScan(parameters);
}

ErrorCode DeviceController::stopScan()
{
    return manager->stopScan();
}

ErrorCode DeviceController::executeCommand(const DeviceHandle, const QString &command,
                                           QMap<QString, QVariant> &parameters)
{
    // The handle is dropped: the command table drives the one directly linked scanner.
    return manager->executeCommand(command, parameters);
}

ErrorCode DeviceController::setGainAndExpo(const DeviceHandle handle, unsigned short gain,
                                           double exposure, signed char camera)
{
    return manager->setGainAndExpo(handle, gain, exposure, camera);
}

ErrorCode DeviceController::getGainAndExpo(const DeviceHandle handle, unsigned short &gain,
                                           double &exposure, signed char camera)
{
    return manager->getGainAndExpo(handle, gain, exposure, camera);
}

ErrorCode DeviceController::setExopsureTime(const DeviceHandle handle, double exposure,
                                            signed char camera)
{
    return manager->setExopsureTime(handle, exposure, camera);
}

ErrorCode DeviceController::getExposureTime(const DeviceHandle handle, double &exposure,
                                            signed char camera)
{
    return manager->getExposureTime(handle, exposure, camera);
}

ErrorCode DeviceController::setGain(const DeviceHandle handle, unsigned short gain,
                                    signed char camera)
{
    return manager->setGain(handle, gain, camera);
}

ErrorCode DeviceController::getGain(const DeviceHandle handle, unsigned short &gain,
                                    signed char camera)
{
    return manager->getGain(handle, gain, camera);
}

ErrorCode DeviceController::setVideoTriggerPeriod(int period)
{
    return manager->setVideoTriggerPeriod(period);
}

ErrorCode DeviceController::getVideoTriggerPeriod(int &period)
{
    return manager->getVideoTriggerPeriod(period);
}

ErrorCode DeviceController::setStrobeDutioRatio(const int &first, const int &second,
                                                const int &third)
{
    return manager->setStrobeDutioRatio(first, second, third);
}

ErrorCode DeviceController::getStrobeDutioRatio(int &first, int &second, int &third)
{
    return manager->getStrobeDutioRatio(first, second, third);
}

ErrorCode DeviceController::setProjectDutioRatio(int ratio)
{
    return manager->setProjectDutioRatio(ratio);
}

ErrorCode DeviceController::getProjectDutioRatio(int &ratio)
{
    return manager->getProjectDutioRatio(ratio);
}

ErrorCode DeviceController::setProjectorBrightness(int brightness)
{
    // The manager spells its setter with a capital letter, unlike its getter.
    return manager->SetProjectorBrightness(brightness);
}

ErrorCode DeviceController::getProjectorBrightness(int &brightness)
{
    return manager->getProjectorBrightness(brightness);
}

ErrorCode DeviceController::getLaserLineDutioRatio(int &ratio)
{
    return manager->getLaserLineDutioRatio(ratio);
}

ErrorCode DeviceController::getIRLaserDutioRatio(int &ratio)
{
    return manager->getIRLaserDutioRatio(ratio);
}

ErrorCode DeviceController::setDistanceIndicate(int status)
{
    return manager->setDistanceIndicate(status);
}

ErrorCode DeviceController::grabImage(const DeviceHandle handle, unsigned int route,
                                      QList<CameraSpace::ImageBlock *> &blocks)
{
    return manager->grabImage(handle, route, blocks);
}

ErrorCode DeviceController::writeCustomInfo(const DeviceHandle handle, unsigned int address,
                                            const QByteArray &data)
{
    return manager->writeCustomInfo(handle, address, data);
}

ErrorCode DeviceController::readCustomInfo(const DeviceHandle handle, unsigned int address,
                                           QByteArray &data)
{
    return manager->readCustomInfo(handle, address, data);
}

ErrorCode DeviceController::project(const DeviceHandle handle,
                                    ProjectorSpace::MajorPatternType major,
                                    ProjectorSpace::SubPatternType sub)
{
    return manager->project(handle, major, sub);
}

} // namespace KvSyncCore
