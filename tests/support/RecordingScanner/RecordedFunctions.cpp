#include "support/RecordingScanner/CallText.h"
#include "support/RecordingScanner/RecordingScanner.h"

#include <type_traits>
#include <utility>

// The forty-one functions, each of which records its call and runs its effect.

namespace Tessel3Sync {

namespace {

KvSyncTest::ScannerEffects &effects()
{
    return KvSyncTest::recordingScanner().effects;
}

RETSTATUS statusOf(const char *function, RETSTATUS fromEffect)
{
    const auto &statuses = KvSyncTest::recordingScanner().statuses;
    const auto found = statuses.find(function);
    return found == statuses.end() ? fromEffect : static_cast<RETSTATUS>(found->second);
}

template <typename Argument>
void addPlace(const Argument &argument, std::set<const void *> &places)
{
    if constexpr (std::is_same_v<Argument, void *>)
        places.insert(&argument);
}

template <typename Function, typename... Arguments>
RETSTATUS record(const char *name, const KvSyncTest::Effect<Function> &effect,
                 Arguments &&...arguments)
{
    KvSyncTest::RecordingScanner &scanner = KvSyncTest::recordingScanner();
    KvSyncTest::CallText call(name, scanner.pointerNames);
    (call.add(arguments), ...);
    scanner.pointerPlaces[name].clear();
    (addPlace(arguments, scanner.pointerPlaces[name]), ...);
    if (scanner.onCall)
        scanner.onCall(call.text());
    return statusOf(name,
                    effect ? effect(std::forward<Arguments>(arguments)...) : RETSTATUS_SUCCESS);
}

} // namespace

RETSTATUS GetCamerasInformation(const char *name, std::vector<char *> &serials, std::vector<int> &a,
                                std::vector<int> &b, std::vector<bool> &flags, int &count)
{
    return record("GetCamerasInformation", effects().GetCamerasInformation, name, serials, a, b,
                  flags, count);
}

RETSTATUS ConnectDevice(const char *mode, const char *extra, std::vector<char *> &serials,
                        std::vector<int> &a, std::vector<int> &b, void *&device)
{
    return record("ConnectDevice", effects().ConnectDevice, mode, extra, serials, a, b, device);
}

RETSTATUS CloseDeviceCamera(void *&device)
{
    return record("CloseDeviceCamera", effects().CloseDeviceCamera, device);
}

RETSTATUS ReconnectDevice(void *&device)
{
    return record("ReconnectDevice", effects().ReconnectDevice, device);
}

RETSTATUS DisConnectDevice(void *&device)
{
    return record("DisConnectDevice", effects().DisConnectDevice, device);
}

RETSTATUS IsConnectedOnU3(const char *name, bool &connected)
{
    return record("IsConnectedOnU3", effects().IsConnectedOnU3, name, connected);
}

RETSTATUS GetFirewareVersion(void *device, const char *first, const char *second,
                             std::string &version)
{
    return record("GetFirewareVersion", effects().GetFirewareVersion, device, first, second,
                  version);
}

RETSTATUS GetCameraCount(const char *name, int &count)
{
    return record("GetCameraCount", effects().GetCameraCount, name, count);
}

RETSTATUS GetConnectCameraCount(void *&device, int &count)
{
    return record("GetConnectCameraCount", effects().GetConnectCameraCount, device, count);
}

RETSTATUS GetCameraSerialNumber(void *&device, int index, char *&serial)
{
    return record("GetCameraSerialNumber", effects().GetCameraSerialNumber, device, index, serial);
}

RETSTATUS GetCameraResolution(void *&device, int index, int &width, int &height)
{
    return record("GetCameraResolution", effects().GetCameraResolution, device, index, width,
                  height);
}

RETSTATUS GetStatusDescriptionString(int &status, char *&text)
{
    return record("GetStatusDescriptionString", effects().GetStatusDescriptionString, status, text);
}

RETSTATUS SetScanCallBackFunction(void *&device, ScanCallBack function, void *context)
{
    return record("SetScanCallBackFunction", effects().SetScanCallBackFunction, device, function,
                  context);
}

RETSTATUS SetStatusCallBackFunction(void *&device, StatusCallBack function, void *context)
{
    return record("SetStatusCallBackFunction", effects().SetStatusCallBackFunction, device,
                  function, context);
}

RETSTATUS SetStrobeControlledByTrigger(void *&device, CONTROLROUTE route, STROBE_STATE state)
{
    return record("SetStrobeControlledByTrigger", effects().SetStrobeControlledByTrigger, device,
                  route, state);
}

RETSTATUS SetDistanceIndicate(void *&device, DISTANCESTATUS status)
{
    return record("SetDistanceIndicate", effects().SetDistanceIndicate, device, status);
}

RETSTATUS Project(void *&device, PROJECTWORKTYPES type)
{
    return record("Project", effects().Project, device, type);
}

RETSTATUS EnableIRLaser(void *&device, bool enable)
{
    return record("EnableIRLaser", effects().EnableIRLaser, device, enable);
}

RETSTATUS EnableBlueLaser(void *&device, LASERWORKMODE mode, bool enable)
{
    return record("EnableBlueLaser", effects().EnableBlueLaser, device, mode, enable);
}

RETSTATUS EnableVideoTrigger(void *&device, CAMERA_TRIGGER_MODE mode, bool enable)
{
    return record("EnableVideoTrigger", effects().EnableVideoTrigger, device, mode, enable);
}

RETSTATUS SetVideoTriggerPeriod(void *&device, int period)
{
    return record("SetVideoTriggerPeriod", effects().SetVideoTriggerPeriod, device, period);
}

RETSTATUS GetVideoTriggerPeriod(void *&device, int &period)
{
    return record("GetVideoTriggerPeriod", effects().GetVideoTriggerPeriod, device, period);
}

RETSTATUS SetStrobeDutioRatio(void *&device, int first, int second, int third)
{
    return record("SetStrobeDutioRatio", effects().SetStrobeDutioRatio, device, first, second,
                  third);
}

RETSTATUS GetStrobeDutioRatio(void *&device, int &first, int &second, int &third)
{
    return record("GetStrobeDutioRatio", effects().GetStrobeDutioRatio, device, first, second,
                  third);
}

RETSTATUS SetLaserLineDutioRatio(void *&device, int ratio)
{
    return record("SetLaserLineDutioRatio", effects().SetLaserLineDutioRatio, device, ratio);
}

RETSTATUS GetLaserLineDutioRatio(void *&device, int &ratio)
{
    return record("GetLaserLineDutioRatio", effects().GetLaserLineDutioRatio, device, ratio);
}

RETSTATUS SetProjectDutioRatio(void *&device, int ratio)
{
    return record("SetProjectDutioRatio", effects().SetProjectDutioRatio, device, ratio);
}

RETSTATUS GetProjectDutioRatio(void *&device, int &ratio)
{
    return record("GetProjectDutioRatio", effects().GetProjectDutioRatio, device, ratio);
}

RETSTATUS SetIRLaserDutioRatio(void *&device, int ratio)
{
    return record("SetIRLaserDutioRatio", effects().SetIRLaserDutioRatio, device, ratio);
}

RETSTATUS GetIRLaserDutioRatio(void *&device, int &ratio)
{
    return record("GetIRLaserDutioRatio", effects().GetIRLaserDutioRatio, device, ratio);
}

RETSTATUS SetProjectorBrightness(void *&device, int brightness)
{
    return record("SetProjectorBrightness", effects().SetProjectorBrightness, device, brightness);
}

RETSTATUS GetProjectorBrightness(void *&device, int &brightness)
{
    return record("GetProjectorBrightness", effects().GetProjectorBrightness, device, brightness);
}

RETSTATUS SetCameraExposureAndGain(void *&device, int camera, double exposure, int gain)
{
    return record("SetCameraExposureAndGain", effects().SetCameraExposureAndGain, device, camera,
                  exposure, gain);
}

RETSTATUS GetCameraExposureAndGain(void *&device, int camera, double &exposure, int &gain)
{
    return record("GetCameraExposureAndGain", effects().GetCameraExposureAndGain, device, camera,
                  exposure, gain);
}

RETSTATUS SetCameraExposure(void *&device, int camera, double exposure)
{
    return record("SetCameraExposure", effects().SetCameraExposure, device, camera, exposure);
}

RETSTATUS GetCameraExposure(void *&device, int camera, double &exposure)
{
    return record("GetCameraExposure", effects().GetCameraExposure, device, camera, exposure);
}

RETSTATUS SetCameraGain(void *&device, int camera, int gain)
{
    return record("SetCameraGain", effects().SetCameraGain, device, camera, gain);
}

RETSTATUS GetCameraGain(void *&device, int camera, int &gain)
{
    return record("GetCameraGain", effects().GetCameraGain, device, camera, gain);
}

RETSTATUS SnapColorImage(void *&device, std::vector<unsigned char *> &images, int &dimension1,
                         int &dimension2, const int &fifth, double &sixth, int &seventh,
                         CONTROLROUTE route)
{
    return record("SnapColorImage", effects().SnapColorImage, device, images, dimension1,
                  dimension2, fifth, sixth, seventh, route);
}

RETSTATUS WriteUserInfomation(void *&device, int address, const char *data, int length)
{
    return record("WriteUserInfomation", effects().WriteUserInfomation, device, address, data,
                  length);
}

RETSTATUS ReadUserInfomation(void *&device, int address, char *&buffer)
{
    return record("ReadUserInfomation", effects().ReadUserInfomation, device, address, buffer);
}

} // namespace Tessel3Sync
