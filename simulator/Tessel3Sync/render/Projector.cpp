#include "render/Projector.h"

#include "render/Random.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

namespace {

// At 600 mm these are 1.6, 7 and 30 mm.
constexpr double specklePitch = 0.0027;
constexpr double stripePitch = 0.0117;
constexpr double laserPitch = 0.05;

// Of a line of light, in its pitches.
constexpr double stripeHalfWidth = 0.4;
constexpr double laserHalfWidth = 0.0215;

constexpr double smallestDot = 0.32;
constexpr double largestDot = 0.66;

// A hill whose mean is taken over a pixel becomes a wider and lower one. That of the same light and
// the same variance is near enough: variances of a hill of radius 1 are 0.1875 for a dot and 0.2381
// for a line, that of a pixel of width 1 is a twelfth.
constexpr double dotWidening = 1.0 / 12.0 / 0.1875;
constexpr double lineWidening = 1.0 / 12.0 / 0.2381;

/// Rounds down; coordinates are far above -2^20.
int floorOf(double value)
{
    return static_cast<int>(value + 1048576.0) - 1048576;
}

/// A soft hill over the squared distance: 1 in the middle, 0 from 1 on.
double hill(double square)
{
    return std::max(0.0, 1.0 - square * square);
}

} // namespace

Lines::Lines(double pitch, double halfWidth, double pixel)
    : perPitch(1.0 / pitch)
    , reach(std::sqrt(halfWidth * halfWidth + lineWidening * (pixel / pitch) * (pixel / pitch)))
    , perReach(1.0 / reach)
    , power(halfWidth / reach)
{
}

double Lines::all(double across) const
{
    const double x = across * perPitch;
    return sumOf(floorOf(x - reach) + 1, floorOf(x + reach), x);
}

double Lines::one(double across) const
{
    return sumOf(0, 0, across * perPitch);
}

double Lines::sumOf(int first, int last, double x) const
{
    double sum = 0.0;
    for (int line = first; line <= last; ++line) {
        const double distance = (x - line) * perReach;
        sum += hill(distance * distance);
    }
    return sum * power;
}

Projector::Projector(double pixel, std::uint32_t patternSeed)
    : stripes(stripePitch, stripeHalfWidth, pixel)
    , laserLines(laserPitch, laserHalfWidth, pixel)
    , seed(patternSeed)
    , widening(dotWidening * (pixel / specklePitch) * (pixel / specklePitch))
    , reach(floorOf(std::sqrt(largestDot * largestDot + widening)) + 1)
    , dots(static_cast<std::size_t>(2 * reach + 1) * (2 * reach + 1))
{
}

void Projector::lookAround(int newColumn, int newRow)
{
    column = newColumn;
    row = newRow;
    auto next = dots.begin();
    for (int j = row - reach; j <= row + reach; ++j) {
        for (int i = column - reach; i <= column + reach; ++i) {
            const std::uint64_t dice =
                hash(seed, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j));
            const double radius = smallestDot + (largestDot - smallestDot) * fraction(dice, 2);
            const double wider = radius * radius + widening;
            const double power = 0.35 + 0.65 * fraction(dice, 3);
            *next++ = {i + fraction(dice, 0), j + fraction(dice, 1), 1.0 / wider,
                       power * radius * radius / wider};
        }
    }
}

double Projector::speckle(double u, double v)
{
    const double x = u * (1.0 / specklePitch);
    const double y = v * (1.0 / specklePitch);
    if (floorOf(x) != column || floorOf(y) != row)
        lookAround(floorOf(x), floorOf(y));
    double sum = 0.0;
    for (const Dot &dot : dots) {
        const double dx = dot.x - x;
        const double dy = dot.y - y;
        sum += dot.power * hill((dx * dx + dy * dy) * dot.inverseSquaredRadius);
    }
    return sum;
}

double Projector::vignette(double u, double v)
{
    return std::max(0.0, 1.0 - 2.0 * (u * u + v * v));
}

double Projector::infraredCone(double u, double v)
{
    return std::max(0.0, 1.0 - 8.0 * (u * u + v * v));
}

} // namespace Tessel3SyncSimulator
