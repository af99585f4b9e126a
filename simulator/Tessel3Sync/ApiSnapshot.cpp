// Color snapshots.
#include "Picture.h"
#include "Ranges.h"
#include "Request.h"
#include "render/ViewCache.h"

using namespace Tessel3SyncSimulator;

namespace {

constexpr Channel planes[] = {Red, Green, Blue};

/// The picture's numbers: the moment at which all that it depends on is read.
Shot snapshotShot(const Simulator &simulator, const ConnectedCamera &camera, bool strobe)
{
    Shot shot;
    shot.frame = simulator.connection.snapshots;
    shot.width = simulator.setup.width;
    shot.height = simulator.setup.height;
    shot.seed = simulator.setup.seed;
    shot.tableDegrees = simulator.tableAngle();
    shot.purpose = Purpose::Snapshot;
    shot.light = simulator.connection.light;
    shot.light.strobeRoute = strobe;
    shot.light.strobeState = strobe;
    shot.cameras = {camera};
    return shot;
}

Snapshot takeSnapshot(const Shot &shot)
{
    const auto view = ViewCache::instance().view(viewKey(shot, CameraKind::Color));
    const LightPowers powers = lightPowers(shot.light, shot.purpose);
    Snapshot snapshot;
    for (Channel plane : planes) {
        auto &image = snapshot.images.emplace_back(view->depths.size());
        Exposure(view, plane, powers, shot.cameras[0].settings).read(shot.frame, image.data());
    }
    return snapshot;
}

const ConnectedCamera *colorCamera(const Connection &connection)
{
    for (const ConnectedCamera &camera : connection.cameras) {
        if (camera.kind == CameraKind::Color)
            return &camera;
    }
    return nullptr;
}

} // namespace

RETSTATUS Tessel3Sync::SnapColorImage(void *&device, std::vector<unsigned char *> &images,
                                      int &dimension1, int &dimension2, const int &fifth,
                                      double &sixth, int &seventh, CONTROLROUTE route)
{
    Simulator &scanner = Simulator::instance();
    ImageOutput imageOutput{images, scanner.connection.snapshot};
    Request request("SnapColorImage", device);
    return request.with(static_cast<int>(images.size()), fifth, static_cast<int>(route))
        .out("images", imageOutput)
        .out("dimension1", dimension1)
        .out("dimension2", dimension2)
        // Constant to us, but hosts pass a variable and read it back.
        .out("fifth", const_cast<int &>(fifth))
        .out("sixth", sixth)
        .out("seventh", seventh)
        .needsCameras()
        .run([&](Simulator &simulator, Lock &lock) {
            const ConnectedCamera *camera = colorCamera(simulator.connection);
            if (!camera)
                return refusal(NoColorCamera);
            if (!isIn(0, route, MaximumControlRoute))
                return refusal(OutOfRange);
            ++simulator.connection.snapshots;
            const Shot shot = snapshotShot(simulator, *camera, route != 0);
            lock.unlock();
            Snapshot snapshot = takeSnapshot(shot);
            lock.lock();
            simulator.catchUp();
            const RETSTATUS status = request.check(simulator);
            if (status != Success)
                return status;

            simulator.connection.snapshot = std::move(snapshot);
            images.clear();
            for (auto &image : simulator.connection.snapshot.images)
                images.push_back(image.data());
            dimension1 = shot.width;
            dimension2 = shot.height;
            sixth = shot.cameras[0].settings.exposureUs;
            seventh = shot.cameras[0].settings.gain;
            return Success;
        });
}
