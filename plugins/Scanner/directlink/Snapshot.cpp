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
    const ErrorCode result = link.call(
        [&](DeviceController &c) { return c.grabImage(DirectLink::handle, route, grabbed); });
    std::vector<std::unique_ptr<ImageBlock>> blocks(grabbed.begin(), grabbed.end());
    check(result, QStringLiteral("The scanner refuses a color snapshot"));
    return blocks;
}

} // namespace

QVariantList captureSnapshot(DirectLink &link, const QVariantMap &parameters)
{
    const int route = Parameters(parameters)
                          .optionalWholeNumber(QStringLiteral("route"), 0, highestRoute)
                          .value_or(scanRoute);
    QVariantList images;
    for (const auto &block : grabBlocks(link, static_cast<unsigned int>(route)))
        images.append(
            imageMap(Image{images.size(), block->tag, block->width, block->height, block->data}));
    return images;
}

} // namespace Scanner
