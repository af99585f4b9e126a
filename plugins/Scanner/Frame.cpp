#include "Frame.h"

#include <limits>

namespace Scanner {

namespace {

constexpr int bitDepth = 8;

} // namespace

QByteArray copyPixels(const unsigned char *pixels, int width, int height)
{
    const qint64 size = qint64(width) * height;
    if (!pixels || width <= 0 || height <= 0 || size > std::numeric_limits<int>::max())
        return {};
    return {reinterpret_cast<const char *>(pixels), static_cast<int>(size)};
}

Frame copyFrame(const std::vector<unsigned char *> &images, int width, int height,
                const std::vector<int> &numbers)
{
    Frame frame;
    frame.reserve(images.size());
    for (std::size_t i = 0; i < images.size(); ++i) {
        const int number = i < numbers.size() ? numbers[i] : 0;
        frame.push_back(Image{static_cast<int>(i), number, width, height,
                              copyPixels(images[i], width, height)});
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

QVariantList imageMaps(const Frame &frame)
{
    QVariantList maps;
    for (const Image &image : frame)
        maps.append(imageMap(image));
    return maps;
}

FrameAccount::FrameAccount(int numberBeforeFirst)
    : lastNumber(numberBeforeFirst)
{
}

void FrameAccount::add(const Frame &frame)
{
    add(frame.empty() ? 0 : frame.front().frame);
}

void FrameAccount::add(int number)
{
    ++deliveredFrames;
    if (number <= lastNumber)
        return;
    droppedFrames += number - lastNumber - 1;
    lastNumber = number;
}

QVariantList progressOf(const FrameAccount &account, int frames)
{
    return {QVariantMap{{QStringLiteral("delivered"), account.delivered()},
                        {QStringLiteral("dropped"), account.dropped()},
                        {QStringLiteral("frames"), frames}}};
}

} // namespace Scanner
