#include "render/Projector.h"

#include "render/Random.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

namespace {

constexpr double specklePitch = 5.5; // camera pixels
constexpr double stripePitch = 24.0;
constexpr double laserHalfWidth = 2.2;
constexpr double laserPitch = 0.05; // at distance 1

/// Rounds down; coordinates are far above -2^20.
int floorOf(double value)
{
    return static_cast<int>(value + 1048576.0) - 1048576;
}

/// A soft hill: 1 in the middle, 0 from the given distance on.
double hill(double squaredDistance, double squaredRadius)
{
    const double rest = 1.0 - squaredDistance / squaredRadius;
    return rest <= 0.0 ? 0.0 : rest * (2.0 - rest);
}

} // namespace

Projector::Projector(double pixelAngle, std::uint32_t patternSeed)
    : pixel(pixelAngle)
    , seed(patternSeed)
{
}

double Projector::speckle(double u, double v) const
{
    const double x = u / (specklePitch * pixel);
    const double y = v / (specklePitch * pixel);
    const int column = floorOf(x);
    const int row = floorOf(y);
    double brightest = 0.0;
    for (int j = row - 1; j <= row + 1; ++j) {
        for (int i = column - 1; i <= column + 1; ++i) {
            const std::uint64_t dot =
                scramble(seed, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j));
            const double dx = i + fraction(dot, 0) - x;
            const double dy = j + fraction(dot, 1) - y;
            const double radius = 0.32 + 0.34 * fraction(dot, 2);
            const double power = 0.35 + 0.65 * fraction(dot, 3);
            brightest = std::max(brightest, power * hill(dx * dx + dy * dy, radius * radius));
        }
    }
    return brightest;
}

double Projector::stripes(double u) const
{
    const double x = u / (stripePitch * pixel);
    const double across = x - floorOf(x) - 0.5;
    return hill(across * across, 0.16);
}

double Projector::laserLines(double across, bool onlyTheMiddle) const
{
    const double x = across / laserPitch;
    const int line = floorOf(x + 0.5);
    if (onlyTheMiddle && line != 0)
        return 0.0;
    const double distance = (across - line * laserPitch) / (laserHalfWidth * pixel);
    return hill(distance * distance, 1.0);
}

double Projector::vignette(double u, double v)
{
    return std::max(0.0, 1.0 - 2.0 * (u * u + v * v));
}

} // namespace Tessel3SyncSimulator
