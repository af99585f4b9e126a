#include "Snapshot.h"

#include "Errors.h"
#include "Frame.h"
#include "Parameters.h"

#include <memory>
#include <vector>

namespace Scanner {

using CameraSpace::ImageBlock;
using KvSyncCore::DeviceController;

namespace {

constexpr int scanRoute = 2;
constexpr int highestRoute = 255;

std::vector<std::unique_ptr<ImageBlock>> grabBlocks(DirectLink &link, unsigned int route)
{
    QList<ImageBlock *> grabbed;
    link.run(QStringLiteral("The scanner refuses a color snapshot"),
             [&](DeviceController &c) { return c.grabImage(DirectLink::handle, route, grabbed); });
    return {grabbed.begin(), grabbed.end()};
}

} // namespace

QVariantList captureSnapshot(DirectLink &link, const QVariantMap &parameters)
{
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A color snapshot"), {QStringLiteral("route")});
    const int route =
        read.optionalWholeNumber(QStringLiteral("route"), 0, highestRoute).value_or(scanRoute);
    QVariantList images;
    for (const auto &block : grabBlocks(link, static_cast<unsigned int>(route)))
        images.append(
            imageMap(Image{images.size(), block->tag, block->width, block->height, block->data}));
    return images;
}

} // namespace Scanner
