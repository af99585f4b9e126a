#include "DirectLink.h"
#include "support/RowName.h"

#include <limits>

namespace {

using namespace KvSyncTest;
using ::testing::Contains;
using ::testing::ElementsAre;

using Parameters = QMap<QString, QVariant>;

std::string firstLine(const std::string &command, const std::string &mapText)
{
    return debug("executeCommand",
                 "cmdName:" + command + ",value:" + mapText + ", func default success");
}

class CommandTable : public ConnectedScanner
{
protected:
    Journal run(const QString &name, Parameters parameters)
    {
        return journalOf([&] { code = controller.executeCommand(anyHandle, name, parameters); });
    }

    ErrorCode code = ConnectFailed;
};

/// What a command sends and adds when it is given an empty map.
struct BareCommand
{
    const char *name;
    QStringList keys;
    const char *call;
};

class CommandWithoutParameters : public ::testing::TestWithParam<BareCommand>
{
protected:
    CommandWithoutParameters() { link.connect(); }

    DirectLink link;
};

TEST_P(CommandWithoutParameters, SendsZeroAndFalseAndAddsItsKeysWithInvalidValues)
{
    Parameters parameters;
    ErrorCode code = ConnectFailed;
    const Journal journal = journalOf(
        [&] { code = link.controller.executeCommand(anyHandle, GetParam().name, parameters); });
    EXPECT_EQ(code, Success);
    EXPECT_THAT(journal, Contains(GetParam().call));
    Parameters expected;
    for (const QString &key : GetParam().keys)
        expected.insert(key, QVariant());
    EXPECT_EQ(parameters, expected);
    // The line was written before the keys were added.
    EXPECT_EQ(journal.front(), firstLine(GetParam().name, "QMap()"));
}

TEST_P(CommandWithoutParameters, IsUnknownInAnyOtherCase)
{
    const QString name = GetParam().name;
    const QString otherFirst = name.at(0).isUpper() ? name.at(0).toLower() : name.at(0).toUpper();
    for (const QString &other : {name.toLower(), name.toUpper(), otherFirst + name.mid(1)}) {
        if (other == name)
            continue;
        Parameters parameters;
        ErrorCode code = ConnectFailed;
        const Journal journal =
            journalOf([&] { code = link.controller.executeCommand(anyHandle, other, parameters); });
        EXPECT_EQ(code, Success);
        EXPECT_THAT(journal, ElementsAre(firstLine(other.toStdString(), "QMap()")));
        EXPECT_TRUE(parameters.isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandWithoutParameters,
    ::testing::Values(
        BareCommand{"startScan",
                    {"bEnableColor", "colorMode", "iPeriod"},
                    "EnableVideoTrigger(device, 1, true)"},
        BareCommand{"stopScan", {}, "EnableVideoTrigger(device, 0, false)"},
        BareCommand{"Project", {"projectWorkType"}, "Project(device, 0)"},
        BareCommand{"SetStrobeControlledByTrigger",
                    {"controlRoute", "strobeState"},
                    "SetStrobeControlledByTrigger(device, 0, 0)"},
        BareCommand{"EnableBlueLaser",
                    {"laserWorkMode", "bLaserEnable"},
                    "EnableBlueLaser(device, 0, false)"},
        BareCommand{"EnableIRLaser", {"bIRLaserEnable"}, "EnableIRLaser(device, false)"},
        BareCommand{"SetVideoTriggerPeriod", {"triggerPeriod"}, "SetVideoTriggerPeriod(device, 0)"},
        BareCommand{"EnableVideoTrigger",
                    {"cameraTriggerMode", "bEnable"},
                    "EnableVideoTrigger(device, 0, false)"},
        BareCommand{"SetStrobeDutioRatio",
                    {"TexDutioRatio", "dutioRatioWithTex", "dutioRatio"},
                    "SetStrobeDutioRatio(device, 0, 0, 0)"},
        BareCommand{"SetLaserLineDutioRatio", {"dutioRatio"}, "SetLaserLineDutioRatio(device, 0)"},
        BareCommand{"SetProjectDutioRatio", {"dutioRatio"}, "SetProjectDutioRatio(device, 0)"},
        BareCommand{"SetIRLaserDutioRatio", {"dutioRatio"}, "SetIRLaserDutioRatio(device, 0)"},
        BareCommand{"SetDistanceIndicate", {"disStauts"}, "SetDistanceIndicate(device, 0)"}),
    rowName);

/// How a number and a flag are read from a value of some type.
struct Reading
{
    const char *name;
    QVariant value;
    const char *number;
    const char *flag;
};

class CommandParameter : public ::testing::TestWithParam<Reading>
{
protected:
    CommandParameter() { link.connect(); }

    DirectLink link;
};

TEST_P(CommandParameter, IsReadAsANumber)
{
    const Parameters given{{"projectWorkType", GetParam().value}};
    Parameters parameters = given;
    EXPECT_THAT(
        journalOf([&] { link.controller.executeCommand(anyHandle, "Project", parameters); }),
        Contains(std::string("Project(device, ") + GetParam().number + ")"));
    EXPECT_EQ(parameters, given);
}

TEST_P(CommandParameter, IsReadAsAFlag)
{
    const Parameters given{{"bIRLaserEnable", GetParam().value}};
    Parameters parameters = given;
    EXPECT_THAT(
        journalOf([&] { link.controller.executeCommand(anyHandle, "EnableIRLaser", parameters); }),
        Contains(std::string("EnableIRLaser(device, ") + GetParam().flag + ")"));
    EXPECT_EQ(parameters, given);
}

INSTANTIATE_TEST_SUITE_P(
    OfAnyType, CommandParameter,
    ::testing::Values(
        Reading{"Negative", -1, "-1", "true"}, Reading{"Zero", 0, "0", "false"},
        Reading{"LargestInteger", std::numeric_limits<int>::max(), "2147483647", "true"},
        Reading{"MoreThan32Bits", qint64(5000000000), "705032704", "true"},
        Reading{"Fraction", 2.6, "3", "true"}, Reading{"True", true, "1", "true"},
        Reading{"NumberInAText", "12", "12", "true"}, Reading{"AnyText", "twelve", "0", "true"},
        Reading{"FalseInAText", "false", "0", "false"}, Reading{"EmptyText", "", "0", "false"},
        Reading{"NumberInBytes", QByteArray("12"), "12", "true"},
        Reading{"List", QVariantList{1, 2}, "0", "false"},
        Reading{"Map", QVariantMap{{"a", 1}}, "0", "false"},
        Reading{"Invalid", QVariant(), "0", "false"}),
    rowName);

TEST_F(CommandTable, CrossesTheLastTwoStrobeDutyRatios)
{
    EXPECT_THAT(run("SetStrobeDutioRatio",
                    {{"TexDutioRatio", 1}, {"dutioRatioWithTex", 2}, {"dutioRatio", 3}}),
                Contains("SetStrobeDutioRatio(device, 1, 3, 2)"));
}

TEST_F(CommandTable, LogsASwitchedOffBlueLaserInTheWordsOfEachChannel)
{
    EXPECT_THAT(
        run("EnableBlueLaser", {{"laserWorkMode", 4}, {"bLaserEnable", false}}),
        ElementsAre(firstLine("EnableBlueLaser", R"(QMap(("bLaserEnable", QVariant(bool, false)))"
                                                 R"(("laserWorkMode", QVariant(int, 4))))"),
                    debug("executeCommand", " laserWorkMode: 4 bLaserEnable: false"),
                    "EnableBlueLaser(device, 4, false)",
                    glogInfo(" EnableBlueLaser | laserWorkMode: 4 bLaserEnable: 0 retSatus: 7")));
}

TEST_F(CommandTable, LogsASwitchedOffInfraredLaserInTheWordsOfEachChannel)
{
    EXPECT_THAT(run("EnableIRLaser", {{"bIRLaserEnable", false}}),
                ElementsAre(firstLine("EnableIRLaser",
                                      R"(QMap(("bIRLaserEnable", QVariant(bool, false))))"),
                            debug("executeCommand", " bIRLaserEnable: false"),
                            "EnableIRLaser(device, false)",
                            glogInfo(" bIRLaserEnable: 0 retSatus: 7")));
}

TEST_F(CommandTable, UnknownNamesRunNothingAndSucceed)
{
    for (const QString &name : {QString(), QString("Projec"), QString("Projects"),
                                QString(" Project"), QString("getGain"), QString("工作")}) {
        EXPECT_THAT(run(name, {{"projectWorkType", 1}}),
                    ElementsAre(firstLine(name.toStdString(),
                                          R"(QMap(("projectWorkType", QVariant(int, 1))))")));
        EXPECT_EQ(code, Success);
    }
}

TEST_F(CommandTable, NameThatGoesOnAfterAZeroByteIsUnknownAndLoggedWhole)
{
    const QString name = QString::fromLatin1("Project\0!", 9);
    EXPECT_THAT(run(name, {}), ElementsAre(firstLine(name.toStdString(), "QMap()")));
    EXPECT_EQ(code, Success);
}

TEST_F(CommandTable, LogsTextsInsideTheMapInQuotesAndTheNameWithout)
{
    EXPECT_EQ(
        run("no \"such\" command", {{"a key", "a value"}, {"b", QVariant()}}).front(),
        firstLine("no \"such\" command",
                  R"(QMap(("a key", QVariant(QString, "a value"))("b", QVariant(Invalid))))"));
}

TEST_F(CommandTable, DoesNotReadKeysOfAnotherCase)
{
    Parameters parameters{{"ProjectWorkType", 5}};
    EXPECT_THAT(journalOf([&] { controller.executeCommand(anyHandle, "Project", parameters); }),
                Contains("Project(device, 0)"));
    EXPECT_EQ(parameters, Parameters({{"ProjectWorkType", 5}, {"projectWorkType", QVariant()}}));
}

TEST_F(CommandTable, LeavesKeysOfOtherCommandsAlone)
{
    const Parameters given{{"disStauts", 1}, {"dutioRatio", 2}};
    Parameters parameters = given;
    journalOf([&] { controller.executeCommand(anyHandle, "SetDistanceIndicate", parameters); });
    EXPECT_EQ(parameters, given);
}

} // namespace
