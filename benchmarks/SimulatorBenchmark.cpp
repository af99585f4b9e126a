// What the simulated scanner's pictures cost: one image against a copy of its bytes, and whole
// deliveries of the speckle pair in processor time of all threads.
#include <Tessel3SyncSimulator/Control.h>

#include "render/Exposure.h"
#include "render/ViewCache.h"

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <vector>

using namespace Tessel3SyncSimulator;

namespace {

constexpr int width = 1280;
constexpr int height = 1024;
constexpr std::size_t bytes = static_cast<std::size_t>(width) * height;

LightSettings scanLights()
{
    LightSettings lights;
    lights.projection = ProjectorSpeckle;
    lights.strobeRoute = 2;
    lights.strobeState = 4;
    return lights;
}

void copyOneImage(benchmark::State &state)
{
    const std::vector<unsigned char> from(bytes, 1);
    std::vector<unsigned char> to(bytes);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copyOneImage);

void renderOneImage(benchmark::State &state)
{
    const auto view = ViewCache::instance().view({CameraKind::LeftSpeckle, width, height, 1, 0.0});
    const Exposure exposure(view, Brightness, lightPowers(scanLights(), Purpose::Scan), {});
    std::vector<unsigned char> image(bytes);
    int frame = 0;
    for (auto _ : state) {
        exposure.read(++frame, image.data());
        benchmark::DoNotOptimize(image.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(renderOneImage);

void changeASetting(benchmark::State &state)
{
    const auto view = ViewCache::instance().view({CameraKind::LeftSpeckle, width, height, 1, 0.0});
    const LightPowers powers = lightPowers(scanLights(), Purpose::Scan);
    for (auto _ : state)
        benchmark::DoNotOptimize(Exposure(view, Brightness, powers, {}));
}
BENCHMARK(changeASetting)->Unit(benchmark::kMillisecond);

void turnTheTable(benchmark::State &state)
{
    double degrees = 0.0;
    for (auto _ : state)
        benchmark::DoNotOptimize(View({CameraKind::LeftSpeckle, width, height, 1, ++degrees}));
}
BENCHMARK(turnTheTable)->Unit(benchmark::kMillisecond);

void askForDepths(benchmark::State &state)
{
    double degrees = 0.0;
    for (auto _ : state)
        benchmark::DoNotOptimize(depthsOf({CameraKind::LeftSpeckle, width, height, 1, ++degrees}));
}
BENCHMARK(askForDepths)->Unit(benchmark::kMillisecond);

/// Counts deliveries, and does nothing with them.
struct Host
{
    std::mutex mutex;
    std::condition_variable changed;
    int deliveries = 0;

    static void receive(const void *const &context, std::vector<unsigned char *> &, const int &,
                        const int &, std::vector<int> &)
    {
        auto &self = *static_cast<Host *>(const_cast<void *>(context));
        const std::lock_guard<std::mutex> lock(self.mutex);
        ++self.deliveries;
        self.changed.notify_all();
    }

    void awaitOne()
    {
        std::unique_lock<std::mutex> lock(mutex);
        const int before = deliveries;
        changed.wait(lock, [&] { return deliveries > before; });
    }
};

void deliverThePair(benchmark::State &state)
{
    ScannerSetup setup;
    setup.width = width;
    setup.height = height;
    reset(setup);
    Host host;
    std::vector<char *> serials;
    std::vector<int> a;
    std::vector<int> b;
    std::vector<bool> flags;
    int count = 0;
    void *device = nullptr;
    Tessel3Sync::GetCamerasInformation("", serials, a, b, flags, count);
    Tessel3Sync::ConnectDevice("SPECKLE", "", serials, a, b, device);
    Tessel3Sync::SetScanCallBackFunction(device, &Host::receive, &host);
    Tessel3Sync::Project(device, Tessel3Sync::PROJECTWORKTYPES_SCAN);
    Tessel3Sync::EnableVideoTrigger(device, Tessel3Sync::CAMERA_TRIGGER_MODE_NO_COLOR, true);
    host.awaitOne();
    for (auto _ : state)
        host.awaitOne();
    Tessel3Sync::DisConnectDevice(device);
}
// At the default period, thirty times a second: processor time against real time is the share of
// one core that the scanner takes.
BENCHMARK(deliverThePair)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(90)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
