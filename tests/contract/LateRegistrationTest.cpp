// Every kind of connection to the facade's signal, in a process where nobody has made the version's
// type known to Qt: CTest runs each of these in a process of its own.

#include "KvSyncCore/SyncCore.h"
#include "fixtures/plugins/Recorder/RecorderControl.h"
#include "support/ApplicationFolder.h"
#include "support/LogCapture.h"
#include "support/RowName.h"

#include <QtCore/QThread>
#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace KvSyncTest;
using KvSyncCore::SyncCore;

const Event event{true, "Demo", "arrived", {1, "two"}, {1, 2, 3}};

class Receiver : public QObject
{
    Q_OBJECT

public:
    std::vector<Event> taken;
    QThread *thread = nullptr; ///< in which the last one arrived

public Q_SLOTS:
    void take(bool isPub, QString pluginName, QString signalName, QVariantList list,
              QVersionNumber version)
    {
        taken.push_back({isPub, pluginName, signalName, list, version});
        thread = QThread::currentThread();
    }
};

bool connectByText(SyncCore &core, Receiver &receiver, Qt::ConnectionType type)
{
    return QObject::connect(
        &core, SIGNAL(sendSignals(bool, QString, QString, QVariantList, QVersionNumber)), &receiver,
        SLOT(take(bool, QString, QString, QVariantList, QVersionNumber)), type);
}

bool connectByMember(SyncCore &core, Receiver &receiver, Qt::ConnectionType type)
{
    return QObject::connect(&core, &SyncCore::sendSignals, &receiver, &Receiver::take, type);
}

struct KindRow
{
    const char *name;
    bool (*connect)(SyncCore &core, Receiver &receiver, Qt::ConnectionType type);
    Qt::ConnectionType type;
};

class LateRegistration : public ::testing::TestWithParam<KindRow>
{
protected:
    LateRegistration()
    {
        folder.copyModule(commandFixture("Recorder"), "Demo.1.0.1.dll");
        core.init(folder.name(), "Device");
        core.loadCommandPlugin("Demo", {1, 0});
        thread.start();
        receiver.moveToThread(&thread);
    }

    ~LateRegistration() override
    {
        thread.quit();
        thread.wait();
    }

    /// The plug-in emits on a thread of its own; what was queued has run when this returns.
    void emitEvent()
    {
        qobject_cast<RecorderControl *>(core.getCommandPlugin("Demo", {}))
            ->emitEventFromWorker(event);
        QMetaObject::invokeMethod(
            &receiver, [] {}, Qt::BlockingQueuedConnection);
    }

    // Before the facade is made, which is what makes the type known.
    const int typeBefore = QMetaType::type("QVersionNumber");
    const LogCapture log;
    ApplicationFolder folder;
    SyncCore core;
    QThread thread;
    Receiver receiver;
};

TEST_P(LateRegistration, LeavesAllFiveArgumentsToArriveWhole)
{
    ASSERT_EQ(typeBefore, QMetaType::UnknownType) << "run each of these in a process of its own";
    ASSERT_TRUE(GetParam().connect(core, receiver, GetParam().type));
    emitEvent();
    EXPECT_EQ(receiver.taken, std::vector{event});
    EXPECT_EQ(receiver.thread == &thread, GetParam().type != Qt::DirectConnection);
    EXPECT_EQ(log.lines(Channel::QtOther), std::vector<LogLine>());
}

// CMakeLists.txt names each of them once more.
const KindRow kinds[] = {
    {"DirectByText", connectByText, Qt::DirectConnection},
    {"DirectByMember", connectByMember, Qt::DirectConnection},
    {"AutomaticByText", connectByText, Qt::AutoConnection},
    {"AutomaticByMember", connectByMember, Qt::AutoConnection},
    {"QueuedByText", connectByText, Qt::QueuedConnection},
    {"QueuedByMember", connectByMember, Qt::QueuedConnection},
    {"BlockingByText", connectByText, Qt::BlockingQueuedConnection},
    {"BlockingByMember", connectByMember, Qt::BlockingQueuedConnection},
};
INSTANTIATE_TEST_SUITE_P(Connection, LateRegistration, ::testing::ValuesIn(kinds), rowName);

} // namespace

#include "LateRegistrationTest.moc"
