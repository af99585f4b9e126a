// The images of one delivery.
#ifndef TESSEL3SYNCSIMULATOR_PICTURE_H
#define TESSEL3SYNCSIMULATOR_PICTURE_H

#include "Connection.h"
#include "render/Exposure.h"

#include <memory>
#include <vector>

namespace Tessel3SyncSimulator {

/// All that a delivery's images depend on, taken together at one moment.
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

ViewKey viewKey(const Shot &shot, CameraKind camera);

class Picture
{
public:
    /// Makes what is costly for such a shot; returns whether there was anything to make.
    static bool prepare(const Shot &shot);

    void take(const Shot &shot);

    /// Spoils the middle third of every image.
    void corrupt();

    /// One buffer for each camera of the shot last taken, valid until the next.
    std::vector<std::vector<unsigned char>> &images() { return buffers; }

private:
    std::vector<std::unique_ptr<const Exposure>> exposures;
    std::vector<std::vector<unsigned char>> buffers;
};

} // namespace Tessel3SyncSimulator

#endif
