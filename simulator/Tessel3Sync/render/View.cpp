#include "render/View.h"

#include "render/Calibration.h"
#include "render/Projector.h"
#include "render/Scene.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace Tessel3SyncSimulator {

namespace {

constexpr double referenceDistance = 600.0; // where lights are as strong as their settings say

std::uint8_t toByte(double value)
{
    const double raised = std::min(1.0, std::max(0.0, value)) * 255.0 + 0.5;
    return static_cast<std::uint8_t>(raised);
}

/// Light from a point: by slant and by distance.
double received(const SurfacePoint &surface, const Vector &light)
{
    const Vector way = light - surface.point;
    const double square = dot(way, way);
    const double slant = dot(surface.normal, way) / std::sqrt(square);
    return std::max(0.0, slant) * (referenceDistance * referenceDistance) / square;
}

using LightValues = std::array<double, LightCount>;

LightValues lightAt(const SurfacePoint &surface, const Viewpoint &source, Projector &projector)
{
    LightValues values{};
    values[AmbientLight] = 0.75 + 0.25 * dot(surface.normal, Scene::up());
    values[StrobeLight] = received(surface, Vector{});

    const double strength = received(surface, Projector::position);
    if (strength <= 0.0 || !source.sees(surface.point))
        return values;
    const Vector way = surface.point - Projector::position;
    const double u = way.x / way.z;
    const double v = way.y / way.z;
    const double lit = strength * Projector::vignette(u, v);
    values[FlatLight] = lit;
    values[SpeckleLight] = lit * projector.speckle(u, v);
    values[StripeLight] = lit * projector.stripes(u);
    values[InfraredLight] = strength * std::max(0.0, 1.0 - 8.0 * (u * u + v * v));
    values[OneLaserLine] = strength * projector.laserLines(u, true);
    values[ParallelLaserLines] = strength * projector.laserLines(u, false);
    values[CrossedLaserLines] =
        std::max(values[ParallelLaserLines], strength * projector.laserLines(v, false));
    return values;
}

bool operator==(const ViewKey &a, const ViewKey &b)
{
    return a.camera == b.camera && a.width == b.width && a.height == b.height && a.seed == b.seed &&
           !(a.tableDegrees < b.tableDegrees) && !(b.tableDegrees < a.tableDegrees);
}

struct Remembered
{
    std::mutex mutex;
    std::map<CameraKind, std::shared_ptr<const View>> views;

    bool holds(const ViewKey &key) const
    {
        const auto found = views.find(key.camera);
        return found != views.end() && found->second->key == key;
    }
};

Remembered &remembered()
{
    // Never destroyed: the frame thread may need it while the process ends.
    static auto &only = *new Remembered;
    return only;
}

} // namespace

View::View(const ViewKey &viewKey)
    : key(viewKey)
{
    const std::size_t size = static_cast<std::size_t>(key.width) * key.height;
    depths.resize(size);
    for (Plane &plane : light)
        plane.resize(size);
    for (Plane &plane : reflectance)
        plane.resize(size);

    const Calibration camera = cameraCalibration(key.camera, key.width, key.height);
    const Scene scene(key.tableDegrees);
    const Viewpoint source(scene, Projector::position);
    Projector projector(1.0 / camera.focalLength, key.seed);
    const auto &r = camera.rotation;
    const Viewpoint eye(scene, {camera.position[0], camera.position[1], camera.position[2]});
    const Vector right{r[0], r[1], r[2]};
    const Vector down{r[3], r[4], r[5]};
    const Vector forward{r[6], r[7], r[8]};

    std::size_t pixel = 0;
    for (int y = 0; y < key.height; ++y) {
        const Vector row = forward + down * ((y - camera.centreY) / camera.focalLength);
        for (int x = 0; x < key.width; ++x, ++pixel) {
            // The ray advances by 1 along the camera's axis: its length is the depth.
            const Vector ray = row + right * ((x - camera.centreX) / camera.focalLength);
            const SurfacePoint surface = eye.surfaceAlong(ray);
            depths[pixel] = static_cast<float>(surface.distance);
            const LightValues values = lightAt(surface, source, projector);
            for (int i = 0; i < LightCount; ++i)
                light[i][pixel] = toByte(values[i]);
            const Reflectance &back = surface.reflectance;
            reflectance[Brightness][pixel] =
                toByte((back.red + 2.0 * back.green + back.blue) / 4.0);
            reflectance[Red][pixel] = toByte(back.red);
            reflectance[Green][pixel] = toByte(back.green);
            reflectance[Blue][pixel] = toByte(back.blue);
        }
    }
}

std::shared_ptr<const View> viewFor(const ViewKey &key)
{
    Remembered &known = remembered();
    std::lock_guard<std::mutex> lock(known.mutex);
    if (!known.holds(key))
        known.views[key.camera] = std::make_shared<const View>(key);
    return known.views[key.camera];
}

bool viewIsReady(const ViewKey &key)
{
    Remembered &known = remembered();
    std::lock_guard<std::mutex> lock(known.mutex);
    return known.holds(key);
}

} // namespace Tessel3SyncSimulator
