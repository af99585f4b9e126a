#include "device/virtualscanner/VirtualScannerTest.h"

#include "KvSyncDevice/ControllerInterface.h"

#include <future>
#include <thread>
#include <vector>

using namespace KvSyncTest;
using namespace VirtualScanner;
using namespace ControllerSpace;

namespace {

class VirtualControllers : public VirtualScannerTest
{
protected:
    ErrorCode send(CmdType type, const QByteArray &payload)
    {
        return devices.sendCommand(scanner, type, payload);
    }

    QByteArray answerTo(CmdType type, const QByteArray &payload)
    {
        QByteArray answer;
        EXPECT_EQ(send(type, payload), Success);
        EXPECT_EQ(devices.readCommand(scanner, type, answer), Success);
        return answer;
    }

    template <typename Operation>
    static ErrorCode onAnotherThread(Operation operation)
    {
        return std::async(std::launch::async, operation).get();
    }

    static QByteArray image(char imageVersion, int size = 10000)
    {
        return QByteArray("KVFW") + imageVersion + QByteArray(size - 5, 'x');
    }

    QVariant fireware(const char *key)
    {
        return get(scanner, "fireware").value(QString::fromLatin1(key));
    }

    const DeviceHandle scanner = open(Scanner);
};

} // namespace

TEST_F(VirtualControllers, AnswerTheirCommands)
{
    EXPECT_EQ(answerTo(ControlCommand, "ping"), "pong");
    EXPECT_EQ(answerTo(QueryCommand, "version"), "0");
    EXPECT_EQ(answerTo(ConfigurationCommand, "set  fan 3\n"), "done");
    EXPECT_EQ(answerTo(QueryCommand, "get fan"), "3");
    EXPECT_EQ(answerTo(ControlCommand, "reset"), "done");
    EXPECT_EQ(send(QueryCommand, "get fan"), UnknownCommand);
}

TEST_F(VirtualControllers, RefuseUnknownCommands)
{
    EXPECT_EQ(send(ControlCommand, ""), UnknownCommand);
    EXPECT_EQ(send(ControlCommand, "ping pong"), UnknownCommand);
    EXPECT_EQ(send(QueryCommand, "ping"), UnknownCommand);
    EXPECT_EQ(send(ConfigurationCommand, "set fan"), UnknownCommand);
    EXPECT_EQ(send(static_cast<CmdType>(3), "ping"), UnknownCommand);
}

TEST_F(VirtualControllers, GiveAnAnswerOnceAndByItsKind)
{
    QByteArray answer = "untouched";
    EXPECT_EQ(devices.readCommand(scanner, ControlCommand, answer), NoAnswer);
    EXPECT_EQ(send(ControlCommand, "ping"), Success);
    EXPECT_EQ(devices.readCommand(scanner, QueryCommand, answer), NoAnswer);
    EXPECT_EQ(answer, "untouched");
    EXPECT_EQ(devices.readCommand(scanner, ControlCommand, answer), Success);
    EXPECT_EQ(devices.readCommand(scanner, ControlCommand, answer), NoAnswer);
}

TEST_F(VirtualControllers, KeepTheChannelForTheCallerThatLockedIt)
{
    ASSERT_EQ(devices.lockCommandChannel(scanner), Success);
    QByteArray answer;
    EXPECT_EQ(onAnotherThread([&] { return send(ControlCommand, "ping"); }), ChannelBusy);
    EXPECT_EQ(onAnotherThread([&] { return devices.readCommand(scanner, ControlCommand, answer); }),
              ChannelBusy);
    EXPECT_EQ(
        onAnotherThread([&] { return devices.updateFireware(scanner, MotorFireware, image(1)); }),
        ChannelBusy);
    EXPECT_EQ(onAnotherThread([&] { return devices.lockCommandChannel(scanner); }), ChannelBusy);
    EXPECT_EQ(onAnotherThread([&] { return devices.unlockCommandChannel(scanner); }),
              ChannelNotLocked);
    EXPECT_EQ(send(ControlCommand, "ping"), Success);
    EXPECT_EQ(devices.lockCommandChannel(scanner), ChannelBusy);
    EXPECT_EQ(devices.unlockCommandChannel(scanner), Success);
    EXPECT_EQ(devices.unlockCommandChannel(scanner), ChannelNotLocked);
    EXPECT_EQ(onAnotherThread([&] { return send(ControlCommand, "ping"); }), Success);
}

