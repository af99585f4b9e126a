// Geometry and statistics of pictures.
#ifndef KVSYNC_TESTS_SIMULATOR_PICTURETOOLS_H
#define KVSYNC_TESTS_SIMULATOR_PICTURETOOLS_H

#include <Tessel3SyncSimulator/Control.h>

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

using Point = std::array<double, 3>;

struct Pixel
{
    double x;
    double y;
    double depth;
};

double dot(const Point &a, const Point &b);

/// The way from one point to another.
Point between(const Point &from, const Point &to);

/// The pixel of an index in a picture of so many columns.
Pixel pixelAt(std::size_t index, int width, double depth);

/// From a pixel and its depth to the world, by the calibration alone.
Point worldPoint(const Tessel3SyncSimulator::Calibration &camera, const Pixel &pixel);

/// And back.
Pixel pictureOf(const Tessel3SyncSimulator::Calibration &camera, const Point &world);

/// The value between four pixels.
template <typename Value>
double sampled(const std::vector<Value> &image, int width, double x, double y)
{
    const int column = static_cast<int>(x);
    const int row = static_cast<int>(y);
    const double right = x - column;
    const double down = y - row;
    const auto at = [&](int i, int j) {
        return static_cast<double>(image[static_cast<std::size_t>(j) * width + i]);
    };
    return (at(column, row) * (1.0 - right) + at(column + 1, row) * right) * (1.0 - down) +
           (at(column, row + 1) * (1.0 - right) + at(column + 1, row + 1) * right) * down;
}

double correlation(const std::vector<std::pair<double, double>> &pairs);

#endif
