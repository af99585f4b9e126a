// The surface in front of the scanner: a turntable on a floor, and on it an object made of
// ellipsoids. It turns with the table.
#ifndef TESSEL3SYNCSIMULATOR_SCENE_H
#define TESSEL3SYNCSIMULATOR_SCENE_H

#include "render/Vector.h"

#include <array>

namespace Tessel3SyncSimulator {

/// How much of each color a surface reflects, from 0 to 1.
struct Reflectance
{
    double red;
    double green;
    double blue;
};

struct SurfacePoint
{
    double distance; ///< along the ray, in lengths of its direction; infinite if it meets nothing
    Vector point;
    Vector normal; ///< length 1, towards the scanner
    Reflectance reflectance;
};

class Scene
{
public:
    explicit Scene(double tableDegrees);

    /// The center of the turntable, which every camera looks at.
    static Vector center();
    static Vector up();

    // Directions between the world and the turned table: right, near, up.
    Vector toTable(const Vector &direction) const;
    Vector fromTable(const Vector &direction) const;

private:
    Rotation rotation;
};

/// The scene as seen from one point, that of a camera or of a light.
class Viewpoint
{
public:
    Viewpoint(const Scene &viewedScene, const Vector &point);

    /// The first surface along a ray. The floor is endless, so only a ray that goes up meets none.
    SurfacePoint surfaceAlong(const Vector &direction) const;

    /// Whether no part of the object stands between this point and one on a surface.
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
