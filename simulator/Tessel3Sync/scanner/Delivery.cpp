#include "scanner/Delivery.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace Tessel3SyncSimulator {

namespace {

std::size_t byteCount(int width, int height)
{
    return static_cast<std::size_t>(std::abs(width)) * static_cast<std::size_t>(std::abs(height));
}

void corruptMiddle(const Delivery &delivery)
{
    const std::size_t third = byteCount(delivery.width, delivery.height) / 3;
    for (unsigned char *image : delivery.images)
        complement(image + third, third);
}

void reportSize(Delivery &delivery, int width, int height)
{
    const std::size_t actual = byteCount(delivery.width, delivery.height);
    const std::size_t reported = byteCount(width, height);
    delivery.width = width;
    delivery.height = height;
    if (reported <= actual)
        return;
    for (unsigned char *&image : delivery.images) {
        std::vector<unsigned char> larger(reported);
        std::copy(image, image + actual, larger.begin());
        delivery.enlarged.push_back(std::move(larger));
        image = delivery.enlarged.back().data();
    }
}

/// The index of a faulty image; none if the delivery does not have it.
std::optional<std::size_t> indexIn(const Delivery &delivery, const std::optional<int> &image)
{
    if (!image || static_cast<std::size_t>(*image) >= delivery.images.size())
        return std::nullopt;
    return static_cast<std::size_t>(*image);
}

} // namespace

void applyFault(Delivery &delivery, const FrameFault &fault)
{
    if (fault.corrupt)
        corruptMiddle(delivery);
    reportSize(delivery, fault.toldWidth.value_or(delivery.width),
               fault.toldHeight.value_or(delivery.height));
    if (const auto index = indexIn(delivery, fault.nullImage))
        delivery.images[*index] = nullptr;
    if (const auto index = indexIn(delivery, fault.missingImage))
        delivery.images.erase(delivery.images.begin() + static_cast<std::ptrdiff_t>(*index));
}

void complement(unsigned char *bytes, std::size_t count)
{
    std::transform(bytes, bytes + count, bytes,
                   [](unsigned char byte) { return static_cast<unsigned char>(~byte); });
}

} // namespace Tessel3SyncSimulator
