#include "PictureTools.h"

#include <cmath>

using Tessel3SyncSimulator::Calibration;

double dot(const Point &a, const Point &b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Point between(const Point &from, const Point &to)
{
    return {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
}

Pixel pixelAt(std::size_t index, int width, double depth)
{
    const auto columns = static_cast<std::size_t>(width);
    const std::size_t row = index / columns;
    return {static_cast<double>(index % columns), static_cast<double>(row), depth};
}

Point worldPoint(const Calibration &camera, const Pixel &pixel)
{
    const Point local{(pixel.x - camera.centreX) / camera.focalLength * pixel.depth,
                      (pixel.y - camera.centreY) / camera.focalLength * pixel.depth, pixel.depth};
    Point world = camera.position;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        for (std::size_t row = 0; row < 3; ++row)
            world[axis] += camera.rotation[row * 3 + axis] * local[row];
    }
    return world;
}

Pixel pictureOf(const Calibration &camera, const Point &world)
{
    Point local{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            local[row] += camera.rotation[row * 3 + axis] * (world[axis] - camera.position[axis]);
    }
    return {camera.focalLength * local[0] / local[2] + camera.centreX,
            camera.focalLength * local[1] / local[2] + camera.centreY, local[2]};
}

double correlation(const std::vector<std::pair<double, double>> &pairs)
{
    double a = 0.0;
    double b = 0.0;
    for (const auto &[x, y] : pairs) {
        a += x / static_cast<double>(pairs.size());
        b += y / static_cast<double>(pairs.size());
    }
    double xx = 0.0;
    double yy = 0.0;
    double xy = 0.0;
    for (const auto &[x, y] : pairs) {
        xx += (x - a) * (x - a);
        yy += (y - b) * (y - b);
        xy += (x - a) * (y - b);
    }
    return xy / std::sqrt(xx * yy);
}
