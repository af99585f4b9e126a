#include "render/Vector.h"

namespace Tessel3SyncSimulator {

namespace {

/// Sum of the series 1 - x²/(n(n+1)) (1 - x²/((n+2)(n+3)) (...)), cosine for n = 1, sine / x for 2.
double series(double square, int n)
{
    double sum = 1.0;
    for (int k = n + 18; k >= n; k -= 2)
        sum = 1.0 - square / (k * (k + 1.0)) * sum;
    return sum;
}

} // namespace

Rotation::Rotation(double degrees)
{
    // Half turns off first, so that the series stays short.
    const double turns = degrees / 360.0;
    const auto whole = static_cast<long long>(turns < 0.0 ? turns - 0.5 : turns + 0.5);
    const double angle = (degrees - 360.0 * static_cast<double>(whole)) * 0.017453292519943295;
    cosine = series(angle * angle, 1);
    sine = angle * series(angle * angle, 2);
}

} // namespace Tessel3SyncSimulator
