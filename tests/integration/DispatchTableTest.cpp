#include "integration/HostFixture.h"

#include <stdexcept>

namespace {

using namespace KvSyncTest;

enum class Answer { List, Handle, Nothing, AsItIs };

/// One of the twelve functions: arguments that all need conversion, how they arrive, and how its
/// result is wrapped.
struct FunctionRow
{
    const char *name;
    QVariantList given;
    QVariantList arriving;
    Answer answer;
};

const QVariantMap map{{"exposureUs", 1500}, {"color", true}};
const QVariantList list{1, "two"};
const qint64 wide = Q_INT64_C(0x123456789ABCDEF0);

const FunctionRow functions[] = {
    {"getRunningDevList", {}, {}, Answer::List},
    {"openDevices", {map}, {map}, Answer::Handle},
    {"closeDevices", {wide}, {wide}, Answer::Nothing},
    {"resetDevices", {"12"}, {Q_INT64_C(12)}, Answer::Nothing},
    {"getProperty", {7, QByteArray("gain"), 2.5f}, {Q_INT64_C(7), "gain", 2.5f}, Answer::AsItIs},
    {"setProperty", {7u, 42, QVariant(map)}, {Q_INT64_C(7), "42", QVariant(map)}, Answer::Nothing},
    {"resetInterface", {true, "usb"}, {Q_INT64_C(1), "usb"}, Answer::Nothing},
    {"setFlagBitInterface", {-1, "led", "false"}, {Q_INT64_C(-1), "led", false}, Answer::Nothing},
    {"project", {7.4, QChar('x')}, {Q_INT64_C(7), "x"}, Answer::Nothing},
    {"captureImage", {wide, "scan", map}, {wide, "scan", map}, Answer::List},
    {"turntableRotate", {wide, "left", map, 1}, {wide, "left", map, true}, Answer::Nothing},
    {"execute",
     {wide, "startScan", QStringList{"a", "b"}},
     {wide, "startScan", QVariant(QVariantList{"a", "b"})},
     Answer::AsItIs},
};

QVariant expectedResult(Answer answer, const QVariant &plugins)
{
    switch (answer) {
    case Answer::List:
        return plugins.toList();
    case Answer::Handle:
        return plugins.toLongLong();
    case Answer::Nothing:
        return {};
    case Answer::AsItIs:
        return plugins;
    }
    return {};
}

void expectSame(const QVariant &actual, const QVariant &expected)
{
    EXPECT_EQ(actual.userType(), expected.userType());
    EXPECT_EQ(actual, expected);
}

class EachFunction : public HostFixture, public ::testing::WithParamInterface<FunctionRow>
{
protected:
    EachFunction()
    {
        demo = &loadDemo();
        log.clear();
    }

    int fewestArguments() const { return GetParam().given.size(); }

    RecorderControl *demo = nullptr;
};

TEST_P(EachFunction, CallsItsOperationOnceWithTheArgumentsConverted)
{
    execute(GetParam().name, GetParam().given);
    const QVector<RecordedCall> calls = demo->takeCalls();
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls[0].function, GetParam().name);
    ASSERT_EQ(calls[0].arguments.size(), GetParam().arriving.size());
    for (int i = 0; i < calls[0].arguments.size(); ++i)
        expectSame(calls[0].arguments[i], GetParam().arriving[i]);
}

TEST_P(EachFunction, WrapsWhatThePluginAnswers)
{
    for (const QVariant &answer :
         {QVariant(list), QVariant(wide), QVariant("text"), QVariant(map), QVariant()}) {
        demo->answerWith(answer);
        expectSame(execute(GetParam().name, GetParam().given),
                   expectedResult(GetParam().answer, answer));
    }
}

TEST_P(EachFunction, WritesNothingButTheLookup)
{
    execute(GetParam().name, GetParam().given);
    EXPECT_EQ(log.lines(), std::vector{findLine("Demo.1.0")});
}

