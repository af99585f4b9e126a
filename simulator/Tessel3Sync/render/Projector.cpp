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

void Projector::lookAround(int newColumn, int newRow)
{
    column = newColumn;
    row = newRow;
    auto next = dots.begin();
    for (int j = row - 1; j <= row + 1; ++j) {
        for (int i = column - 1; i <= column + 1; ++i) {
            const std::uint64_t dice =
                scramble(seed, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j));
            const double radius = 0.32 + 0.34 * fraction(dice, 2);
            *next++ = {i + fraction(dice, 0), j + fraction(dice, 1), radius * radius,
                       0.35 + 0.65 * fraction(dice, 3)};
        }
    }
}

double Projector::speckle(double u, double v)
{
    const double x = u / (specklePitch * pixel);
    const double y = v / (specklePitch * pixel);
    if (floorOf(x) != column || floorOf(y) != row)
        lookAround(floorOf(x), floorOf(y));
    double brightest = 0.0;
    for (const Dot &dot : dots) {
        const double dx = dot.x - x;
        const double dy = dot.y - y;
        const double square = dx * dx + dy * dy;
        if (square < dot.squaredRadius)
            brightest = std::max(brightest, dot.power * hill(square, dot.squaredRadius));
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
