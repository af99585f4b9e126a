#include "GlogChannel.h"
#include "LogChannels.h"
#include "device/DeviceManager.h"
#include "directlink/ScannerStatus.h"

namespace KvSyncCore {

using namespace Tessel3Sync;

ErrorCode DeviceManager::setScanCallback(const DeviceHandle, void *function, void *context)
{
    KVSYNC_GLOG_INFO << " setScanCallback start";
    const RETSTATUS status =
        SetScanCallBackFunction(libraryDevice, reinterpret_cast<ScanCallBack>(function), context);
    if (status != RETSTATUS_SUCCESS) {
        KVSYNC_CRITICAL << " setScanCallback failed";
        return CameraFailed;
    }
    KVSYNC_GLOG_INFO << " setScanCallback success";
    return Success;
}

ErrorCode DeviceManager::setStatusCallback(const DeviceHandle, void *function, void *context)
{
    KVSYNC_GLOG_INFO << " setStatusCallback start";
    // The status is ignored, unlike setScanCallback's: part of the contract.
    SetStatusCallBackFunction(libraryDevice, reinterpret_cast<StatusCallBack>(function), context);
    return Success;
}

// No status below is tested: a scan starts with whatever the scanner accepts.
ErrorCode DeviceManager::startScan(QMap<QString, QVariant> &parameters)
{
    SetStrobeControlledByTrigger(libraryDevice, CONTROLROUTE_SCAN, STROBE_STATE_SCAN);
    SetDistanceIndicate(libraryDevice, DISTANCESTATUS_SCAN);
    Project(libraryDevice, PROJECTWORKTYPES_SCAN);
    EnableIRLaser(libraryDevice, false);

    // Subscripts add the missing keys to the caller's map: part of the contract.
    const bool enableColor = parameters[QStringLiteral("bEnableColor")].toBool();
    const int requestedColorMode = parameters[QStringLiteral("colorMode")].toInt();
    const int period = parameters[QStringLiteral("iPeriod")].toInt();
    // The comma after the first colon is part of the contract.
    KVSYNC_GLOG_INFO << "startScan start | bEnableColor: , " << enableColor
                     << " colorMode: " << requestedColorMode << " iPeriod: " << period;
    colorMode = requestedColorMode;

    const CAMERA_TRIGGER_MODE mode =
        enableColor ? static_cast<CAMERA_TRIGGER_MODE>(colorMode) : CAMERA_TRIGGER_MODE_NO_COLOR;
    EnableVideoTrigger(libraryDevice, mode, true);
    SetVideoTriggerPeriod(libraryDevice, period);
    return Success;
}

ErrorCode DeviceManager::stopScan()
{
    // In the stored color mode, even if the scan ran without color in mode 1: part of the contract.
    EnableVideoTrigger(libraryDevice, static_cast<CAMERA_TRIGGER_MODE>(colorMode), false);
    Project(libraryDevice, PROJECTWORKTYPES_OFF);
    return Success;
}

} // namespace KvSyncCore
