#include "Frame.h"

#include <limits>

namespace Scanner::DirectLink {

namespace {

constexpr int bitDepth = 8;

// A QByteArray throws just below the largest int: it needs up to 32 bytes for itself.
constexpr qint64 largestImage = std::numeric_limits<int>::max() - 32;

QByteArray copyPixels(const unsigned char *pixels, int width, int height)
{
    const qint64 size = qint64(width) * height;
    if (!pixels || width <= 0 || height <= 0 || size > largestImage)
        return {};
    return {reinterpret_cast<const char *>(pixels), static_cast<int>(size)};
}

} // namespace

Frame copyFrame(const std::vector<unsigned char *> &images, int width, int height,
                const std::vector<int> &numbers)
{
    Frame frame{std::chrono::steady_clock::now(), {}, true};
    frame.isWhole = !images.empty() && images.size() >= numbers.size();
    frame.images.reserve(images.size());
    for (std::size_t i = 0; i < images.size(); ++i) {
        const int number = i < numbers.size() ? numbers[i] : 0;
        frame.images.push_back(Image{static_cast<int>(i), number, width, height,
                                     copyPixels(images[i], width, height)});
        frame.isWhole = frame.isWhole && !frame.images.back().pixels.isEmpty();
    }
    return frame;
}

QVariantMap imageMap(const Image &image)
{
    return {
        {QStringLiteral("camera"), image.camera}, {QStringLiteral("frame"), image.frame},
        {QStringLiteral("width"), image.width},   {QStringLiteral("height"), image.height},
        {QStringLiteral("bitDepth"), bitDepth},   {QStringLiteral("data"), image.pixels},
    };
}

QVariantList imageMaps(const Frame &frame, std::chrono::steady_clock::time_point scanStart)
{
    const std::chrono::duration<double, std::milli> sinceStart = frame.arrival - scanStart;
    QVariantList maps;
    for (const Image &image : frame.images) {
        QVariantMap map = imageMap(image);
        map.insert(QStringLiteral("timeMs"), sinceStart.count());
        maps.append(map);
    }
    return maps;
}

} // namespace Scanner::DirectLink
