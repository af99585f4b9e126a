#include "CameraImage.h"

#include <algorithm>
#include <array>

namespace VirtualScanner {

namespace {

constexpr int fullScale = 4095; // the scene has 12 bits

using Rgb = std::array<int, 3>;

// What the sensor sees at one of its pixels.
Rgb sceneAt(int x, int y, int sensor, qint64 frame)
{
    constexpr int radius = 60;
    const int width = static_cast<int>(sensorWidth);
    const int discX = static_cast<int>((frame * 7 + 100 + qint64(sensor) * 40) % width);
    const int dx = x - discX;
    const int dy = y - static_cast<int>(sensorHeight) / 2;
    if (dx * dx + dy * dy < radius * radius)
        return {3600, 2400, 1200};

    const int gradient = 400 + x * 1600 / width;
    const bool isBrightSquare = ((x / 64 + y / 64) & 1) != 0;
    const int base = isBrightSquare ? gradient + 600 : gradient;
    return {base, base * 3 / 4, base / 2};
}

int exposed(int light, const ImageSettings &settings)
{
    const qint64 bright = static_cast<qint64>(light) * settings.exposureUs / referenceExposureUs *
                          (referenceGain + settings.gain) / referenceGain;
    return static_cast<int>(std::min<qint64>(bright, fullScale));
}

int luminance(const Rgb &light)
{
    return (2 * light[0] + 5 * light[1] + light[2]) / 8;
}

int bayerColor(int x, int y)
{
    return (x & 1) + (y & 1); // red, green, green, blue
}

void appendValue(QByteArray &image, int value, int bitDepth)
{
    const int scaled = value >> (12 - bitDepth);
    image.append(static_cast<char>(scaled & 0xFF));
    if (bitDepth > 8)
        image.append(static_cast<char>(scaled >> 8));
}

int bytesPerPixel(CameraSpace::PixelFormatType format)
{
    if (format == CameraSpace::RGB8)
        return 3;
    return bitDepthOf(format) > 8 ? 2 : 1;
}

void appendPixel(QByteArray &image, const Rgb &light, int x, int y, const ImageSettings &settings)
{
    const int depth = bitDepthOf(settings.format);
    switch (settings.format) {
    case CameraSpace::RGB8:
        for (const int color : light)
            appendValue(image, exposed(color, settings), depth);
        return;
    case CameraSpace::BayerRG8:
        appendValue(image, exposed(light.at(static_cast<std::size_t>(bayerColor(x, y))), settings),
                    depth);
        return;
    case CameraSpace::Mono8:
    case CameraSpace::Mono10:
    case CameraSpace::Mono12:
        appendValue(image, exposed(luminance(light), settings), depth);
        return;
    }
}

} // namespace

int bitDepthOf(CameraSpace::PixelFormatType format)
{
    switch (format) {
    case CameraSpace::Mono10:
        return 10;
    case CameraSpace::Mono12:
        return 12;
    case CameraSpace::Mono8:
    case CameraSpace::BayerRG8:
    case CameraSpace::RGB8:
        break;
    }
    return 8;
}

QByteArray renderImage(const ImageSettings &settings, int sensor, qint64 frame)
{
    const int left = static_cast<int>(settings.offsetX);
    const int top = static_cast<int>(settings.offsetY);
    const int width = static_cast<int>(settings.width);
    const int height = static_cast<int>(settings.height);

    QByteArray image;
    image.reserve(width * height * bytesPerPixel(settings.format));
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x)
            appendPixel(image, sceneAt(x, y, sensor, frame), x, y, settings);
    }
    return image;
}

} // namespace VirtualScanner
