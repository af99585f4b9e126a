#ifndef KVSYNC_TESTS_INTEGRATION_SCANNERHOST_H
#define KVSYNC_TESTS_INTEGRATION_SCANNERHOST_H

#include "support/ExpectThrows.h"

#include <KvSyncCore/SyncCore.h>
#include <Tessel3SyncSimulator/Control.h>

#include <QtCore/QMap>
#include <QtCore/QVariant>

#include <condition_variable>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace KvSyncTest {

struct ReceivedEvent
{
    bool isPublic;
    QString pluginName;
    QString name;
    QVariantList payload;
    QVersionNumber version;
    std::thread::id thread;
};

/// A host with the Scanner plug-in loaded, over a fresh, small simulated scanner of 160 x 128
/// pixels and a period of 2 ms.
class ScannerHost : public testing::Test
{
protected:
    ScannerHost();
    ~ScannerHost() override;

    static Tessel3SyncSimulator::ScannerSetup smallSetup();

    /// Calls a function of the plug-in.
    QVariant call(const QString &function, const QVariantList &arguments);
    void expectFails(ErrorCode code, const QString &text, const QString &function,
                     const QVariantList &arguments);

    /// Opens the simulated scanner; its handle is 1.
    void open();
    /// A scan through captureImage; it waits patiently unless "timeoutMs" says otherwise.
    QVariantList capture(QVariantMap parameters);
    QVariant execute(const QString &command, const QVariantList &arguments = {});
    static QVariantMap frames(int count) { return {{"frames", count}}; }
    static QVariantMap with(QVariantMap parameters, const QString &key, const QVariant &value);

    /// Events so far; the map that is the payload of the last one.
    std::vector<ReceivedEvent> events(const QString &name) const;
    QVariantMap lastOf(const QString &name) const;
    /// Waits for so many events of a name; false after a minute.
    bool waitForEvents(const QString &name, std::size_t count);
    /// Waits until the scanner has delivered so many frames more, each a call of our callback.
    static void awaitDeliveries(int count);
    /// Runs on the emitting thread with each event, after it was kept.
    std::function<void(const ReceivedEvent &event)> reaction;

    KvSyncCore::SyncCore core;

private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::vector<ReceivedEvent> received;
};

/// How many frames of an account, {"frames", "produced", …}, were dropped for a cause.
int droppedBy(const QVariantMap &account, const QString &cause);
/// Whether it adds up: what was produced is delivered or dropped, each for one cause.
bool balances(const QVariantMap &account);

/// The library calls of a function, each as "Function(arguments)".
std::vector<std::string> libraryCalls(const std::string &function);

extern const QVariant scannerHandle;

} // namespace KvSyncTest

#endif
