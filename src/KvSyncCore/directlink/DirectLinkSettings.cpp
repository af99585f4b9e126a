#include "LogChannels.h"
#include "device/DeviceManager.h"
#include "directlink/ScannerStatus.h"

namespace KvSyncCore {

using Tessel3Sync::RETSTATUS;

// Locals handed out by reference start at 0 and are written back whatever the status. Camera
// numbers widen with their sign, gains without.

namespace {

unsigned short low16Bits(int gain)
{
    return static_cast<unsigned short>(gain);
}

} // namespace

ErrorCode DeviceManager::setGainAndExpo(const DeviceHandle, unsigned short gain, double exposure,
                                        signed char camera)
{
    const RETSTATUS status =
        Tessel3Sync::SetCameraExposureAndGain(libraryDevice, camera, exposure, gain);
    // The setter logs under the getter's name: part of the contract.
    KVSYNC_DEBUG << "getGainAndExpo :" << exposure << " gain: " << gain;
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::getGainAndExpo(const DeviceHandle, unsigned short &gain, double &exposure,
                                        signed char camera)
{
    double readExposure = 0.0;
    int readGain = 0;
    const RETSTATUS status =
        Tessel3Sync::GetCameraExposureAndGain(libraryDevice, camera, readExposure, readGain);
    exposure = readExposure;
    gain = low16Bits(readGain);
    KVSYNC_DEBUG << "getGainAndExpo :" << exposure << " gain: " << gain;
    return resultOf(status, DeviceOperationFailed);
}

// The spelling "Exopsure" is part of the contract.
ErrorCode DeviceManager::setExopsureTime(const DeviceHandle, double exposure, signed char camera)
{
    // Says success before the call is made: part of the contract.
    KVSYNC_DEBUG << "exposureTime:" << exposure << ",cameraID:" << static_cast<int>(camera)
                 << ",func default success";
    return resultOf(Tessel3Sync::SetCameraExposure(libraryDevice, camera, exposure),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getExposureTime(const DeviceHandle, double &exposure, signed char camera)
{
    const RETSTATUS status = Tessel3Sync::GetCameraExposure(libraryDevice, camera, exposure);
    KVSYNC_DEBUG << "GetCameraExposure :" << exposure;
    return resultOf(status, DeviceOperationFailed);
}

// Always a success, unlike the exposure: part of the contract.
ErrorCode DeviceManager::setGain(const DeviceHandle, unsigned short gain, signed char camera)
{
    // Says success before the call is made: part of the contract.
    KVSYNC_DEBUG << "gain:" << gain << ",cameraID:" << static_cast<int>(camera)
                 << ",func default success";
    Tessel3Sync::SetCameraGain(libraryDevice, camera, gain);
    return Success;
}

// Always a success, unlike the exposure: part of the contract.
ErrorCode DeviceManager::getGain(const DeviceHandle, unsigned short &gain, signed char camera)
{
    int readGain = 0;
    Tessel3Sync::GetCameraGain(libraryDevice, camera, readGain);
    gain = low16Bits(readGain);
    KVSYNC_DEBUG << "getGain: " << gain;
    return Success;
}

ErrorCode DeviceManager::setVideoTriggerPeriod(const int period)
{
    KVSYNC_DEBUG << "setVideoTriggerPeriod start";
    return resultOf(Tessel3Sync::SetVideoTriggerPeriod(libraryDevice, period),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getVideoTriggerPeriod(int &period)
{
    KVSYNC_DEBUG << "getVideoTriggerPeriod start";
    return resultOf(Tessel3Sync::GetVideoTriggerPeriod(libraryDevice, period),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::setStrobeDutioRatio(const int &first, const int &second, const int &third)
{
    KVSYNC_DEBUG << "setStrobeDutioRatio start";
    const RETSTATUS status = Tessel3Sync::SetStrobeDutioRatio(libraryDevice, first, second, third);
    KVSYNC_DEBUG << " setStrobeDutioRatio over, ret: " << static_cast<int>(status);
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::getStrobeDutioRatio(int &first, int &second, int &third)
{
    KVSYNC_DEBUG << "getStrobeDutioRatio start";
    const RETSTATUS status = Tessel3Sync::GetStrobeDutioRatio(libraryDevice, first, second, third);
    KVSYNC_DEBUG << " getStrobeDutioRatio over, ret: " << static_cast<int>(status);
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::setProjectDutioRatio(const int ratio)
{
    KVSYNC_DEBUG << "setProjectDutioRatio start";
    return resultOf(Tessel3Sync::SetProjectDutioRatio(libraryDevice, ratio), DeviceOperationFailed);
}

ErrorCode DeviceManager::getProjectDutioRatio(int &ratio)
{
    KVSYNC_DEBUG << "getProjectDutioRatio start";
    return resultOf(Tessel3Sync::GetProjectDutioRatio(libraryDevice, ratio), DeviceOperationFailed);
}

// The capital letter, unlike the getter's, is part of the contract.
ErrorCode DeviceManager::SetProjectorBrightness(int brightness)
{
    KVSYNC_DEBUG << "SetProjectorBrightness start";
    const RETSTATUS status = Tessel3Sync::SetProjectorBrightness(libraryDevice, brightness);
    // Says success whatever the status: part of the contract.
    KVSYNC_DEBUG << "SetProjectorBrightness success, ret: " << static_cast<int>(status);
    return resultOf(status, DeviceOperationFailed);
}

ErrorCode DeviceManager::getProjectorBrightness(int &brightness)
{
    KVSYNC_DEBUG << "getProjectorBrightness start";
    return resultOf(Tessel3Sync::GetProjectorBrightness(libraryDevice, brightness),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getLaserLineDutioRatio(int &ratio)
{
    KVSYNC_DEBUG << "getLaserLineDutioRatio start";
    return resultOf(Tessel3Sync::GetLaserLineDutioRatio(libraryDevice, ratio),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::getIRLaserDutioRatio(int &ratio)
{
    KVSYNC_DEBUG << "getIRLaserDutioRatio start";
    return resultOf(Tessel3Sync::GetIRLaserDutioRatio(libraryDevice, ratio), DeviceOperationFailed);
}

ErrorCode DeviceManager::setDistanceIndicate(const int status)
{
    // Logs under another operation's name: part of the contract.
    KVSYNC_DEBUG << "getCameraCount start";
    return resultOf(Tessel3Sync::SetDistanceIndicate(
                        libraryDevice, static_cast<Tessel3Sync::DISTANCESTATUS>(status)),
                    DeviceOperationFailed);
}

} // namespace KvSyncCore
