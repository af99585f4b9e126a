#include "integration/HostFixture.h"

#include "support/CriticalLinesOff.h"

#include <limits>

namespace {

using namespace KvSyncTest;

class Dispatch : public HostFixture
{
protected:
    Dispatch()
    {
        demo = &loadDemo();
        log.clear();
    }

    /// The handle that the plug-in received for what the host gave.
    qint64 arrivingHandle(const QVariant &given)
    {
        execute("closeDevices", {given});
        const QVariant handle = demo->takeCalls().value(0).arguments.value(0);
        EXPECT_EQ(handle.userType(), static_cast<int>(QMetaType::LongLong));
        return handle.toLongLong();
    }

    void expectUnknown(const QString &function, const QString &text)
    {
        log.clear();
        expectThrows(FunctionNotExist, text, [&] { execute(function); });
        ASSERT_EQ(log.lines(), (std::vector{findLine("Demo.1.0"), criticalLine(text)}));
        expectWrittenBy(log.lines().back(), "KvSyncCore::CommandManager::execute(",
                        "CommandDispatch.cpp");
        EXPECT_TRUE(demo->takeCalls().isEmpty());
    }

    RecorderControl *demo = nullptr;
};

TEST_F(Dispatch, HandleGivenAsTextReachesThePluginAsItsNumber)
{
    EXPECT_EQ(arrivingHandle("12"), 12);
    EXPECT_EQ(arrivingHandle("-9223372036854775808"), std::numeric_limits<qint64>::min());
}

TEST_F(Dispatch, HandleThatCannotBeConvertedReachesThePluginAsZero)
{
    for (const QVariant &given :
         {QVariant("abc"), QVariant(), QVariant(""), QVariant("12abc"), QVariant("0x12"),
          QVariant("9223372036854775808"), QVariant(QVariantList{12}),
          QVariant(QVariantMap{{"handle", 12}}), QVariant::fromValue(QVersionNumber{12})}) {
        EXPECT_EQ(arrivingHandle(given), 0) << given.typeName();
    }
}

TEST_F(Dispatch, HandleOfAnotherNumericTypeIsConverted)
{
    EXPECT_EQ(arrivingHandle(12), 12);
    EXPECT_EQ(arrivingHandle(12u), 12);
    EXPECT_EQ(arrivingHandle(-1.6), -2);
    EXPECT_EQ(arrivingHandle(12.4), 12);
    EXPECT_EQ(arrivingHandle(true), 1);
    EXPECT_EQ(arrivingHandle(QByteArray("12")), 12);
    EXPECT_EQ(arrivingHandle(std::numeric_limits<quint64>::max()), -1);
}

TEST_F(Dispatch, HandleOfSixtyFourBitsIsTakenAsItIs)
{
    EXPECT_EQ(arrivingHandle(std::numeric_limits<qint64>::min()),
              std::numeric_limits<qint64>::min());
    EXPECT_EQ(arrivingHandle(std::numeric_limits<qint64>::max()),
              std::numeric_limits<qint64>::max());
}

TEST_F(Dispatch, ExecuteTakesAThirdArgumentThatIsNoListForAnEmptyList)
{
    for (const QVariant &given :
         {QVariant(12), QVariant("text"), QVariant(QVariantMap{{"a", 1}})}) {
        execute("execute", {1, "command", given});
        const QVariant list = demo->takeCalls().value(0).arguments.value(2);
        EXPECT_EQ(list, QVariant(QVariantList())) << given.typeName();
    }
}

TEST_F(Dispatch, ValuePassesByReferenceWithoutACopy)
{
    const QVariantList arguments{1, "name", QVariantMap{{"a", 1}}};
    core.execute("Demo", "setProperty", arguments, {1, 0});
    core.execute("Demo", "getProperty", arguments, {1, 0});
    for (const RecordedCall &call : demo->takeCalls())
        EXPECT_EQ(call.value, &arguments.at(2)) << call.function.toStdString();
}

TEST_F(Dispatch, OfAnUnknownFunctionFails)
{
    expectUnknown("shutDown", "The shutDown function doesn't exist");
    expectUnknown("", "The  function doesn't exist");
    expectUnknown("OpenDevices", "The OpenDevices function doesn't exist");
    // The first operation of the interface is no function of dispatch.
    expectUnknown("setDeviceController", "The setDeviceController function doesn't exist");
}

TEST_F(Dispatch, InsertsTheFunctionNameInLatin1)
{
    expectUnknown(QStringLiteral("\u00f6ffnen"),
                  QStringLiteral("The \ufffdffnen function doesn't exist"));
    expectUnknown(QStringLiteral("\u6253\u5f00"), "The ?? function doesn't exist");
    expectUnknown("%s%d", "The %s%d function doesn't exist");
}

TEST_F(Dispatch, OfAnUnknownFunctionFailsThoughCriticalLinesAreOff)
{
    const CriticalLinesOff off;
    expectThrows(FunctionNotExist, "The x function doesn't exist", [&] { execute("x"); });
    expectThrows(WrongArgumentCount, "The project function has the wrong number of arguments",
                 [&] { execute("project", {1}); });
    EXPECT_EQ(log.lines(), (std::vector{findLine("Demo.1.0"), findLine("Demo.1.0")}));
}

TEST_F(Dispatch, OfAnUnknownFunctionOnAnUnknownPluginNamesThePlugin)
{
    expectThrows(PluginNotLoaded, "Nobody.1.0 plugin is not exist", [&] {
        core.execute("Nobody", "shutDown", {}, {1, 0});
    });
}

TEST_F(Dispatch, ReachesTheVersionThatWasAskedFor)
{
    folder.copyModule(commandFixture("Recorder"), "Demo.2.3.1.dll");
    core.loadCommandPlugin("Demo", {2, 3});
    auto *const newer = qobject_cast<RecorderControl *>(core.getCommandPlugin("Demo", {2, 3}));
    core.execute("Demo", "getRunningDevList", {}, {1, 0, 5});
    EXPECT_EQ(demo->takeCalls().size(), 1);
    EXPECT_EQ(newer->takeCalls().size(), 0);
    core.execute("Demo", "getRunningDevList", {}, {});
    EXPECT_EQ(demo->takeCalls().size(), 0);
    EXPECT_EQ(newer->takeCalls().size(), 1);
}

TEST_F(Dispatch, WithANullVersionLogsTheKeyThatItFound)
{
    core.execute("Demo", "getRunningDevList", {}, {});
    EXPECT_EQ(log.lines(), std::vector{findLine("Demo.1.0")});
}

} // namespace
