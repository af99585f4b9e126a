#include "scanner/Pictures.h"

#include "render/ViewCache.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

namespace {

ViewKey viewKey(const Shot &shot, const ConnectedCamera &camera)
{
    return {camera.kind, shot.width, shot.height, shot.seed, shot.tableDegrees};
}

} // namespace

bool Pictures::isReady(const Shot &shot) const
{
    return std::all_of(shot.cameras.begin(), shot.cameras.end(), [&](const auto &camera) {
        return ViewCache::instance().readyView(viewKey(shot, camera)) != nullptr;
    });
}

void Pictures::prepare(const Shot &shot)
{
    for (const ConnectedCamera &camera : shot.cameras)
        ViewCache::instance().view(viewKey(shot, camera));
}

Images &Pictures::take(const Shot &shot)
{
    const std::size_t count = shot.cameras.size();
    exposures.resize(count);
    buffers.resize(count);
    const LightPowers powers = lightPowers(shot.light, shot.purpose);
    for (std::size_t i = 0; i < count; ++i) {
        const ConnectedCamera &camera = shot.cameras[i];
        const auto view = ViewCache::instance().view(viewKey(shot, camera));
        auto &exposure = exposures[i];
        if (!exposure || !exposure->shows(view.get(), Brightness, powers, camera.settings))
            exposure = std::make_unique<Exposure>(view, Brightness, powers, camera.settings);
        buffers[i].resize(view->depths.size());
        exposure->read(shot.frame, buffers[i].data());
    }
    return buffers;
}

Images takeSnapshot(const Shot &shot)
{
    const ConnectedCamera &camera = shot.cameras.front();
    const auto view = ViewCache::instance().view(viewKey(shot, camera));
    const LightPowers powers = lightPowers(shot.light, shot.purpose);
    Images planes;
    for (Channel color : {Red, Green, Blue}) {
        auto &plane = planes.emplace_back(view->depths.size());
        Exposure(view, color, powers, camera.settings).read(shot.frame, plane.data());
    }
    return planes;
}

} // namespace Tessel3SyncSimulator
