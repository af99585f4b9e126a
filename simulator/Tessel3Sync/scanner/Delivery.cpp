#include "scanner/Delivery.h"

#include "Outputs.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace Tessel3SyncSimulator {

namespace {

std::size_t bytesOf(int width, int height)
{
    return static_cast<std::size_t>(std::abs(width)) * static_cast<std::size_t>(std::abs(height));
}

void corruptMiddle(const Delivery &delivery)
{
    const std::size_t third = bytesOf(delivery.width, delivery.height) / 3;
    for (unsigned char *image : delivery.images)
        corrupt(image + third, third);
}

void tellSize(Delivery &delivery, int width, int height)
{
    const std::size_t there = bytesOf(delivery.width, delivery.height);
    const std::size_t told = bytesOf(width, height);
    delivery.width = width;
    delivery.height = height;
    if (told <= there)
        return;
    for (unsigned char *&image : delivery.images) {
        std::vector<unsigned char> larger(told);
        std::copy(image, image + there, larger.begin());
        delivery.enlarged.push_back(std::move(larger));
        image = delivery.enlarged.back().data();
    }
}

/// The place of an image that is meant; none if the delivery does not have it.
std::optional<std::size_t> placeIn(const Delivery &delivery, const std::optional<int> &image)
{
    if (!image || static_cast<std::size_t>(*image) >= delivery.images.size())
        return std::nullopt;
    return static_cast<std::size_t>(*image);
}

} // namespace

void alter(Delivery &delivery, const FrameFault &fault)
{
    if (fault.corrupt)
        corruptMiddle(delivery);
    tellSize(delivery, fault.toldWidth.value_or(delivery.width),
             fault.toldHeight.value_or(delivery.height));
    if (const auto place = placeIn(delivery, fault.nullImage))
        delivery.images[*place] = nullptr;
    if (const auto place = placeIn(delivery, fault.missingImage))
        delivery.images.erase(delivery.images.begin() + static_cast<std::ptrdiff_t>(*place));
}

} // namespace Tessel3SyncSimulator
