// Exposure and gain of each camera.
#include "Ranges.h"
#include "Request.h"

using namespace Tessel3SyncSimulator;

namespace {

/// The settings of a camera by its number; null if there is no such camera.
CameraSettings *settingsOf(Simulator &simulator, int camera)
{
    auto &cameras = simulator.connection.cameras;
    const auto index = static_cast<std::size_t>(camera);
    return camera >= 0 && index < cameras.size() ? &cameras[index].settings : nullptr;
}

bool isExposure(double exposure)
{
    return exposure >= MinimumExposureUs && exposure <= MaximumExposureUs;
}

bool isGain(int gain)
{
    return isIn(0, gain, MaximumGain);
}

/// Runs what is asked of one camera, if it exists.
template <typename Action>
RETSTATUS onCamera(Request &request, int camera, Action action)
{
    return request.needsCameras().run([&](Simulator &simulator, Lock &) {
        CameraSettings *settings = settingsOf(simulator, camera);
        return settings ? action(*settings) : refusal(UnknownCamera);
    });
}

} // namespace

RETSTATUS Tessel3Sync::SetCameraExposureAndGain(void *&device, int camera, double exposure,
                                                int gain)
{
    Request request("SetCameraExposureAndGain", device);
    return onCamera(request.with(camera, exposure, gain), camera, [&](CameraSettings &settings) {
        if (!isExposure(exposure) || !isGain(gain))
            return refusal(OutOfRange);
        settings = {exposure, gain};
        return Success;
    });
}

RETSTATUS Tessel3Sync::GetCameraExposureAndGain(void *&device, int camera, double &exposure,
                                                int &gain)
{
    Request request("GetCameraExposureAndGain", device);
    request.with(camera).out("exposure", exposure).out("gain", gain);
    return onCamera(request, camera, [&](CameraSettings &settings) {
        exposure = settings.exposureUs;
        gain = settings.gain;
        return Success;
    });
}

RETSTATUS Tessel3Sync::SetCameraExposure(void *&device, int camera, double exposure)
{
    Request request("SetCameraExposure", device);
    return onCamera(request.with(camera, exposure), camera, [&](CameraSettings &settings) {
        if (!isExposure(exposure))
            return refusal(OutOfRange);
        settings.exposureUs = exposure;
        return Success;
    });
}

RETSTATUS Tessel3Sync::GetCameraExposure(void *&device, int camera, double &exposure)
{
    Request request("GetCameraExposure", device);
    request.with(camera).out("exposure", exposure);
    return onCamera(request, camera, [&](CameraSettings &settings) {
        exposure = settings.exposureUs;
        return Success;
    });
}

RETSTATUS Tessel3Sync::SetCameraGain(void *&device, int camera, int gain)
{
    Request request("SetCameraGain", device);
    return onCamera(request.with(camera, gain), camera, [&](CameraSettings &settings) {
        return setIfIn(0, gain, MaximumGain, settings.gain);
    });
}

RETSTATUS Tessel3Sync::GetCameraGain(void *&device, int camera, int &gain)
{
    Request request("GetCameraGain", device);
    request.with(camera).out("gain", gain);
    return onCamera(request, camera, [&](CameraSettings &settings) {
        gain = settings.gain;
        return Success;
    });
}
