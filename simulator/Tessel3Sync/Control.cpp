#include "Ranges.h"
#include "Simulator.h"
#include "render/Calibration.h"

#include <set>
#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

constexpr int smallestSide = 16;
constexpr int largestSide = 4096;

void check(const ScannerSetup &setup)
{
    if (!isIn(smallestSide, setup.width, largestSide) ||
        !isIn(smallestSide, setup.height, largestSide))
        throw std::invalid_argument("the simulator's images have 16 to 4096 pixels a side");
    if (!isIn(1, setup.triggerPeriodMs, MaximumTriggerPeriodMs))
        throw std::invalid_argument("the trigger period is 1 to 3600000 milliseconds");
    const std::set<CameraKind> kinds(setup.cameras.begin(), setup.cameras.end());
    if (kinds.size() != setup.cameras.size())
        throw std::invalid_argument("the scanner has each kind of camera at most once");
}

} // namespace

void reset(const ScannerSetup &setup)
{
    check(setup);
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    simulator.reset(lock, setup);
}

ScannerSetup setup()
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    return simulator.setup;
}

std::vector<Call> calls()
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    return simulator.recorder.calls();
}

void clearCalls()
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    simulator.recorder.clearCalls();
}

int callCount(const std::string &function)
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    return simulator.recorder.count(function);
}

void script(const std::string &function, int call, const Answer &answer)
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    simulator.script.add(function, call, answer);
}

Account account()
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    return simulator.frames.account();
}

Calibration calibration(CameraKind camera)
{
    const ScannerSetup now = setup();
    return cameraCalibration(camera, now.width, now.height);
}

} // namespace Tessel3SyncSimulator
