#include "Commands.h"

#include "Parameters.h"

#include <algorithm>
#include <utility>

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

constexpr std::pair<int, int> percent{0, 100};

const CommandInfo *findCommand(const QString &name)
{
    const std::vector<CommandInfo> &commands = linkCommands();
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const CommandInfo &each) {
        return name == QLatin1String(each.name);
    });
    return found == commands.end() ? nullptr : &*found;
}

} // namespace

// The spellings "Dutio" and "disStauts" are the link's own. Ranges are the scanner's, and not all
// of them are known.
// clang-format off
const std::vector<CommandInfo> &linkCommands()
{
    static const std::vector<CommandInfo> commands = {
        {"Project", "map", {{"projectWorkType", "int"}}},
        {"SetStrobeControlledByTrigger", "map", {{"controlRoute", "int"}, {"strobeState", "int"}}},
        {"EnableBlueLaser", "map", {{"laserWorkMode", "int"}, {"bLaserEnable", "bool"}}},
        {"EnableIRLaser", "map", {{"bIRLaserEnable", "bool"}}},
        {"SetVideoTriggerPeriod", "map", {{"triggerPeriod", "int", "ms"}}},
        {"EnableVideoTrigger", "map", {{"cameraTriggerMode", "int"}, {"bEnable", "bool"}}},
        {"SetStrobeDutioRatio", "map", {{"TexDutioRatio", "int", "%", percent},
                                        {"dutioRatioWithTex", "int", "%", percent},
                                        {"dutioRatio", "int", "%", percent}}},
        {"SetLaserLineDutioRatio", "map", {{"dutioRatio", "int", "%", percent}}},
        {"SetProjectDutioRatio", "map", {{"dutioRatio", "int", "%", percent}}},
        {"SetIRLaserDutioRatio", "map", {{"dutioRatio", "int", "%", percent}}},
        {"SetDistanceIndicate", "map", {{"disStauts", "int"}}},
    };
    return commands;
}
// clang-format on

bool isLinkCommand(const QString &name)
{
    return findCommand(name) != nullptr;
}

QVariantMap runLinkCommand(DirectLink &link, const QString &name, const QVariantMap &parameters)
{
    Parameters(parameters)
        .allowOnly(QStringLiteral("The command \"%1\"").arg(name),
                   namesOf(findCommand(name)->parameters));
    QMap<QString, QVariant> used = parameters;
    link.run(QStringLiteral("The scanner refuses the command \"%1\"").arg(name),
             [&](DeviceController &c) { return c.executeCommand(DirectLink::handle, name, used); });
    return used;
}

} // namespace Scanner
