#ifndef KVSYNC_TESTS_RECORDINGSCANNER_H
#define KVSYNC_TESTS_RECORDINGSCANNER_H

#include "Tessel3Sync/Tessel3Sync.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace KvSyncTest {

template <typename Function>
using Effect = std::function<Function>;

/// What each function of the scanner library does once its call is recorded, and the status it
/// answers with. An unset effect writes nothing and answers 7.
struct ScannerEffects
{
    Effect<decltype(Tessel3Sync::GetCamerasInformation)> GetCamerasInformation;
    Effect<decltype(Tessel3Sync::ConnectDevice)> ConnectDevice;
    Effect<decltype(Tessel3Sync::CloseDeviceCamera)> CloseDeviceCamera;
    Effect<decltype(Tessel3Sync::ReconnectDevice)> ReconnectDevice;
    Effect<decltype(Tessel3Sync::DisConnectDevice)> DisConnectDevice;
    Effect<decltype(Tessel3Sync::IsConnectedOnU3)> IsConnectedOnU3;
    Effect<decltype(Tessel3Sync::GetFirewareVersion)> GetFirewareVersion;
    Effect<decltype(Tessel3Sync::GetCameraCount)> GetCameraCount;
    Effect<decltype(Tessel3Sync::GetConnectCameraCount)> GetConnectCameraCount;
    Effect<decltype(Tessel3Sync::GetCameraSerialNumber)> GetCameraSerialNumber;
    Effect<decltype(Tessel3Sync::GetCameraResolution)> GetCameraResolution;
    Effect<decltype(Tessel3Sync::GetStatusDescriptionString)> GetStatusDescriptionString;
    Effect<decltype(Tessel3Sync::SetScanCallBackFunction)> SetScanCallBackFunction;
    Effect<decltype(Tessel3Sync::SetStatusCallBackFunction)> SetStatusCallBackFunction;
    Effect<decltype(Tessel3Sync::SetStrobeControlledByTrigger)> SetStrobeControlledByTrigger;
    Effect<decltype(Tessel3Sync::SetDistanceIndicate)> SetDistanceIndicate;
    Effect<decltype(Tessel3Sync::Project)> Project;
    Effect<decltype(Tessel3Sync::EnableIRLaser)> EnableIRLaser;
    Effect<decltype(Tessel3Sync::EnableBlueLaser)> EnableBlueLaser;
    Effect<decltype(Tessel3Sync::EnableVideoTrigger)> EnableVideoTrigger;
    Effect<decltype(Tessel3Sync::SetVideoTriggerPeriod)> SetVideoTriggerPeriod;
    Effect<decltype(Tessel3Sync::GetVideoTriggerPeriod)> GetVideoTriggerPeriod;
    Effect<decltype(Tessel3Sync::SetStrobeDutioRatio)> SetStrobeDutioRatio;
    Effect<decltype(Tessel3Sync::GetStrobeDutioRatio)> GetStrobeDutioRatio;
    Effect<decltype(Tessel3Sync::SetLaserLineDutioRatio)> SetLaserLineDutioRatio;
    Effect<decltype(Tessel3Sync::GetLaserLineDutioRatio)> GetLaserLineDutioRatio;
    Effect<decltype(Tessel3Sync::SetProjectDutioRatio)> SetProjectDutioRatio;
    Effect<decltype(Tessel3Sync::GetProjectDutioRatio)> GetProjectDutioRatio;
    Effect<decltype(Tessel3Sync::SetIRLaserDutioRatio)> SetIRLaserDutioRatio;
    Effect<decltype(Tessel3Sync::GetIRLaserDutioRatio)> GetIRLaserDutioRatio;
    Effect<decltype(Tessel3Sync::SetProjectorBrightness)> SetProjectorBrightness;
    Effect<decltype(Tessel3Sync::GetProjectorBrightness)> GetProjectorBrightness;
    Effect<decltype(Tessel3Sync::SetCameraExposureAndGain)> SetCameraExposureAndGain;
    Effect<decltype(Tessel3Sync::GetCameraExposureAndGain)> GetCameraExposureAndGain;
    Effect<decltype(Tessel3Sync::SetCameraExposure)> SetCameraExposure;
    Effect<decltype(Tessel3Sync::GetCameraExposure)> GetCameraExposure;
    Effect<decltype(Tessel3Sync::SetCameraGain)> SetCameraGain;
    Effect<decltype(Tessel3Sync::GetCameraGain)> GetCameraGain;
    Effect<decltype(Tessel3Sync::SnapColorImage)> SnapColorImage;
    Effect<decltype(Tessel3Sync::WriteUserInfomation)> WriteUserInfomation;
    Effect<decltype(Tessel3Sync::ReadUserInfomation)> ReadUserInfomation;
};

/// The stand-in's one state. Not thread-safe: a test drives it from its own thread.
///
/// A call is recorded as `Function(argument, ...)` with the arguments as they stood before the
/// effect ran, so what a caller hands out by reference shows its initial value. Texts are quoted,
/// lists bracketed; a pointer is null, a name given here, or "?".
class RecordingScanner
{
public:
    ScannerEffects effects;
    /// Statuses that outrank the effect's own; the effect still runs and writes.
    std::map<std::string, int> statuses;
    /// What pointers are called in the record.
    std::map<const void *, std::string> pointerNames;
    /// Where the untyped pointers stood that each function was last handed, by its name: a variable
    /// of the caller's where it takes a reference.
    std::map<std::string, std::set<const void *>> pointerPlaces;
    /// Told of every call before its effect runs.
    std::function<void(const std::string &call)> onCall;

    /// Forgets everything above.
    void reset() { *this = RecordingScanner(); }
};

#if defined(_WIN32)
#if defined(TESSEL3SYNC_LIBRARY)
#define KVSYNC_RECORDINGSCANNER_API __declspec(dllexport)
#else
#define KVSYNC_RECORDINGSCANNER_API __declspec(dllimport)
#endif
#else
#define KVSYNC_RECORDINGSCANNER_API __attribute__((visibility("default")))
#endif

KVSYNC_RECORDINGSCANNER_API RecordingScanner &recordingScanner();

} // namespace KvSyncTest

#endif
