#include "Picture.h"

#include "render/ViewCache.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

ViewKey viewKey(const Shot &shot, CameraKind camera)
{
    return {camera, shot.width, shot.height, shot.seed, shot.tableDegrees};
}

bool Picture::isReady(const Shot &shot) const
{
    return std::all_of(shot.cameras.begin(), shot.cameras.end(), [&](const ConnectedCamera &one) {
        return ViewCache::instance().readyView(viewKey(shot, one.kind)) != nullptr;
    });
}

void Picture::prepare(const Shot &shot)
{
    for (const ConnectedCamera &camera : shot.cameras)
        ViewCache::instance().view(viewKey(shot, camera.kind));
}

PictureSource::Images &Picture::take(const Shot &shot)
{
    const std::size_t count = shot.cameras.size();
    exposures.resize(count);
    buffers.resize(count);
    const LightPowers powers = lightPowers(shot.light, shot.purpose);
    for (std::size_t i = 0; i < count; ++i) {
        const ConnectedCamera &camera = shot.cameras[i];
        const auto view = ViewCache::instance().view(viewKey(shot, camera.kind));
        auto &exposure = exposures[i];
        if (!exposure || !exposure->shows(view.get(), Brightness, powers, camera.settings))
            exposure = std::make_unique<Exposure>(view, Brightness, powers, camera.settings);
        buffers[i].resize(view->depths.size());
        exposure->read(shot.frame, buffers[i].data());
    }
    return buffers;
}

} // namespace Tessel3SyncSimulator
