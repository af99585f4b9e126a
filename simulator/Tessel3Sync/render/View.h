// What one camera sees of the scene: how strongly each light reaches each pixel, and how much the
// surface reflects. Expensive to make and never changed; pictures are composed from it.
#ifndef TESSEL3SYNCSIMULATOR_VIEW_H
#define TESSEL3SYNCSIMULATOR_VIEW_H

#include <Tessel3SyncSimulator/Control.h>

#include <array>
#include <cstdint>
#include <vector>

namespace Tessel3SyncSimulator {

enum Light {
    AmbientLight,
    FlatLight,
    SpeckleLight,
    StripeLight,
    StrobeLight,
    InfraredLight,
    OneLaserLine,
    ParallelLaserLines,
    CrossedLaserLines,
    LightCount
};

/// The channel in which a picture is taken.
enum Channel { Brightness, Red, Green, Blue, ChannelCount };

/// All that a view depends on.
struct ViewKey
{
    CameraKind camera;
    int width;
    int height;
    std::uint32_t seed;
    double tableDegrees;

    bool operator==(const ViewKey &other) const;
};

struct View
{
    explicit View(const ViewKey &key);

    /// What a light gives a surface that faces it at 600 mm. Planes hold eight times that, since no
    /// surface is near enough for more.
    static constexpr double fullLight = 8192.0;
    static constexpr double fullReflectance = 255.0;

    ViewKey key;
    std::vector<float> depths; ///< as Control.h's trueDepth
    std::array<std::vector<std::uint16_t>, LightCount> light;
    std::array<std::vector<std::uint8_t>, ChannelCount> reflectance;
};

/// The depths of a view alone, for much less work.
std::vector<float> depthsOf(const ViewKey &key);

} // namespace Tessel3SyncSimulator

#endif
