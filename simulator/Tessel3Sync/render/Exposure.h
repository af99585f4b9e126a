// One camera's picture before noise, and the reading of it, which is cheap enough for every frame.
#ifndef TESSEL3SYNCSIMULATOR_EXPOSURE_H
#define TESSEL3SYNCSIMULATOR_EXPOSURE_H

#include "render/CaptureSettings.h"
#include "render/View.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace Tessel3SyncSimulator {

/// Gray levels that each light gives a white surface facing it, at default exposure and gain.
using LightPowers = std::array<double, LightCount>;

enum class Purpose { Scan, ColorScan, Snapshot };

LightPowers lightPowers(const LightSettings &settings, Purpose purpose);

class Exposure
{
public:
    Exposure(std::shared_ptr<const View> seen, Channel seenIn, const LightPowers &lights,
             const CameraSettings &settings);

    /// Whether these would give the same picture.
    bool shows(const View *otherView, Channel otherChannel, const LightPowers &otherPowers,
               const CameraSettings &otherCamera) const;

    /// Writes the picture with the noise of one frame.
    void read(int frame, unsigned char *pixels) const;

private:
    std::shared_ptr<const View> view;
    Channel channel;
    LightPowers powers;
    CameraSettings camera;
    std::vector<std::int16_t> levels;  ///< without noise, in 64ths of a gray level
    std::vector<std::int16_t> spreads; ///< of the noise: what Noise's numbers are multiplied with
};

} // namespace Tessel3SyncSimulator

#endif
