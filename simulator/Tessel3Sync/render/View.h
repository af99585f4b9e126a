// What one camera sees of the scene, taken apart: how strongly each light reaches each pixel, and
// what the surface throws back. Costly to make and never changed; pictures are mixed from it.
#ifndef TESSEL3SYNCSIMULATOR_VIEW_H
#define TESSEL3SYNCSIMULATOR_VIEW_H

#include <Tessel3SyncSimulator/Control.h>

#include <array>
#include <cstdint>
#include <memory>
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

/// What a picture is taken in.
enum Channel { Brightness, Red, Green, Blue, ChannelCount };

/// All that a view depends on.
struct ViewKey
{
    CameraKind camera;
    int width;
    int height;
    std::uint32_t seed;
    double tableDegrees;
};

struct View
{
    explicit View(const ViewKey &key);

    using Plane = std::vector<std::uint8_t>;

    ViewKey key;
    std::vector<float> depths; ///< millimetres along the camera's axis
    std::array<Plane, LightCount> light;
    std::array<Plane, ChannelCount> reflectance;
};

/// The view for a key, made or remembered: the last of each camera is kept. Any thread; takes its
/// time, so no other lock may be held.
std::shared_ptr<const View> viewFor(const ViewKey &key);

/// Whether viewFor would answer at once.
bool viewIsReady(const ViewKey &key);

} // namespace Tessel3SyncSimulator

#endif
