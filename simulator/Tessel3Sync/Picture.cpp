#include "Picture.h"

namespace Tessel3SyncSimulator {

ViewKey viewKey(const Shot &shot, CameraKind camera)
{
    return {camera, shot.width, shot.height, shot.seed, shot.tableDegrees};
}

bool Picture::prepare(const Shot &shot)
{
    bool made = false;
    for (const ConnectedCamera &camera : shot.cameras) {
        const ViewKey key = viewKey(shot, camera.kind);
        made = made || !viewIsReady(key);
        viewFor(key);
    }
    return made;
}

void Picture::take(const Shot &shot)
{
    const std::size_t count = shot.cameras.size();
    exposures.resize(count);
    buffers.resize(count);
    const LightPowers powers = lightPowers(shot.light, shot.purpose);
    for (std::size_t i = 0; i < count; ++i) {
        const ConnectedCamera &camera = shot.cameras[i];
        const auto view = viewFor(viewKey(shot, camera.kind));
        auto &exposure = exposures[i];
        if (!exposure || !exposure->shows(view.get(), Brightness, powers, camera.settings))
            exposure = std::make_unique<Exposure>(view, Brightness, powers, camera.settings);
        buffers[i].resize(view->depths.size());
        exposure->read(shot.frame, buffers[i].data());
    }
}

void Picture::corrupt()
{
    for (auto &image : buffers)
        Tessel3SyncSimulator::corrupt(image.data() + image.size() / 3, image.size() / 3);
}

} // namespace Tessel3SyncSimulator
