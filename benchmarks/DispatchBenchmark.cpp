// What a call by name costs beside the direct virtual call that it ends in, and beside Qt's own
// call by name. Debug output is off, as in a customer's installation, but for the case that says
// so.

#include "AllocationCounter.h"

#include <KvSyncCore/SyncCore.h>
#include <KvSyncTool/ToolLogger.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>
#include <QtCore/QMetaObject>
#include <benchmark/benchmark.h>

namespace {

const QString plugin = QStringLiteral("Echo");
const QVersionNumber version(1, 0);
const QString property = QStringLiteral("exposure");
const QVariant value(20.5);
const qint64 handle = 7;

KvSyncCore::SyncCore &core()
{
    static KvSyncCore::SyncCore instance;
    return instance;
}

// Runs one call again and again, and counts how often it asks for memory.
template <typename Call>
void measure(benchmark::State &state, Call call)
{
    const std::uint64_t before = allocationCount();
    for (auto _ : state)
        call();
    const auto allocations = static_cast<double>(allocationCount() - before);
    state.counters["allocations_per_call"] =
        benchmark::Counter(allocations, benchmark::Counter::kAvgIterations);
}

void directCloseDevices(benchmark::State &state)
{
    CommandInterface *const target = core().getCommandPlugin(plugin, version);
    measure(state, [target] {
        benchmark::DoNotOptimize(target);
        target->closeDevices(handle);
    });
}

void invokeCloseDevices(benchmark::State &state)
{
    QObject *const target = core().getCommandPlugin(plugin, version);
    measure(state, [target] {
        QMetaObject::invokeMethod(target, "closeDevices", Qt::DirectConnection,
                                  Q_ARG(qint64, handle));
    });
}

void executeCloseDevices(benchmark::State &state)
{
    const QString function = QStringLiteral("closeDevices");
    const QList<QVariant> arguments{handle};
    measure(state, [&] { core().execute(plugin, function, arguments, version); });
}

void directGetProperty(benchmark::State &state)
{
    CommandInterface *const target = core().getCommandPlugin(plugin, version);
    measure(state,
            [target] { benchmark::DoNotOptimize(target->getProperty(handle, property, value)); });
}

void invokeGetProperty(benchmark::State &state)
{
    QObject *const target = core().getCommandPlugin(plugin, version);
    measure(state, [target] {
        QVariant result;
        QMetaObject::invokeMethod(target, "getProperty", Qt::DirectConnection,
                                  Q_RETURN_ARG(QVariant, result), Q_ARG(qint64, handle),
                                  Q_ARG(QString, property), Q_ARG(QVariant, value));
        benchmark::DoNotOptimize(result);
    });
}

void executeGetProperty(benchmark::State &state)
{
    const QString function = QStringLiteral("getProperty");
    const QList<QVariant> arguments{handle, property, value};
    measure(state, [&] {
        benchmark::DoNotOptimize(core().execute(plugin, function, arguments, version));
    });
}

void executeGetPropertyWithDebugOutput(benchmark::State &state)
{
    QLoggingCategory::setFilterRules(QStringLiteral("KvSyncTool.debug=true"));
    executeGetProperty(state);
    QLoggingCategory::setFilterRules(QStringLiteral("KvSyncTool.debug=false"));
}

void executeUnknownVersion(benchmark::State &state)
{
    const QString function = QStringLiteral("closeDevices");
    const QList<QVariant> arguments{handle};
    measure(state, [&] { core().execute(plugin, function, arguments, QVersionNumber()); });
}

BENCHMARK(directCloseDevices);
BENCHMARK(invokeCloseDevices);
BENCHMARK(executeCloseDevices);
BENCHMARK(directGetProperty);
BENCHMARK(invokeGetProperty);
BENCHMARK(executeGetProperty);
BENCHMARK(executeGetPropertyWithDebugOutput);
BENCHMARK(executeUnknownVersion)->Name("executeCloseDevicesOfTheHighestVersion");

void discard(QtMsgType, const QMessageLogContext &, const QString &)
{
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(discard);
    QLoggingCategory::setFilterRules(QStringLiteral("KvSyncTool.debug=false"));
    core().loadCommandPlugin(plugin, version);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
