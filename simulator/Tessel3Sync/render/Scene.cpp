#include "render/Scene.h"

#include <iterator>
#include <limits>

namespace Tessel3SyncSimulator {

namespace {

// The world is the scanner's: x to the right, y down, z away from it. The table leans by a 3-4-5
// triangle, so that the scanner looks down on it.
constexpr Vector tableCenter{0.0, 0.0, 640.0};
constexpr Vector tableRight{1.0, 0.0, 0.0};
constexpr Vector tableNear{0.0, 0.8, -0.6};
constexpr Vector tableUp{0.0, -0.6, -0.8};
constexpr double tableRadius = 135.0;

constexpr Vector inverse(const Vector &a)
{
    // Multiplying is much faster than dividing.
    return {1.0 / a.x, 1.0 / a.y, 1.0 / a.z};
}

struct Ellipsoid
{
    Vector center;  ///< right, near, up from the middle of the table
    Vector scaling; ///< to a ball of radius 1
    Reflectance reflectance;
};

constexpr Ellipsoid object[] = {
    {{0.0, 0.0, 38.0}, inverse({92.0, 62.0, 52.0}), {0.86, 0.70, 0.52}},     // body
    {{58.0, 6.0, 82.0}, inverse({32.0, 30.0, 36.0}), {0.84, 0.58, 0.46}},    // head
    {{84.0, 22.0, 84.0}, inverse({15.0, 13.0, 11.0}), {0.90, 0.45, 0.35}},   // beak
    {{-72.0, -12.0, 66.0}, inverse({22.0, 18.0, 34.0}), {0.55, 0.66, 0.85}}, // tail
    {{-10.0, 48.0, 48.0}, inverse({36.0, 20.0, 22.0}), {0.70, 0.80, 0.62}},  // wing
};

// A ball around the object: most rays pass it by, and then no part needs a look.
constexpr Vector hullCenter{0.0, 0.0, 55.0};
constexpr double hullRadius = 110.0;

constexpr bool isInHull(const Ellipsoid &part, double scaling)
{
    const Vector offset{part.center.x - hullCenter.x, part.center.y - hullCenter.y,
                        part.center.z - hullCenter.z};
    const double square = offset.x * offset.x + offset.y * offset.y + offset.z * offset.z;
    const double room = hullRadius - 1.0 / scaling;
    return room > 0.0 && square < room * room;
}

constexpr int partsInHull()
{
    int count = 0;
    for (const Ellipsoid &part : object) {
        count += isInHull(part, part.scaling.x) && isInHull(part, part.scaling.y) &&
                 isInHull(part, part.scaling.z);
    }
    return count;
}
static_assert(partsInHull() == std::size(object));

constexpr Vector scaled(const Vector &a, const Vector &b)
{
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

Reflectance scaled(const Reflectance &reflectance, double factor)
{
    return {reflectance.red * factor, reflectance.green * factor, reflectance.blue * factor};
}

int square(double coordinate, double side)
{
    // Far from zero, so that cutting rounds down.
    return static_cast<int>(coordinate / side + 1024.0);
}

/// Painted squares on the object, so that a picture by plain light shows its turn too.
double paint(const Vector &point)
{
    return (square(point.x, 24.0) + square(point.y, 24.0) + square(point.z, 24.0)) % 2 ? 0.8 : 1.0;
}

Reflectance floorReflectance(const Vector &point)
{
    const double distance = point.x * point.x + point.y * point.y;
    if (distance > tableRadius * tableRadius)
        return {0.52, 0.54, 0.56};
    // Marks near the rim turn with the table.
    const bool rim = distance > 122.0 * 122.0;
    const bool mark = rim && (point.x * point.y > 0.0 || (point.x > 0.0 && point.y < 40.0));
    return mark ? Reflectance{0.25, 0.28, 0.55} : Reflectance{0.72, 0.72, 0.70};
}

} // namespace

Scene::Scene(double tableDegrees)
    : rotation(tableDegrees)
{
}

Vector Scene::center()
{
    return tableCenter;
}

Vector Scene::up()
{
    return tableUp;
}

Vector Scene::toTable(const Vector &direction) const
{
    const double right = dot(direction, tableRight);
    const double near = dot(direction, tableNear);
    return {rotation.cosine * right + rotation.sine * near,
            rotation.cosine * near - rotation.sine * right, dot(direction, tableUp)};
}

Vector Scene::fromTable(const Vector &direction) const
{
    const double right = rotation.cosine * direction.x - rotation.sine * direction.y;
    const double near = rotation.sine * direction.x + rotation.cosine * direction.y;
    return tableRight * right + tableNear * near + tableUp * direction.z;
}

Viewpoint::Viewpoint(const Scene &viewedScene, const Vector &point)
    : scene(viewedScene)
    , origin(point)
    , from(scene.toTable(point - tableCenter))
    , balls()
    , hull()
{
    static_assert(std::size(object) == parts);
    for (int part = 0; part < parts; ++part) {
        const Vector ball = scaled(from - object[part].center, object[part].scaling);
        balls[part] = {ball, dot(ball, ball) - 1.0};
    }
    const Vector ball = from - hullCenter;
    hull = {ball, dot(ball, ball) - hullRadius * hullRadius};
}

bool Viewpoint::missesObject(const Vector &along) const
{
    const double b = dot(hull.from, along);
    return b >= 0.0 || b * b < dot(along, along) * hull.outside;
}

/// Distance to the near side of a part, in the table's frame; negative if there is none ahead.
double Viewpoint::distanceTo(int part, const Vector &along) const
{
    const Vector direction = scaled(along, object[part].scaling);
    const double b = dot(balls[part].from, direction);
    if (b >= 0.0)
        return -1.0;
    const double a = dot(direction, direction);
    const double discriminant = b * b - a * balls[part].outside;
    return discriminant < 0.0 ? -1.0 : (-b - std::sqrt(discriminant)) / a;
}

SurfacePoint Viewpoint::surfaceAlong(const Vector &direction) const
{
    const Vector along = scene.toTable(direction);
    constexpr double nowhere = std::numeric_limits<double>::infinity();
    double distance = along.z < 0.0 ? -from.z / along.z : nowhere;
    const Ellipsoid *hit = nullptr;
    const bool misses = missesObject(along);
    for (int part = 0; part < parts && !misses; ++part) {
        const double candidate = distanceTo(part, along);
        if (candidate > 0.0 && candidate < distance) {
            distance = candidate;
            hit = &object[part];
        }
    }

    if (distance == nowhere)
        return {nowhere, {}, {}, {}};
    const Vector local = from + along * distance;
    const Vector point = origin + direction * distance;
    if (!hit)
        return {distance, point, tableUp, floorReflectance(local)};
    const Vector gradient = scaled(scaled(local - hit->center, hit->scaling), hit->scaling);
    return {distance, point, unit(scene.fromTable(gradient)),
            scaled(hit->reflectance, paint(local))};
}

bool Viewpoint::sees(const Vector &point) const
{
    // The point itself lies at 1; a hair before it is the point's own surface.
    constexpr double end = 0.9995;
    const Vector along = scene.toTable(point - origin);
    if (missesObject(along))
        return true;
    for (int part = 0; part < parts; ++part) {
        const Vector direction = scaled(along, object[part].scaling);
        const double b = dot(balls[part].from, direction);
        if (b >= 0.0)
            continue;
        const double a = dot(direction, direction);
        if (b * b < a * balls[part].outside)
            continue;
        // The line meets the part ahead. The near side comes before the end if the middle of the
        // way through the part does, or if the end lies inside.
        const bool middleBefore = -b < end * a;
        if (middleBefore || (a * end + 2.0 * b) * end + balls[part].outside < 0.0)
            return false;
    }
    return true;
}

} // namespace Tessel3SyncSimulator
