#include "CameraImage.h"

#include <algorithm>
#include <array>

namespace VirtualScanner {

namespace {

constexpr int fullScale = 4095; // the scene has 12 bits

using Rgb = std::array<int, 3>;

constexpr Rgb disc = {3600, 2400, 1200};
constexpr int discRadius = 60;
constexpr int squareSize = 64;

// What the sensor sees beside the disc.
Rgb backgroundAt(int x, int y)
{
    const int gradient = 400 + x * 1600 / static_cast<int>(sensorWidth);
    const bool isBrightSquare = ((x / squareSize + y / squareSize) & 1) != 0;
    const int base = isBrightSquare ? gradient + 600 : gradient;
    return {base, base * 3 / 4, base / 2};
}

struct Span
{
    int begin;
    int end;
};

// The columns that the disc covers in a row.
Span discSpan(int y, int sensor, qint64 frame)
{
    const int width = static_cast<int>(sensorWidth);
    const int x = static_cast<int>((frame * 7 + 100 + qint64(sensor) * 40) % width);
    const int dy = y - static_cast<int>(sensorHeight) / 2;
    int reach = 0; // columns to the right of the middle, with the middle
    while (reach * reach + dy * dy < discRadius * discRadius)
        ++reach;
    return {x - reach + 1, x + reach};
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

template <typename LightAt>
QByteArray renderRow(const ImageSettings &settings, int y, LightAt lightAt)
{
    const int left = static_cast<int>(settings.offsetX);
    QByteArray row;
    for (int x = left; x < left + static_cast<int>(settings.width); ++x)
        appendPixel(row, lightAt(x), x, y, settings);
    return row;
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
    const int pixelBytes = bytesPerPixel(settings.format);

    // Rows repeat, the squares every other square and Bayer's colors every other row: a stream must
    // not take a processor for itself, so each row is computed once.
    std::array<QByteArray, 4> backgrounds;
    std::array<QByteArray, 2> discs;
    QByteArray image;
    image.reserve(width * height * pixelBytes);
    for (int y = top; y < top + height; ++y) {
        const std::size_t parity = y % 2 != 0 ? 1 : 0;
        const std::size_t square = y / squareSize % 2 != 0 ? 2 : 0;
        QByteArray &background = backgrounds.at(square + parity);
        if (background.isEmpty())
            background = renderRow(settings, y, [y](int x) { return backgroundAt(x, y); });
        image += background;

        const Span span = discSpan(y, sensor, frame);
        const int begin = std::max(span.begin - left, 0);
        const int columns = std::min(span.end - left, width) - begin;
        if (columns <= 0)
            continue;
        QByteArray &covered = discs.at(parity);
        if (covered.isEmpty())
            covered = renderRow(settings, y, [](int) { return disc; });
        const QByteArray seen = covered.mid(begin * pixelBytes, columns * pixelBytes);
        image.replace(((y - top) * width + begin) * pixelBytes, seen.size(), seen);
    }
    return image;
}

} // namespace VirtualScanner
