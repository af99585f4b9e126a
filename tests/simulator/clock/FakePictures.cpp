#include "FakePictures.h"

#include <cstring>

using namespace Tessel3SyncSimulator;

namespace {

constexpr unsigned char plain = 0xa5;

} // namespace

bool FakePictures::isReady(const Shot &shot) const
{
    const double degrees = shot.tableDegrees;
    return readyAt && !(*readyAt < degrees) && !(degrees < *readyAt);
}

void FakePictures::prepare(const Shot &shot)
{
    if (!isReady(shot))
        time.pass(prepareMs);
    readyAt = shot.tableDegrees;
}

Images &FakePictures::take(const Shot &shot)
{
    if (pictureMs)
        time.pass(pictureMs(shot.frame));
    Shown shown;
    std::memset(&shown, 0, sizeof shown); // its padding stands in the pictures, which are compared
    shown.tableDegrees = shot.tableDegrees;
    shown.brightness = shot.light.projectorBrightness;
    shown.exposureUs = shot.cameras.front().settings.exposureUs;
    const std::size_t size = static_cast<std::size_t>(shot.width) * shot.height;
    images.assign(shot.cameras.size(), std::vector<unsigned char>(size, plain));
    for (auto &image : images)
        std::memcpy(image.data(), &shown, sizeof shown);
    return images;
}

Shown FakePictures::shownIn(const unsigned char *image)
{
    Shown shown{};
    std::memcpy(&shown, image, sizeof shown);
    return shown;
}

bool FakePictures::isSpoiled(const unsigned char *image, int size)
{
    return image[size / 2] != plain;
}
