// Color snapshots.
#include "api/Request.h"

using namespace Tessel3SyncSimulator;

RETSTATUS Tessel3Sync::SnapColorImage(void *&device, std::vector<unsigned char *> &images,
                                      int &dimension1, int &dimension2, const int &fifth,
                                      double &sixth, int &seventh, CONTROLROUTE route)
{
    ImageOutput imageOutput{images, SimulatedLibrary::instance().scanner().snapshot()};
    // Constant to us, but hosts pass a variable and read it back.
    int &fifthOutput = const_cast<int &>(fifth);
    Request request(call<indexOf("SnapColorImage")>(imageOutput, dimension1, dimension2,
                                                    fifthOutput, sixth, seventh),
                    device);
    return request.with(static_cast<int>(images.size()), fifth, static_cast<int>(route))
        .needsCameras()
        .run([&](Scanner &scanner, Lock &lock) {
            const ConnectedCamera *camera = scanner.colorCamera();
            if (!camera)
                return refusal(NoColorCamera);
            if (!isIn(0, route, MaximumControlRoute))
                return refusal(OutOfRange);
            const Shot shot = scanner.nextSnapshot(*camera, route != 0);
            lock.unlock();
            Images planes = takeSnapshot(shot);
            lock.lock();
            scanner.catchUp();
            const RETSTATUS status = request.check(scanner);
            if (status != Success)
                return status;

            images.clear();
            for (auto &plane : planes)
                images.push_back(plane.data());
            scanner.snapshot() = std::move(planes);
            dimension1 = shot.width;
            dimension2 = shot.height;
            sixth = shot.cameras.front().settings.exposureUs;
            seventh = shot.cameras.front().settings.gain;
            return Success;
        });
}
