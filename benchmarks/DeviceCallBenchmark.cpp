// What a handle-checked call costs beside the virtual call that it ends in, and what its parts cost
// alone: the read lock, the search in the device table, the cross-cast. From one thread to eight on
// the same device: with fewer processors than threads the times show the scheduler, too, and the
// lock's word moving between processors; they say nothing about a machine with eight.

#include "device/DeviceManager.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QReadLocker>
#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

using BaseDeviceSpace::DeviceInterface;
using CameraSpace::CameraInterface;
using KvSyncCore::DeviceManager;

const QString plugin = QStringLiteral("Still");
const QVersionNumber version(1, 0);
constexpr int deviceCount = 8; // a well-equipped scanner

/// A manager with a few devices, of which one is used.
struct Bench
{
    Bench()
    {
        if (manager.loadDevicePlugin(plugin, version) != Success)
            std::abort();
        for (int i = 0; i < deviceCount; ++i) {
            handle = manager.createDevice(plugin, version).second;
            table.insert(handle, plugin);
        }
        device = reinterpret_cast<DeviceInterface *>(static_cast<quintptr>(handle));
        camera = dynamic_cast<CameraInterface *>(device);
    }

    DeviceManager manager;
    DeviceHandle handle = 0;
    DeviceInterface *device = nullptr;
    CameraInterface *camera = nullptr;
    QReadWriteLock lock;
    QMap<qint64, QString> table;
};

Bench &bench()
{
    static Bench instance;
    return instance;
}

void directVirtualCall(benchmark::State &state)
{
    CameraInterface *camera = bench().camera;
    for (auto _ : state) {
        benchmark::DoNotOptimize(camera);
        benchmark::DoNotOptimize(camera->discardFrames(0));
    }
}

void handleCheckedCall(benchmark::State &state)
{
    DeviceManager &manager = bench().manager;
    const DeviceHandle handle = bench().handle;
    for (auto _ : state)
        benchmark::DoNotOptimize(manager.discardFrames(handle, 0));
}

void handleCheckedCallWithoutCast(benchmark::State &state)
{
    DeviceManager &manager = bench().manager;
    const DeviceHandle handle = bench().handle;
    for (auto _ : state)
        benchmark::DoNotOptimize(manager.connectDeviceByIndex(handle, 0));
}

void partReadLock(benchmark::State &state)
{
    QReadWriteLock &lock = bench().lock;
    for (auto _ : state) {
        const QReadLocker locker(&lock);
        benchmark::ClobberMemory();
    }
}

void partTableSearch(benchmark::State &state)
{
    const QMap<qint64, QString> &table = bench().table;
    DeviceHandle handle = bench().handle;
    for (auto _ : state) {
        benchmark::DoNotOptimize(handle);
        benchmark::DoNotOptimize(table.contains(handle));
    }
}

void partCrossCast(benchmark::State &state)
{
    DeviceInterface *device = bench().device;
    for (auto _ : state) {
        benchmark::DoNotOptimize(device);
        benchmark::DoNotOptimize(dynamic_cast<CameraInterface *>(device));
    }
}

BENCHMARK(directVirtualCall)->ThreadRange(1, 8)->UseRealTime();
BENCHMARK(handleCheckedCall)->ThreadRange(1, 8)->UseRealTime();
BENCHMARK(handleCheckedCallWithoutCast)->ThreadRange(1, 8)->UseRealTime();
BENCHMARK(partReadLock)->ThreadRange(1, 8)->UseRealTime();
BENCHMARK(partTableSearch)->ThreadRange(1, 8)->UseRealTime();
BENCHMARK(partCrossCast)->ThreadRange(1, 8)->UseRealTime();

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    bench();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
