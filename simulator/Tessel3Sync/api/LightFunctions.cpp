// How strong the lights are, in percent.
#include "api/Request.h"

using namespace Tessel3SyncSimulator;

namespace {

RETSTATUS setRatio(CalledFunction called, void *device, int ratio, int LightSettings::*setting)
{
    return Request(std::move(called), device).with(ratio).run([&](Scanner &scanner, Lock &) {
        return setIfIn(0, ratio, MaximumRatio, scanner.light().*setting);
    });
}

RETSTATUS getRatio(CalledFunction called, void *device, int &ratio, int LightSettings::*setting)
{
    return Request(std::move(called), device).run([&](Scanner &scanner, Lock &) {
        ratio = scanner.light().*setting;
        return Success;
    });
}

} // namespace

RETSTATUS Tessel3Sync::SetStrobeDutioRatio(void *&device, int first, int second, int third)
{
    return Request(call<indexOf("SetStrobeDutioRatio")>(), device)
        .with(first, second, third)
        .run([&](Scanner &scanner, Lock &) {
            for (int ratio : {first, second, third}) {
                if (!isIn(0, ratio, MaximumRatio))
                    return refusal(OutOfRange);
            }
            scanner.light().strobeRatios = {first, second, third};
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetStrobeDutioRatio(void *&device, int &first, int &second, int &third)
{
    return Request(call<indexOf("GetStrobeDutioRatio")>(first, second, third), device)
        .run([&](Scanner &scanner, Lock &) {
            const auto &ratios = scanner.light().strobeRatios;
            first = ratios[0];
            second = ratios[1];
            third = ratios[2];
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetLaserLineDutioRatio(void *&device, int ratio)
{
    return setRatio(call<indexOf("SetLaserLineDutioRatio")>(), device, ratio,
                    &LightSettings::laserRatio);
}

RETSTATUS Tessel3Sync::GetLaserLineDutioRatio(void *&device, int &ratio)
{
    return getRatio(call<indexOf("GetLaserLineDutioRatio")>(ratio), device, ratio,
                    &LightSettings::laserRatio);
}

RETSTATUS Tessel3Sync::SetProjectDutioRatio(void *&device, int ratio)
{
    return setRatio(call<indexOf("SetProjectDutioRatio")>(), device, ratio,
                    &LightSettings::projectorRatio);
}

RETSTATUS Tessel3Sync::GetProjectDutioRatio(void *&device, int &ratio)
{
    return getRatio(call<indexOf("GetProjectDutioRatio")>(ratio), device, ratio,
                    &LightSettings::projectorRatio);
}

RETSTATUS Tessel3Sync::SetIRLaserDutioRatio(void *&device, int ratio)
{
    return setRatio(call<indexOf("SetIRLaserDutioRatio")>(), device, ratio,
                    &LightSettings::infraredRatio);
}

RETSTATUS Tessel3Sync::GetIRLaserDutioRatio(void *&device, int &ratio)
{
    return getRatio(call<indexOf("GetIRLaserDutioRatio")>(ratio), device, ratio,
                    &LightSettings::infraredRatio);
}

RETSTATUS Tessel3Sync::SetProjectorBrightness(void *&device, int brightness)
{
    return setRatio(call<indexOf("SetProjectorBrightness")>(), device, brightness,
                    &LightSettings::projectorBrightness);
}

RETSTATUS Tessel3Sync::GetProjectorBrightness(void *&device, int &brightness)
{
    return getRatio(call<indexOf("GetProjectorBrightness")>(brightness), device, brightness,
                    &LightSettings::projectorBrightness);
}
