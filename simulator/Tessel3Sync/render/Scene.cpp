#include "render/Scene.h"

#include <algorithm>
#include <iterator>

namespace Tessel3SyncSimulator {

namespace {

// The world is the scanner's: x to the right, y down, z away from it. The table leans by a 3-4-5
// triangle, so that the scanner looks down on it.
constexpr Vector tableCentre{0.0, 0.0, 640.0};
constexpr Vector tableRight{1.0, 0.0, 0.0};
constexpr Vector tableNear{0.0, 0.8, -0.6};
constexpr Vector tableUp{0.0, -0.6, -0.8};
constexpr double tableRadius = 135.0;

struct Ellipsoid
{
    Vector centre; ///< right, near, up from the middle of the table
    Vector halfAxes;
    Reflectance reflectance;
};

constexpr Ellipsoid object[] = {
    {{0.0, 0.0, 38.0}, {92.0, 62.0, 52.0}, {0.86, 0.70, 0.52}},     // body
    {{58.0, 6.0, 82.0}, {32.0, 30.0, 36.0}, {0.84, 0.58, 0.46}},    // head
    {{84.0, 22.0, 84.0}, {15.0, 13.0, 11.0}, {0.90, 0.45, 0.35}},   // beak
    {{-72.0, -12.0, 66.0}, {22.0, 18.0, 34.0}, {0.55, 0.66, 0.85}}, // tail
    {{-10.0, 48.0, 48.0}, {36.0, 20.0, 22.0}, {0.70, 0.80, 0.62}},  // wing
};

Vector divided(const Vector &a, const Vector &b)
{
    return {a.x / b.x, a.y / b.y, a.z / b.z};
}

/// Distance to the near side of an ellipsoid, in the table's frame; negative if there is none.
double distanceTo(const Ellipsoid &shape, const Vector &origin, const Vector &direction)
{
    const Vector from = divided(origin - shape.centre, shape.halfAxes);
    const Vector along = divided(direction, shape.halfAxes);
    const double a = dot(along, along);
    const double b = dot(from, along);
    const double c = dot(from, from) - 1.0;
    const double discriminant = b * b - a * c;
    return discriminant < 0.0 ? -1.0 : (-b - std::sqrt(discriminant)) / a;
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
    : turn(tableDegrees)
{
}

Vector Scene::centre()
{
    return tableCentre;
}

Vector Scene::up()
{
    return tableUp;
}

Vector Scene::toTable(const Vector &direction) const
{
    const double right = dot(direction, tableRight);
    const double near = dot(direction, tableNear);
    return {turn.cosine * right + turn.sine * near, turn.cosine * near - turn.sine * right,
            dot(direction, tableUp)};
}

Vector Scene::fromTable(const Vector &direction) const
{
    const double right = turn.cosine * direction.x - turn.sine * direction.y;
    const double near = turn.sine * direction.x + turn.cosine * direction.y;
    return tableRight * right + tableNear * near + tableUp * direction.z;
}

SurfacePoint Scene::surfaceAlong(const Vector &origin, const Vector &direction) const
{
    const Vector from = toTable(origin - tableCentre);
    const Vector along = toTable(direction);

    double distance = -from.z / along.z;
    const Ellipsoid *hit = nullptr;
    for (const Ellipsoid &shape : object) {
        const double candidate = distanceTo(shape, from, along);
        if (candidate > 0.0 && candidate < distance) {
            distance = candidate;
            hit = &shape;
        }
    }

    const Vector local = from + along * distance;
    const Vector point = origin + direction * distance;
    if (!hit)
        return {distance, point, tableUp, floorReflectance(local)};
    const Vector gradient = divided(divided(local - hit->centre, hit->halfAxes), hit->halfAxes);
    return {distance, point, unit(fromTable(gradient)), scaled(hit->reflectance, paint(local))};
}

bool Scene::shadowed(const Vector &point, const Vector &light) const
{
    const Vector from = toTable(light - tableCentre);
    const Vector along = toTable(point - light);
    return std::any_of(std::begin(object), std::end(object), [&](const Ellipsoid &shape) {
        const double distance = distanceTo(shape, from, along);
        // The point itself lies at 1; a hair before it is the point's own surface.
        return distance > 0.0 && distance < 0.9995;
    });
}

} // namespace Tessel3SyncSimulator
