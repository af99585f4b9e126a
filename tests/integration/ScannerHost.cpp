#include "ScannerHost.h"

#include <algorithm>
#include <chrono>

namespace KvSyncTest {

using KvSyncCore::SyncCore;

const QVariant scannerHandle = QVariant::fromValue<qint64>(1);

namespace {

const QString plugin = "Scanner";

// Loaded machines and sanitizers make pictures slowly.
constexpr int patientMs = 60000;

} // namespace

ScannerHost::ScannerHost()
{
    Tessel3SyncSimulator::reset(smallSetup());
    // Test programs stand in tests/<program>/, plug-ins in bin/Logic/.
    core.init("../../bin/Logic", "../../bin/Device");
    core.loadCommandPlugin(plugin, QVersionNumber(1, 0));
    QObject::connect(
        &core, &SyncCore::sendSignals, &core,
        [this](bool isPublic, const QString &emitter, const QString &name,
               const QVariantList &payload, const QVersionNumber &version) {
            const ReceivedEvent event{isPublic, emitter, name,
                                      payload,  version, std::this_thread::get_id()};
            {
                const std::lock_guard<std::mutex> lock(mutex);
                received.push_back(event);
            }
            changed.notify_all();
            if (reaction)
                reaction(event);
        },
        Qt::DirectConnection);
}

ScannerHost::~ScannerHost()
{
    try {
        call("closeDevices", {scannerHandle});
    } catch (const KvSyncTool::Exception &) {
        // The test closed it itself, or never opened it.
    }
}

Tessel3SyncSimulator::ScannerSetup ScannerHost::smallSetup()
{
    Tessel3SyncSimulator::ScannerSetup setup;
    setup.width = 160;
    setup.height = 128;
    setup.triggerPeriodMs = 2;
    return setup;
}

QVariant ScannerHost::call(const QString &function, const QVariantList &arguments)
{
    return core.execute(plugin, function, arguments, QVersionNumber(1, 0));
}

void ScannerHost::expectFails(ErrorCode code, const QString &text, const QString &function,
                              const QVariantList &arguments)
{
    expectThrows(code, text, [&] { call(function, arguments); });
}

void ScannerHost::open()
{
    const QVariantMap parameters{{"serial", "KV-SIM-0001"}};
    ASSERT_EQ(call("openDevices", {parameters}), scannerHandle);
}

QVariantList ScannerHost::capture(QVariantMap parameters)
{
    if (!parameters.contains("timeoutMs"))
        parameters.insert("timeoutMs", patientMs);
    return call("captureImage", {scannerHandle, "scan", parameters}).toList();
}

QVariant ScannerHost::execute(const QString &command, const QVariantList &arguments)
{
    return call("execute", {scannerHandle, command, QVariant(arguments)});
}

QVariantMap ScannerHost::with(QVariantMap parameters, const QString &key, const QVariant &value)
{
    parameters.insert(key, value);
    return parameters;
}

std::vector<ReceivedEvent> ScannerHost::events(const QString &name) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::vector<ReceivedEvent> named;
    std::copy_if(received.begin(), received.end(), std::back_inserter(named),
                 [&](const ReceivedEvent &event) { return event.name == name; });
    return named;
}

QVariantMap ScannerHost::lastOf(const QString &name) const
{
    const auto named = events(name);
    return named.empty() ? QVariantMap() : named.back().payload.value(0).toMap();
}

bool ScannerHost::waitForEvents(const QString &name, std::size_t count)
{
    std::unique_lock<std::mutex> lock(mutex);
    return changed.wait_for(lock, std::chrono::milliseconds(patientMs), [&] {
        const auto found =
            std::count_if(received.begin(), received.end(),
                          [&](const ReceivedEvent &event) { return event.name == name; });
        return static_cast<std::size_t>(found) >= count;
    });
}

void ScannerHost::awaitDeliveries(int count)
{
    const long long before = Tessel3SyncSimulator::account().delivered;
    while (Tessel3SyncSimulator::account().delivered < before + count)
        std::this_thread::yield();
}

int droppedBy(const QVariantMap &account, const QString &cause)
{
    return account.value("causes").toMap().value(cause).toInt();
}

bool balances(const QVariantMap &account)
{
    const auto number = [&](const QString &key) { return account.value(key).toLongLong(); };
    qint64 dropped = 0;
    for (const QVariant &count : account.value("causes").toMap())
        dropped += count.toLongLong();
    return number("dropped") == dropped && number("produced") == number("delivered") + dropped;
}

std::vector<std::string> libraryCalls(const std::string &function)
{
    std::vector<std::string> texts;
    for (const Tessel3SyncSimulator::Call &each : Tessel3SyncSimulator::calls()) {
        if (each.function == function)
            texts.push_back(Tessel3SyncSimulator::callText(each));
    }
    return texts;
}

} // namespace KvSyncTest
