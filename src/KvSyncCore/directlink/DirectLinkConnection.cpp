#include "GlogChannel.h"
#include "LogChannels.h"
#include "device/DeviceManager.h"
#include "directlink/ScannerStatus.h"

#include <cstdio>
#include <string>

namespace KvSyncCore {

using Tessel3Sync::RETSTATUS;
using Tessel3Sync::RETSTATUS_SUCCESS;

namespace {

const char scanningMode[] = "SPECKLE";

// The scanner is opened with its first camera listed a second time, at the end: part of the
// contract.
template <typename T>
void repeatFirst(std::vector<T> &list)
{
    if (!list.empty())
        list.push_back(T(list.front()));
}

} // namespace

ErrorCode DeviceManager::connectDeviceBySerial(const DeviceHandle, const QString &serial)
{
    int cameraCount = 0;
    const RETSTATUS found =
        Tessel3Sync::GetCamerasInformation(serial.toLocal8Bit().constData(), cameraSerials,
                                           cameraValuesA, cameraValuesB, cameraFlags, cameraCount);
    // "RetVa", the four blanks and the full-width colon in GBK are part of the contract.
    std::printf("RetVa: %d    GetCamerasInformation end device_cam_connect\xA3\xBA %d\n",
                static_cast<int>(found), static_cast<int>(cameraSerials.size()));
    if (found != RETSTATUS_SUCCESS || cameraSerials.empty()) {
        std::printf(" GetCamerasInformation Failed, ERROR ID: %d\n", static_cast<int>(found));
        KVSYNC_GLOG_ERROR << " GetCamerasInformation Failed";
        return ConnectFailed;
    }
    std::printf("before ConnectDevice \n");
    KVSYNC_GLOG_INFO << " before connect";

    repeatFirst(cameraSerials);
    repeatFirst(cameraValuesA);
    repeatFirst(cameraValuesB);
    const RETSTATUS connected = Tessel3Sync::ConnectDevice(
        scanningMode, "", cameraSerials, cameraValuesA, cameraValuesB, libraryDevice);
    if (connected != RETSTATUS_SUCCESS) {
        KVSYNC_CRITICAL << "ConnectDevice failed";
        return ConnectFailed;
    }
    std::printf("End ConnectDevice\n");
    KVSYNC_GLOG_INFO << " connect end";
    return Success;
}

ErrorCode DeviceManager::reconnectDevice(const DeviceHandle)
{
    KVSYNC_GLOG_INFO << "reconnectDevice start";
    Tessel3Sync::CloseDeviceCamera(libraryDevice);
    if (Tessel3Sync::ReconnectDevice(libraryDevice) == RETSTATUS_SUCCESS)
        return Success;
    KVSYNC_GLOG_ERROR << "reconnectDevice failed";
    return ConnectFailed;
}

ErrorCode DeviceManager::disconnectDevice(const DeviceHandle)
{
    KVSYNC_GLOG_INFO << "disconnectDevice start";
    Tessel3Sync::SetScanCallBackFunction(libraryDevice, nullptr, this);
    if (Tessel3Sync::DisConnectDevice(libraryDevice) == RETSTATUS_SUCCESS)
        return Success;
    KVSYNC_GLOG_ERROR << "disconnectDevice failed";
    return ConnectFailed;
}

ErrorCode DeviceManager::isConnectedOnU3(const QString &deviceName, bool &connected)
{
    KVSYNC_DEBUG << "isConnectedOnU3 start";
    return resultOf(Tessel3Sync::IsConnectedOnU3(deviceName.toLocal8Bit().constData(), connected),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getFirewareVersion(const QString &first, const QString &second,
                                            QString &version)
{
    KVSYNC_DEBUG << "getFirewareVersion start";
    std::string text;
    const RETSTATUS status = Tessel3Sync::GetFirewareVersion(
        libraryDevice, first.toLocal8Bit().constData(), second.toLocal8Bit().constData(), text);
    version = QString::fromStdString(text);
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::getCamerasInformation(const QString &deviceName, QStringList &serials,
                                               QVector<int> &valuesA, QVector<int> &valuesB,
                                               QVector<bool> &flags, int &count)
{
    KVSYNC_DEBUG << "getCamerasInformation start";
    std::vector<char *> foundSerials;
    std::vector<int> foundA;
    std::vector<int> foundB;
    std::vector<bool> foundFlags;
    const RETSTATUS status = Tessel3Sync::GetCamerasInformation(
        deviceName.toLocal8Bit().constData(), foundSerials, foundA, foundB, foundFlags, count);
    serials.clear();
    for (const char *serial : foundSerials)
        serials.append(QString::fromLocal8Bit(serial));
    valuesA = QVector<int>(foundA.begin(), foundA.end());
    valuesB = QVector<int>(foundB.begin(), foundB.end());
    flags = QVector<bool>(foundFlags.begin(), foundFlags.end());
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::getCameraCount(const QString &deviceName, int &count)
{
    KVSYNC_DEBUG << "getCameraCount start";
    return resultOf(Tessel3Sync::GetCameraCount(deviceName.toLocal8Bit().constData(), count),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getStatusDescriptionString(const int &status, QString &text)
{
    KVSYNC_DEBUG << "getStatusDescriptionString start";
    int asked = status;
    char *description = nullptr;
    Tessel3Sync::GetStatusDescriptionString(asked, description);
    text = QString::fromLocal8Bit(description);
    return Success;
}

ErrorCode DeviceManager::getConnectCameraCount(int &count)
{
    KVSYNC_DEBUG << "getConnectCameraCount start";
    return resultOf(Tessel3Sync::GetConnectCameraCount(libraryDevice, count),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getCameraSerialNumber(const int &index, QString &serial)
{
    KVSYNC_DEBUG << "getCameraSerialNumber start";
    char *text = nullptr;
    const RETSTATUS status = Tessel3Sync::GetCameraSerialNumber(libraryDevice, index, text);
    std::printf("serials:%s\n", text ? text : "(null)");
    serial = QString::fromLocal8Bit(text);
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::getCameraResolution(const int &index, int &width, int &height)
{
    KVSYNC_DEBUG << "getCameraResolution start";
    return resultOf(Tessel3Sync::GetCameraResolution(libraryDevice, index, width, height),
                    DeviceOperationFailed);
}

} // namespace KvSyncCore
