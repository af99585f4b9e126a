// Exposure and gain of each camera.
#include "api/Request.h"

using namespace Tessel3SyncSimulator;

namespace {

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
RETSTATUS onCamera(Request &request, int index, Action action)
{
    return request.needsCameras().run([&](Scanner &scanner, Lock &) {
        ConnectedCamera *camera = scanner.camera(index);
        return camera ? action(camera->settings) : refusal(UnknownCamera);
    });
}

} // namespace

RETSTATUS Tessel3Sync::SetCameraExposureAndGain(void *&device, int camera, double exposure,
                                                int gain)
{
    Request request(call<indexOf("SetCameraExposureAndGain")>(), device);
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
    Request request(call<indexOf("GetCameraExposureAndGain")>(exposure, gain), device);
    return onCamera(request.with(camera), camera, [&](CameraSettings &settings) {
        exposure = settings.exposureUs;
        gain = settings.gain;
        return Success;
    });
}

RETSTATUS Tessel3Sync::SetCameraExposure(void *&device, int camera, double exposure)
{
    Request request(call<indexOf("SetCameraExposure")>(), device);
    return onCamera(request.with(camera, exposure), camera, [&](CameraSettings &settings) {
        if (!isExposure(exposure))
            return refusal(OutOfRange);
        settings.exposureUs = exposure;
        return Success;
    });
}

RETSTATUS Tessel3Sync::GetCameraExposure(void *&device, int camera, double &exposure)
{
    Request request(call<indexOf("GetCameraExposure")>(exposure), device);
    return onCamera(request.with(camera), camera, [&](CameraSettings &settings) {
        exposure = settings.exposureUs;
        return Success;
    });
}

RETSTATUS Tessel3Sync::SetCameraGain(void *&device, int camera, int gain)
{
    Request request(call<indexOf("SetCameraGain")>(), device);
    return onCamera(request.with(camera, gain), camera, [&](CameraSettings &settings) {
        return setIfIn(0, gain, MaximumGain, settings.gain);
    });
}

RETSTATUS Tessel3Sync::GetCameraGain(void *&device, int camera, int &gain)
{
    Request request(call<indexOf("GetCameraGain")>(gain), device);
    return onCamera(request.with(camera), camera, [&](CameraSettings &settings) {
        gain = settings.gain;
        return Success;
    });
}