TEST_F(VirtualControllers, KeepTheChannelFromAThreadThatGotTheIdOfTheOneThatLockedIt)
{
    // A system gives the id of an ended thread out again, mostly to the very next one.
    std::thread([this] { EXPECT_EQ(devices.lockCommandChannel(scanner), Success); }).join();
    for (int i = 0; i < 20; ++i) {
        std::thread([this] {
            EXPECT_EQ(send(ControlCommand, "ping"), ChannelBusy);
            EXPECT_EQ(devices.unlockCommandChannel(scanner), ChannelNotLocked);
        }).join();
    }
}

TEST_F(VirtualControllers, TakeAFirmwareImageWhole)
{
    EXPECT_EQ(devices.updateFireware(scanner, ControllerFireware, image(7)), Success);
    EXPECT_EQ(fireware("bytesTotal").toInt(), 10000);
    EXPECT_EQ(fireware("bytesWritten").toInt(), 10000);
    EXPECT_FALSE(fireware("updating").toBool());
    EXPECT_EQ(fireware("controller").toInt(), 7);
    EXPECT_EQ(fireware("projector").toInt(), 0);
    EXPECT_EQ(answerTo(QueryCommand, "version"), "7");
}

TEST_F(VirtualControllers, RefuseWhatIsNoFirmwareImage)
{
    const auto update = [this](FirewareType type, const QByteArray &data) {
        return devices.updateFireware(scanner, type, data);
    };
    EXPECT_EQ(update(MotorFireware, ""), BadFirewareImage);
    EXPECT_EQ(update(MotorFireware, "KVFW"), BadFirewareImage);
    EXPECT_EQ(update(MotorFireware, "firmware"), BadFirewareImage);
    EXPECT_EQ(update(MotorFireware, image(1, 1024 * 1024 + 1)), BadFirewareImage);
    EXPECT_EQ(update(static_cast<FirewareType>(3), image(1)), BadFirewareImage);
    EXPECT_EQ(update(MotorFireware, image(1, 1024 * 1024)), Success);
}

TEST_F(VirtualControllers, ShowTheProgressOfAnUpdateToOtherThreads)
{
    // Every block waits, so that the update is seen on its way; vanishing ends it.
    ASSERT_EQ(set(scanner, "slow",
                  {{QStringLiteral("operation"), QStringLiteral("firewareStep")},
                   {QStringLiteral("ms"), 20}}),
              Success);
    std::future<ErrorCode> updating = std::async(std::launch::async, [this] {
        return devices.updateFireware(scanner, MotorFireware, image(3, 1024 * 1024));
    });
    EXPECT_TRUE(eventually([this] { return fireware("bytesWritten").toInt() >= 2 * 4096; }));
    EXPECT_TRUE(fireware("updating").toBool());
    EXPECT_LT(fireware("bytesWritten").toInt(), 1024 * 1024);
    EXPECT_EQ(send(ControlCommand, "ping"), ChannelBusy);
    ASSERT_EQ(set(scanner, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    ASSERT_EQ(set(scanner, "vanish", {{QStringLiteral("vanished"), false}}), Success);
    ASSERT_EQ(devices.connectDeviceByIndex(scanner, Scanner), Success);
    EXPECT_EQ(updating.get(), DeviceVanished);
    EXPECT_FALSE(fireware("updating").toBool());
    EXPECT_EQ(fireware("motor").toInt(), 0);
}

TEST_F(VirtualControllers, AFailingBlockLeavesTheOldFirmware)
{
    ASSERT_EQ(devices.updateFireware(scanner, MotorFireware, image(1)), Success);
    ASSERT_EQ(set(scanner, "fail",
                  {{QStringLiteral("operation"), QStringLiteral("firewareStep")},
                   {QStringLiteral("code"), 99},
                   {QStringLiteral("times"), 1}}),
              Success);
    EXPECT_EQ(devices.updateFireware(scanner, MotorFireware, image(2)), static_cast<ErrorCode>(99));
    EXPECT_EQ(fireware("motor").toInt(), 1);
    EXPECT_EQ(devices.updateFireware(scanner, MotorFireware, image(2)), Success);
    EXPECT_EQ(fireware("motor").toInt(), 2);
}
