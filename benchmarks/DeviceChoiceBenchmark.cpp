// What it costs to find the plug-in file to load among many, beside a plain listing of the folder.

#include "PluginFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

using namespace KvSyncCore;

const QString plugin = QStringLiteral("Camera");
const QVersionNumber version(2, 1);

/// A folder with that many builds of one version line.
class Folder
{
public:
    explicit Folder(int fileCount)
    {
        for (int build = 0; build < fileCount; ++build) {
            QFile file(directory.filePath(QStringLiteral("Camera.2.1.%1.dll").arg(build)));
            if (!file.open(QIODevice::WriteOnly))
                std::abort();
        }
    }

    QString path() const { return directory.path(); }

private:
    QTemporaryDir directory;
};

void plainListing(benchmark::State &state)
{
    const Folder folder(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(QDir(folder.path()).entryList(QDir::Files, QDir::Unsorted));
}

void listingWithThePattern(benchmark::State &state)
{
    const Folder folder(static_cast<int>(state.range(0)));
    const QString pattern = PluginFile::buildPattern(plugin, version);
    for (auto _ : state)
        benchmark::DoNotOptimize(PluginFile::list(folder.path(), pattern));
}

void choosingTheHighestBuild(benchmark::State &state)
{
    const Folder folder(static_cast<int>(state.range(0)));
    const QString pattern = PluginFile::buildPattern(plugin, version);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PluginFile::highestBuild(PluginFile::list(folder.path(), pattern)));
}

BENCHMARK(plainListing)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(listingWithThePattern)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(choosingTheHighestBuild)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
