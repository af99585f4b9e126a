#include "KvSyncCore/SyncCore.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using namespace KvSyncTest;

const char signalText[] = "2sendSignals(bool, QString, QString, QVariantList, QVersionNumber)";

bool connectQueued(QObject &sender, QObject &receiver)
{
    return QObject::connect(&sender, signalText, &receiver, signalText, Qt::QueuedConnection);
}

TEST(QueuedConnectionByText, FailsUntilTheHostRegistersTheVersionItself)
{
    const LogCapture log;
    KvSyncCore::SyncCore sender;
    KvSyncCore::SyncCore receiver;
    EXPECT_FALSE(connectQueued(sender, receiver));
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_TRUE(log.lines().front().text.contains("QVersionNumber"));

    qRegisterMetaType<QVersionNumber>();
    EXPECT_TRUE(connectQueued(sender, receiver));
    EXPECT_EQ(log.lines().size(), 1U);
}

} // namespace
