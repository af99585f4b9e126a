// The turntable, and the truth about the pictures.
#include "api/SimulatedLibrary.h"
#include "render/Calibration.h"
#include "render/ViewCache.h"

#include <cmath>
#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

constexpr double largestAngle = 3600000.0;

std::vector<float> depthsAt(CameraKind camera, const ScannerSetup &setup, double degrees)
{
    const ViewKey key{camera, setup.width, setup.height, setup.seed, degrees};
    const auto view = ViewCache::instance().readyView(key);
    return view ? view->depths : depthsOf(key);
}

} // namespace

void setTurntableAngle(double degrees)
{
    if (!(std::abs(degrees) <= largestAngle))
        throw std::invalid_argument(
            "the angle of the turntable must be within 3600000 degrees of 0");
    LockedLibrary()->scanner().turnTable(degrees);
}

double turntableAngle()
{
    return LockedLibrary()->scanner().tableAngle();
}

Calibration calibration(CameraKind camera)
{
    const ScannerSetup now = setup();
    return cameraCalibration(camera, now.width, now.height);
}

std::vector<float> trueDepth(CameraKind camera, int frame)
{
    LockedLibrary library;
    const ScannerSetup setup = library->scanner().setup();
    const double degrees = library->scanner().tableAngleAt(frame);
    library.lock().unlock();
    return depthsAt(camera, setup, degrees);
}

std::vector<float> trueDepth(CameraKind camera)
{
    return depthsAt(camera, setup(), turntableAngle());
}

} // namespace Tessel3SyncSimulator

int Tessel3SyncSimulator_setTurntableAngle(double degrees)
{
    try {
        Tessel3SyncSimulator::setTurntableAngle(degrees);
    } catch (const std::invalid_argument &) {
        return 0;
    }
    return 1;
}

double Tessel3SyncSimulator_turntableAngle(void)
{
    return Tessel3SyncSimulator::turntableAngle();
}
