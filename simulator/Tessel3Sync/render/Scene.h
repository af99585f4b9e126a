// The surface in front of the scanner: a turntable on a floor, and on it an object made of
// ellipsoids. It turns with the table.
#ifndef TESSEL3SYNCSIMULATOR_SCENE_H
#define TESSEL3SYNCSIMULATOR_SCENE_H

#include "render/Vector.h"

#include <array>

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
    double distance; ///< along the ray, in lengths of its direction; infinite: nothing is met
    Vector point;
    Vector normal; ///< length 1, towards the scanner
    Reflectance reflectance;
};

class Scene
{
public:
    explicit Scene(double tableDegrees);

    /// The middle of the turntable, which every camera looks at.
    static Vector centre();
    static Vector up();

    // Directions between the world and the turned table: right, near, up.
    Vector toTable(const Vector &direction) const;
    Vector fromTable(const Vector &direction) const;

private:
    Turn turn;
};

/// The scene as rays from one point meet it: the point of a camera or of a light.
class Viewpoint
{
public:
    Viewpoint(const Scene &viewedScene, const Vector &point);

    /// The first surface along a ray. The floor has no end: only a ray that goes up can meet none.
    SurfacePoint surfaceAlong(const Vector &direction) const;

    /// Whether nothing of the object stands between this point and one on a surface.
    bool sees(const Vector &point) const;

private:
    static constexpr int parts = 5;

    /// One ellipsoid of the object, scaled to a ball of radius 1 around the origin.
    struct Ball
    {
        Vector from;    ///< this point
        double outside; ///< its squared distance beyond the surface
    };

    double distanceTo(int part, const Vector &along) const;
    bool missesObject(const Vector &along) const;

    const Scene &scene;
    Vector origin;
    Vector from;
    std::array<Ball, parts> balls;
    Ball hull; ///< not scaled
};

} // namespace Tessel3SyncSimulator

#endif
