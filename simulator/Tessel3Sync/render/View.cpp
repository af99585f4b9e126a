#include "render/View.h"

#include "render/Calibration.h"
#include "render/Projector.h"
#include "render/Scene.h"

#include <algorithm>
#include <limits>

namespace Tessel3SyncSimulator {

namespace {

constexpr double referenceDistance = 600.0; // where lights are as strong as their settings say
constexpr Vector strobePosition{0.0, 0.0, 0.0};

template <typename Unsigned>
Unsigned fixedPoint(double value, double one)
{
    constexpr double highest = std::numeric_limits<Unsigned>::max();
    return static_cast<Unsigned>(std::min(value * one + 0.5, highest));
}

/// A light at one point.
class PointLight
{
public:
    PointLight(const Scene &scene, const Vector &where)
        : position(where)
        , viewpoint(scene, where)
    {
    }

    /// How strongly it lights a surface, by slant and by distance; 0 in the shadow.
    double irradiance(const SurfacePoint &surface) const
    {
        const Vector toLight = position - surface.point;
        const double square = dot(toLight, toLight);
        const double slant = dot(surface.normal, toLight);
        if (slant <= 0.0 || !viewpoint.sees(surface.point))
            return 0.0;
        return slant / std::sqrt(square) * (referenceDistance * referenceDistance) / square;
    }

private:
    Vector position;
    Viewpoint viewpoint;
};

using LightValues = std::array<double, LightCount>;

class Lights
{
public:
    Lights(const Scene &scene, double pixel, std::uint32_t seed)
        : strobe(scene, strobePosition)
        , projectorHead(scene, Projector::position)
        , projector(pixel, seed)
    {
    }

    LightValues at(const SurfacePoint &surface)
    {
        LightValues values{};
        values[AmbientLight] = 0.75 + 0.25 * dot(surface.normal, Scene::up());
        values[StrobeLight] = strobe.irradiance(surface);

        // The projector, the infrared light and the lasers sit together.
        const double strength = projectorHead.irradiance(surface);
        if (strength <= 0.0)
            return values;
        const Vector ray = surface.point - Projector::position;
        const double u = ray.x / ray.z;
        const double v = ray.y / ray.z;
        const double lit = strength * Projector::vignette(u, v);
        values[FlatLight] = lit;
        values[SpeckleLight] = lit * projector.speckle(u, v);
        values[StripeLight] = lit * projector.stripes.all(u);
        values[InfraredLight] = strength * Projector::infraredCone(u, v);
        values[OneLaserLine] = strength * projector.laserLines.one(u);
        values[ParallelLaserLines] = strength * projector.laserLines.all(u);
        values[CrossedLaserLines] =
            std::max(values[ParallelLaserLines], strength * projector.laserLines.all(v));
        return values;
    }

private:
    PointLight strobe;
    PointLight projectorHead;
    Projector projector;
};

/// Visits every pixel, row by row, with the surface that it sees.
template <typename Visit>
void forEachPixel(const ViewKey &key, const Scene &scene, const Visit &visit)
{
    const Calibration camera = cameraCalibration(key.camera, key.width, key.height);
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
            visit(pixel, eye.surfaceAlong(ray));
        }
    }
}

std::size_t pixelsOf(const ViewKey &key)
{
    return static_cast<std::size_t>(key.width) * key.height;
}

} // namespace

bool ViewKey::operator==(const ViewKey &other) const
{
    return camera == other.camera && width == other.width && height == other.height &&
           seed == other.seed && !(tableDegrees < other.tableDegrees) &&
           !(other.tableDegrees < tableDegrees);
}

View::View(const ViewKey &viewKey)
    : key(viewKey)
    , depths(pixelsOf(key))
{
    for (auto &plane : light)
        plane.resize(depths.size());
    for (auto &plane : reflectance)
        plane.resize(depths.size());

    const Scene scene(key.tableDegrees);
    const double focalLength = cameraCalibration(key.camera, key.width, key.height).focalLength;
    Lights lights(scene, 1.0 / focalLength, key.seed);
    forEachPixel(key, scene, [&](std::size_t pixel, const SurfacePoint &surface) {
        depths[pixel] = static_cast<float>(surface.distance);
        if (depths[pixel] == NothingThere)
            return;
        const LightValues values = lights.at(surface);
        for (int i = 0; i < LightCount; ++i)
            light[i][pixel] = fixedPoint<std::uint16_t>(values[i], fullLight);
        const Reflectance &back = surface.reflectance;
        const double brightness = (back.red + 2.0 * back.green + back.blue) / 4.0;
        const std::array<double, ChannelCount> channels{brightness, back.red, back.green,
                                                        back.blue};
        for (int i = 0; i < ChannelCount; ++i)
            reflectance[i][pixel] = fixedPoint<std::uint8_t>(channels[i], fullReflectance);
    });
}

std::vector<float> depthsOf(const ViewKey &key)
{
    std::vector<float> depths(pixelsOf(key));
    forEachPixel(key, Scene(key.tableDegrees), [&](std::size_t pixel, const SurfacePoint &surface) {
        depths[pixel] = static_cast<float>(surface.distance);
    });
    return depths;
}

} // namespace Tessel3SyncSimulator