TEST_P(EachFunction, IgnoresSurplusArguments)
{
    QVariantList surplus = GetParam().given;
    surplus << "never read" << QVariant();
    EXPECT_NO_THROW(execute(GetParam().name, surplus));
    EXPECT_EQ(demo->takeCalls().value(0).arguments, GetParam().arriving);
}

TEST_P(EachFunction, RefusesEveryShorterListAndDoesNotCallThePlugin)
{
    const QString text =
        QString("The %1 function has the wrong number of arguments").arg(GetParam().name);
    for (int count = 0; count < fewestArguments(); ++count) {
        log.clear();
        expectThrows(WrongArgumentCount, text,
                     [&] { execute(GetParam().name, GetParam().given.mid(0, count)); });
        ASSERT_EQ(log.lines(), (std::vector{findLine("Demo.1.0"), criticalLine(text)}));
        expectWrittenBy(log.lines().back(), "KvSyncCore::CommandManager::execute(",
                        "CommandDispatch.cpp");
    }
    EXPECT_TRUE(demo->takeCalls().isEmpty());
}

TEST_P(EachFunction, TakesEmptyArgumentsForZeroFalseAndEmpty)
{
    QVariantList empty;
    for (int i = 0; i < fewestArguments(); ++i)
        empty << QVariant();
    execute(GetParam().name, empty);
    const QVariantList arrived = demo->takeCalls().value(0).arguments;
    ASSERT_EQ(arrived.size(), fewestArguments());
    for (int i = 0; i < arrived.size(); ++i) {
        // The one argument that is passed as it is stays invalid.
        const bool asItIs = GetParam().name == QLatin1String("getProperty") ||
                            GetParam().name == QLatin1String("setProperty");
        const QVariant expected =
            asItIs && i == 2 ? QVariant() : QVariant(GetParam().arriving[i].userType(), nullptr);
        expectSame(arrived[i], expected);
    }
}

TEST_P(EachFunction, IsUnknownInAnyOtherSpelling)
{
    const QString name = GetParam().name;
    for (const QString &other : {name.toUpper(), name.left(1).toUpper() + name.mid(1), name + ' ',
                                 ' ' + name, name + "s", name.chopped(1)}) {
        expectThrows(FunctionNotExist, QString("The %1 function doesn't exist").arg(other),
                     [&] { execute(other, GetParam().given); });
    }
    EXPECT_TRUE(demo->takeCalls().isEmpty());
}

TEST_P(EachFunction, LetsThePluginsOwnExceptionThroughUnchanged)
{
    demo->failWith(Failure::ToolException);
    expectThrows(CameraFailed, "the plug-in's own words",
                 [&] { execute(GetParam().name, GetParam().given); });
    EXPECT_EQ(log.lines(), std::vector{findLine("Demo.1.0")});
}

TEST_P(EachFunction, LetsAStandardExceptionThroughUnchanged)
{
    demo->failWith(Failure::StandardException);
    try {
        execute(GetParam().name, GetParam().given);
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(), "out of film");
    }
}

TEST_P(EachFunction, LetsThroughWhatIsNoExceptionObject)
{
    demo->failWith(Failure::Integer);
    try {
        execute(GetParam().name, GetParam().given);
        FAIL() << "nothing thrown";
    } catch (int number) {
        EXPECT_EQ(number, 42);
    }
}

TEST_P(EachFunction, WorksAgainAfterThePluginHasThrown)
{
    demo->failWith(Failure::Integer);
    EXPECT_THROW(execute(GetParam().name, GetParam().given), int);
    demo->failWith(Failure::None);
    EXPECT_NO_THROW(execute(GetParam().name, GetParam().given));
    EXPECT_EQ(demo->takeCalls().size(), 2);
}

INSTANTIATE_TEST_SUITE_P(Dispatch, EachFunction, ::testing::ValuesIn(functions), rowName);

} // namespace
