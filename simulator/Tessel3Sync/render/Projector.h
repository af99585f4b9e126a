// The patterns of the scanner's light sources, which sit together in the middle between the
// cameras. A ray leaves them through the point (u, v) of a plane at distance 1.
#ifndef TESSEL3SYNCSIMULATOR_PROJECTOR_H
#define TESSEL3SYNCSIMULATOR_PROJECTOR_H

#include "render/Vector.h"

#include <array>
#include <climits>
#include <cstdint>

namespace Tessel3SyncSimulator {

class Projector
{
public:
    /// `pixel` is the angle of one camera pixel: patterns are as fine as the cameras can see.
    Projector(double pixel, std::uint32_t seed);

    static constexpr Vector position{0.0, -30.0, 0.0};

    // Each pattern has values from 0 to 1.
    double speckle(double u, double v);
    double stripes(double u) const;
    double laserLines(double across, bool onlyTheMiddle) const;
    static double vignette(double u, double v);

private:
    /// A spot of light in the speckle pattern.
    struct Dot
    {
        double x;
        double y;
        double squaredRadius;
        double power;
    };

    void lookAround(int newColumn, int newRow);

    double pixel;
    std::uint32_t seed;

    // The dots near the place last asked for: the next place is mostly in the same cell.
    std::array<Dot, 9> dots{};
    int column = INT_MIN;
    int row = INT_MIN;
};

} // namespace Tessel3SyncSimulator

#endif
