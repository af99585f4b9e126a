// What the frame thread asks for images. Tests replace it by images that take a stated time.
#ifndef TESSEL3SYNCSIMULATOR_PICTURESOURCE_H
#define TESSEL3SYNCSIMULATOR_PICTURESOURCE_H

#include "render/Exposure.h"

#include <cstdint>
#include <vector>

namespace Tessel3SyncSimulator {

/// Everything that the images of a delivery depend on, read at one time.
struct Shot
{
    int frame = 0;
    int width = 0;
    int height = 0;
    std::uint32_t seed = 0;
    double tableDegrees = 0.0;
    Purpose purpose = Purpose::Scan;
    LightSettings light;
    std::vector<ConnectedCamera> cameras;
};

using Images = std::vector<std::vector<unsigned char>>;

/// Makes the images of frames, for the frame thread alone.
class PictureSource
{
public:
    virtual ~PictureSource() = default;

    /// Whether the scene of the shot is ready, so that taking it is quick. Returns at once.
    virtual bool isReady(const Shot &shot) const = 0;

    // The simulator's mutex must not be held for these.

    /// Makes the scene ready, however long it takes.
    virtual void prepare(const Shot &shot) = 0;

    /// One buffer for each camera of the shot, valid until the next one is taken.
    virtual Images &take(const Shot &shot) = 0;
};

} // namespace Tessel3SyncSimulator

#endif
