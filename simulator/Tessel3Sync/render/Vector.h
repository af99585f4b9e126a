// Geometry in millimeters. Pictures use only + - * / and square roots, whose results are the same
// to the last bit on every system, and so are the pixels.
#ifndef TESSEL3SYNCSIMULATOR_VECTOR_H
#define TESSEL3SYNCSIMULATOR_VECTOR_H

#include <cmath>

namespace Tessel3SyncSimulator {

struct Vector
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vector operator+(const Vector &a, const Vector &b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Vector operator-(const Vector &a, const Vector &b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Vector operator*(const Vector &a, double factor)
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

inline double dot(const Vector &a, const Vector &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vector cross(const Vector &a, const Vector &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const Vector &a)
{
    return std::sqrt(dot(a, a));
}

inline Vector unit(const Vector &a)
{
    return a * (1.0 / length(a));
}

/// Cosine and sine of an angle, by series.
struct Rotation
{
    explicit Rotation(double degrees);
    double cosine;
    double sine;
};

} // namespace Tessel3SyncSimulator

#endif
