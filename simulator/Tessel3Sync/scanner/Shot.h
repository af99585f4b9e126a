#ifndef TESSEL3SYNCSIMULATOR_SHOT_H
#define TESSEL3SYNCSIMULATOR_SHOT_H

#include "Connection.h"
#include "render/Exposure.h"

#include <cstdint>
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

} // namespace Tessel3SyncSimulator

#endif
