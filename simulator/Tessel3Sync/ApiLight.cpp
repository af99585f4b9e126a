// How strong the lights are, in percent.
#include "Ranges.h"
#include "Request.h"

using namespace Tessel3SyncSimulator;

namespace {

RETSTATUS setRatio(const char *function, void *device, int ratio, int LightSettings::*setting)
{
    return Request(function, device).with(ratio).run([&](Simulator &simulator, Lock &) {
        return setIfIn(0, ratio, MaximumRatio, simulator.connection.light.*setting);
    });
}

RETSTATUS getRatio(const char *function, void *device, const char *name, int &ratio,
                   int LightSettings::*setting)
{
    return Request(function, device).out(name, ratio).run([&](Simulator &simulator, Lock &) {
        ratio = simulator.connection.light.*setting;
        return Success;
    });
}

} // namespace

RETSTATUS Tessel3Sync::SetStrobeDutioRatio(void *&device, int first, int second, int third)
{
    return Request("SetStrobeDutioRatio", device)
        .with(first, second, third)
        .run([&](Simulator &simulator, Lock &) {
            for (int ratio : {first, second, third}) {
                if (!isIn(0, ratio, MaximumRatio))
                    return refusal(OutOfRange);
            }
            simulator.connection.light.strobeRatios = {first, second, third};
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetStrobeDutioRatio(void *&device, int &first, int &second, int &third)
{
    return Request("GetStrobeDutioRatio", device)
        .out("first", first)
        .out("second", second)
        .out("third", third)
        .run([&](Simulator &simulator, Lock &) {
            const auto &ratios = simulator.connection.light.strobeRatios;
            first = ratios[0];
            second = ratios[1];
            third = ratios[2];
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetLaserLineDutioRatio(void *&device, int ratio)
{
    return setRatio("SetLaserLineDutioRatio", device, ratio, &LightSettings::laserRatio);
}

RETSTATUS Tessel3Sync::GetLaserLineDutioRatio(void *&device, int &ratio)
{
    return getRatio("GetLaserLineDutioRatio", device, "ratio", ratio, &LightSettings::laserRatio);
}

RETSTATUS Tessel3Sync::SetProjectDutioRatio(void *&device, int ratio)
{
    return setRatio("SetProjectDutioRatio", device, ratio, &LightSettings::projectorRatio);
}

RETSTATUS Tessel3Sync::GetProjectDutioRatio(void *&device, int &ratio)
{
    return getRatio("GetProjectDutioRatio", device, "ratio", ratio, &LightSettings::projectorRatio);
}

RETSTATUS Tessel3Sync::SetIRLaserDutioRatio(void *&device, int ratio)
{
    return setRatio("SetIRLaserDutioRatio", device, ratio, &LightSettings::infraredRatio);
}

RETSTATUS Tessel3Sync::GetIRLaserDutioRatio(void *&device, int &ratio)
{
    return getRatio("GetIRLaserDutioRatio", device, "ratio", ratio, &LightSettings::infraredRatio);
}

RETSTATUS Tessel3Sync::SetProjectorBrightness(void *&device, int brightness)
{
    return setRatio("SetProjectorBrightness", device, brightness,
                    &LightSettings::projectorBrightness);
}

RETSTATUS Tessel3Sync::GetProjectorBrightness(void *&device, int &brightness)
{
    return getRatio("GetProjectorBrightness", device, "brightness", brightness,
                    &LightSettings::projectorBrightness);
}
