// The patterns of the scanner's light sources, which sit together in the middle between the
// cameras. A ray leaves them through the point (u, v) of a plane at distance 1.
#ifndef TESSEL3SYNCSIMULATOR_PROJECTOR_H
#define TESSEL3SYNCSIMULATOR_PROJECTOR_H

#include "render/Vector.h"

#include <cstdint>

namespace Tessel3SyncSimulator {

class Projector
{
public:
    /// `pixel` is the angle of one camera pixel: patterns are as fine as the cameras can see.
    Projector(double pixel, std::uint32_t seed);

    static constexpr Vector position{0.0, -30.0, 0.0};

    // Each pattern has values from 0 to 1.
    double speckle(double u, double v) const;
    double stripes(double u) const;
    double laserLines(double across, bool onlyTheMiddle) const;
    static double vignette(double u, double v);

private:
    double pixel;
    std::uint32_t seed;
};

} // namespace Tessel3SyncSimulator

#endif
