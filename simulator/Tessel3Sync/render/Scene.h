// The surface in front of the scanner: a turntable on a floor, and on it an object made of
// ellipsoids. It turns with the table.
#ifndef TESSEL3SYNCSIMULATOR_SCENE_H
#define TESSEL3SYNCSIMULATOR_SCENE_H

#include "render/Vector.h"

namespace Tessel3SyncSimulator {

/// How much of each colour a surface throws back, from 0 to 1.
struct Reflectance
{
    double red;
    double green;
    double blue;
};

struct SurfacePoint
{
    double distance; ///< along the ray, in lengths of its direction
    Vector point;
    Vector normal; ///< length 1, towards the scanner
    Reflectance reflectance;
};

class Scene
{
public:
    explicit Scene(double tableDegrees);

    /// The first surface along a ray. The floor has no end: a ray that goes down meets something.
    SurfacePoint surfaceAlong(const Vector &origin, const Vector &direction) const;

    /// Whether the object stands between a point and a light.
    bool shadowed(const Vector &point, const Vector &light) const;

    /// The middle of the turntable, which every camera looks at.
    static Vector centre();
    static Vector up();

private:
    Vector toTable(const Vector &direction) const;
    Vector fromTable(const Vector &direction) const;

    Turn turn;
};

} // namespace Tessel3SyncSimulator

#endif
