#include "Expectation.h"

namespace KvSyncTest {

namespace {

using Parameters = QMap<QString, QVariant>;

/// A command, the map as the log shows it, what follows the first line, and the calls that may be
/// refused.
Expectation command(const std::string &name, const Parameters &parameters,
                    const std::string &mapText, const Journal &calls,
                    const std::vector<Refusal> &refusals)
{
    Journal journal{debug("executeCommand",
                          "cmdName:" + name + ",value:" + mapText + ", func default success")};
    journal.insert(journal.end(), calls.begin(), calls.end());
    const auto run = [name, parameters](KvSyncCore::DeviceController &controller) {
        Parameters given = parameters;
        return outcome(controller.executeCommand(anyHandle, QString::fromStdString(name), given));
    };
    return {"executeCommand_" + name, run, "Success", journal, refusals.back().outcome, refusals};
}

/// A command of one library call that logs nothing more.
Expectation plainCommand(const std::string &name, const Parameters &parameters,
                         const std::string &mapText, const std::string &arguments)
{
    return command(name, parameters, mapText, {name + "(device, " + arguments + ")"},
                   {{name, "CommandFailed", {}}});
}

Expectation laserCommand(const std::string &name, const Parameters &parameters,
                         const std::string &mapText, const std::string &arguments,
                         const std::string &lineBefore, const std::string &lineAfter)
{
    const std::string firstLine =
        debug("executeCommand", "cmdName:" + name + ",value:" + mapText + ", func default success");
    const std::string before = debug("executeCommand", lineBefore);
    const std::string call = name + "(device, " + arguments + ")";
    return command(
        name, parameters, mapText, {before, call, glogInfo(lineAfter + "7")},
        {{name, "CommandFailed", Journal{firstLine, before, call, glogInfo(lineAfter + "3")}}});
}

} // namespace

std::vector<Expectation> commandExpectations()
{
    return {
        command("startScan", {{"bEnableColor", true}, {"colorMode", 5}, {"iPeriod", 33}},
                R"(QMap(("bEnableColor", QVariant(bool, true))("colorMode", QVariant(int, 5)))"
                R"(("iPeriod", QVariant(int, 33))))",
                {"SetStrobeControlledByTrigger(device, 2, 4)", "SetDistanceIndicate(device, 3)",
                 "Project(device, 2)", "EnableIRLaser(device, false)",
                 glogInfo("startScan start | bEnableColor: , 1 colorMode: 5 iPeriod: 33"),
                 "EnableVideoTrigger(device, 5, true)", "SetVideoTriggerPeriod(device, 33)"},
                {{"SetStrobeControlledByTrigger", "Success", {}},
                 {"SetDistanceIndicate", "Success", {}},
                 {"Project", "Success", {}},
                 {"EnableIRLaser", "Success", {}},
                 {"EnableVideoTrigger", "Success", {}},
                 {"SetVideoTriggerPeriod", "Success", {}}}),
        command("stopScan", {}, "QMap()",
                {"EnableVideoTrigger(device, 0, false)", "Project(device, 0)"},
                {{"EnableVideoTrigger", "Success", {}}, {"Project", "Success", {}}}),
        plainCommand("Project", {{"projectWorkType", 11}},
                     R"(QMap(("projectWorkType", QVariant(int, 11))))", "11"),
        plainCommand("SetStrobeControlledByTrigger", {{"controlRoute", 12}, {"strobeState", 13}},
                     R"(QMap(("controlRoute", QVariant(int, 12)))"
                     R"(("strobeState", QVariant(int, 13))))",
                     "12, 13"),
        laserCommand("EnableBlueLaser", {{"laserWorkMode", 14}, {"bLaserEnable", true}},
                     R"(QMap(("bLaserEnable", QVariant(bool, true)))"
                     R"(("laserWorkMode", QVariant(int, 14))))",
                     "14, true", " laserWorkMode: 14 bLaserEnable: true",
                     " EnableBlueLaser | laserWorkMode: 14 bLaserEnable: 1 retSatus: "),
        laserCommand("EnableIRLaser", {{"bIRLaserEnable", true}},
                     R"(QMap(("bIRLaserEnable", QVariant(bool, true))))", "true",
                     " bIRLaserEnable: true", " bIRLaserEnable: 1 retSatus: "),
        plainCommand("SetVideoTriggerPeriod", {{"triggerPeriod", 15}},
                     R"(QMap(("triggerPeriod", QVariant(int, 15))))", "15"),
        plainCommand("EnableVideoTrigger", {{"cameraTriggerMode", 16}, {"bEnable", true}},
                     R"(QMap(("bEnable", QVariant(bool, true)))"
                     R"(("cameraTriggerMode", QVariant(int, 16))))",
                     "16, true"),
        // The last two cross on their way to the scanner.
        plainCommand("SetStrobeDutioRatio",
                     {{"TexDutioRatio", 1}, {"dutioRatioWithTex", 2}, {"dutioRatio", 3}},
                     R"(QMap(("TexDutioRatio", QVariant(int, 1))("dutioRatio", QVariant(int, 3)))"
                     R"(("dutioRatioWithTex", QVariant(int, 2))))",
                     "1, 3, 2"),
        plainCommand("SetLaserLineDutioRatio", {{"dutioRatio", 17}},
                     R"(QMap(("dutioRatio", QVariant(int, 17))))", "17"),
        plainCommand("SetProjectDutioRatio", {{"dutioRatio", 18}},
                     R"(QMap(("dutioRatio", QVariant(int, 18))))", "18"),
        plainCommand("SetIRLaserDutioRatio", {{"dutioRatio", 19}},
                     R"(QMap(("dutioRatio", QVariant(int, 19))))", "19"),
        plainCommand("SetDistanceIndicate", {{"disStauts", 20}},
                     R"(QMap(("disStauts", QVariant(int, 20))))", "20"),
    };
}

} // namespace KvSyncTest
