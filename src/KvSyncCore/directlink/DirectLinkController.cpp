#include "KvSyncCore/DeviceController.h"

#include "device/DeviceManager.h"

// The exported controller's operations of the direct link.

namespace KvSyncCore {

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
    // The manager's setter is spelled with a capital letter: part of the contract.
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
