// The patterns of the scanner's projector. A ray leaves it through the point (u, v) of a plane at
// distance 1, where all sizes here are measured too: a pattern has one size on the object,
// whichever camera looks at it.
#ifndef TESSEL3SYNCSIMULATOR_PROJECTOR_H
#define TESSEL3SYNCSIMULATOR_PROJECTOR_H

#include "render/Vector.h"

#include <climits>
#include <cstdint>
#include <vector>

namespace Tessel3SyncSimulator {

/// Parallel lines of light, as pixels of a width see them.
class Lines
{
public:
    /// The half width is in pitches, the others at distance 1.
    Lines(double pitch, double halfWidth, double pixel);

    /// All of them, one at each whole number of pitches.
    double all(double across) const;

    /// The one at 0 alone.
    double one(double across) const;

private:
    double sumOf(int first, int last, double x) const;

    double perPitch; ///< multiplying is faster than dividing
    double reach;    ///< of one line's light, in pitches
    double perReach;
    double power;
};

class Projector
{
public:
    /// `pixel` is the width of a camera's pixel at distance 1, over which the camera averages.
    Projector(double pixel, std::uint32_t seed);

    static constexpr Vector position{0.0, -30.0, 0.0};

    // How bright each pattern is: 1 where one feature of it is brightest, if the camera can tell
    // it from its surroundings.
    double speckle(double u, double v);
    const Lines stripes;
    const Lines laserLines;
    static double vignette(double u, double v);
    static double infraredCone(double u, double v);

private:
    /// A spot of light in the speckle pattern.
    struct Dot
    {
        double x;
        double y;
        double inverseSquaredRadius;
        double power;
    };

    void lookAround(int newColumn, int newRow);

    std::uint32_t seed;
    double widening; ///< of the squared radius of a dot, by the pixel's width; in cells

    // The dots near the place last asked for: the next place is mostly in the same cell.
    int reach; ///< in cells
    std::vector<Dot> dots;
    int column = INT_MIN;
    int row = INT_MIN;
};

} // namespace Tessel3SyncSimulator

#endif
