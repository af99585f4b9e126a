#include "ScannerHost.h"

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerCommand : public ScannerHost
{
protected:
    ScannerCommand() { open(); }

    void switchFlag(const QString &name, bool on)
    {
        call("setFlagBitInterface", {scannerHandle, name, on});
    }

    void project(const QString &pattern) { call("project", {scannerHandle, pattern}); }

    static void refuseNext(const std::string &function)
    {
        Simulator::script(function, Simulator::callCount(function) + 1, {3, {}});
    }
};

namespace {

/// One command of the direct link that runs by itself.
struct Row
{
    QString name;
    QVariantMap parameters;
    std::string call; ///< of the library
};

// clang-format off
const Row rows[] = {
    {"Project", {{"projectWorkType", 3}}, "Project(device, 3)"},
    {"SetStrobeControlledByTrigger", {{"controlRoute", 1}, {"strobeState", 2}},
     "SetStrobeControlledByTrigger(device, 1, 2)"},
    {"EnableBlueLaser", {{"laserWorkMode", 2}, {"bLaserEnable", true}},
     "EnableBlueLaser(device, 2, true)"},
    {"EnableIRLaser", {{"bIRLaserEnable", true}}, "EnableIRLaser(device, true)"},
    {"SetVideoTriggerPeriod", {{"triggerPeriod", 40}}, "SetVideoTriggerPeriod(device, 40)"},
    {"EnableVideoTrigger", {{"cameraTriggerMode", 1}, {"bEnable", true}},
     "EnableVideoTrigger(device, 1, true)"},
    {"SetStrobeDutioRatio", {{"TexDutioRatio", 1}, {"dutioRatioWithTex", 2}, {"dutioRatio", 3}},
     "SetStrobeDutioRatio(device, 1, 3, 2)"},
    {"SetLaserLineDutioRatio", {{"dutioRatio", 4}}, "SetLaserLineDutioRatio(device, 4)"},
    {"SetProjectDutioRatio", {{"dutioRatio", 5}}, "SetProjectDutioRatio(device, 5)"},
    {"SetIRLaserDutioRatio", {{"dutioRatio", 6}}, "SetIRLaserDutioRatio(device, 6)"},
    {"SetDistanceIndicate", {{"disStauts", 1}}, "SetDistanceIndicate(device, 1)"},
};
// clang-format on

std::string functionOf(const std::string &call)
{
    return call.substr(0, call.find('('));
}

} // namespace

TEST_F(ScannerCommand, EachOfTheDirectLinkReachesTheScannerAndAnswersWithItsParameters)
{
    for (const Row &row : rows) {
        Simulator::clearCalls();
        EXPECT_EQ(execute(row.name, {row.parameters}), QVariant(row.parameters));
        EXPECT_EQ(libraryCalls(functionOf(row.call)), std::vector<std::string>{row.call});
    }
}

TEST_F(ScannerCommand, EachThatTheScannerRefusesSaysSo)
{
    for (const Row &row : rows) {
        refuseNext(functionOf(row.call));
        expectThrows(CommandFailed,
                     QStringLiteral("The scanner refuses the command \"%1\"").arg(row.name),
                     [&] { execute(row.name, {row.parameters}); });
    }
}

TEST_F(ScannerCommand, MissingParametersAreSentAsZeroAndShownInTheAnswer)
{
    const QVariantMap answer = execute("Project").toMap();
    EXPECT_EQ(answer.keys(), QStringList{"projectWorkType"});
    EXPECT_EQ(libraryCalls("Project"), std::vector<std::string>{"Project(device, 0)"});
}

TEST_F(ScannerCommand, ParametersThatACommandDoesNotHaveAreTold)
{
    Simulator::clearCalls();
    expectThrows(InvalidParameter,
                 "The command \"EnableBlueLaser\" has no parameter \"mode\", but "
                 "laserWorkMode, bLaserEnable",
                 [&] {
                     execute("EnableBlueLaser", {QVariantMap{{"mode", 1}}});
                 });
    EXPECT_TRUE(Simulator::calls().empty());
}

TEST_F(ScannerCommand, NamesInOtherCaseAreUnknown)
{
    expectThrows(FunctionNotExist, "Scanner 1.0 does not serve the command \"project\"",
                 [&] { execute("project"); });
}

TEST_F(ScannerCommand, FlagsSwitchLasersAndTrigger)
{
    switchFlag("infraredLaser", true);
    switchFlag("blueLaser", true);
    switchFlag("trigger", false);
    EXPECT_EQ(libraryCalls("EnableIRLaser"),
              std::vector<std::string>{"EnableIRLaser(device, true)"});
    EXPECT_EQ(libraryCalls("EnableBlueLaser"),
              std::vector<std::string>{"EnableBlueLaser(device, 0, true)"});
    EXPECT_EQ(libraryCalls("EnableVideoTrigger"),
              std::vector<std::string>{"EnableVideoTrigger(device, 1, false)"});
}

TEST_F(ScannerCommand, FlagsThatAreUnknownOrRefusedAreTold)
{
    expectThrows(FunctionNotExist,
                 "There is no flag \"fan\", but infraredLaser, blueLaser, trigger",
                 [&] { switchFlag("fan", true); });
    refuseNext("EnableIRLaser");
    expectThrows(CommandFailed, "The scanner refuses to switch \"infraredLaser\"",
                 [&] { switchFlag("infraredLaser", true); });
}

TEST_F(ScannerCommand, PatternsAreProjectedByName)
{
    for (const QString &pattern : {QStringLiteral("off"), QStringLiteral("flat"),
                                   QStringLiteral("speckle"), QStringLiteral("stripes")})
        project(pattern);
    EXPECT_EQ(libraryCalls("Project"),
              (std::vector<std::string>{"Project(device, 0)", "Project(device, 1)",
                                        "Project(device, 2)", "Project(device, 3)"}));
}

TEST_F(ScannerCommand, PatternsThatAreUnknownOrRefusedAreTold)
{
    for (const QString &word : {QStringLiteral("cross"), QStringLiteral("Off"), QString()})
        expectThrows(
            FunctionNotExist,
            QStringLiteral("There is no pattern \"%1\", but off, flat, speckle, stripes").arg(word),
            [&] { project(word); });
    refuseNext("Project");
    expectThrows(ProjectorFailed, "The scanner refuses to project \"speckle\"",
                 [&] { project("speckle"); });
}

TEST_F(ScannerCommand, AResetOfTheLightSwitchesLasersAndProjectorOff)
{
    Simulator::clearCalls();
    call("resetInterface", {scannerHandle, "light"});
    std::vector<std::string> texts;
    for (const Simulator::Call &each : Simulator::calls())
        texts.push_back(Simulator::callText(each));
    EXPECT_EQ(texts, (std::vector<std::string>{"EnableIRLaser(device, false)",
                                               "EnableBlueLaser(device, 0, false)",
                                               "Project(device, 0)"}));
}
