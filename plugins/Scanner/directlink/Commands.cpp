#include "Commands.h"

#include "Parameters.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <iterator>

namespace Scanner {

using KvSyncCore::DeviceController;

namespace {

struct Command
{
    QString name;
    QStringList keys;
};

// The spellings "Dutio" and "disStauts" are the link's own.
// clang-format off
const Command *findCommand(const QString &name)
{
    static const Command commands[] = {
        {"Project", {"projectWorkType"}},
        {"SetStrobeControlledByTrigger", {"controlRoute", "strobeState"}},
        {"EnableBlueLaser", {"laserWorkMode", "bLaserEnable"}},
        {"EnableIRLaser", {"bIRLaserEnable"}},
        {"SetVideoTriggerPeriod", {"triggerPeriod"}},
        {"EnableVideoTrigger", {"cameraTriggerMode", "bEnable"}},
        {"SetStrobeDutioRatio", {"TexDutioRatio", "dutioRatioWithTex", "dutioRatio"}},
        {"SetLaserLineDutioRatio", {"dutioRatio"}},
        {"SetProjectDutioRatio", {"dutioRatio"}},
        {"SetIRLaserDutioRatio", {"dutioRatio"}},
        {"SetDistanceIndicate", {"disStauts"}},
    };
    const auto *const found = std::find_if(std::begin(commands), std::end(commands),
                                           [&](const Command &each) { return each.name == name; });
    return found == std::end(commands) ? nullptr : found;
}
// clang-format on

} // namespace

bool isLinkCommand(const QString &name)
{
    return findCommand(name) != nullptr;
}

QVariantMap runLinkCommand(DirectLink &link, const QString &name, const QVariantMap &parameters)
{
    Parameters(parameters)
        .allowOnly(QStringLiteral("The command \"%1\"").arg(name), findCommand(name)->keys);
    QMap<QString, QVariant> used = parameters;
    link.run(QStringLiteral("The scanner refuses the command \"%1\"").arg(name),
             [&](DeviceController &c) { return c.executeCommand(DirectLink::handle, name, used); });
    return used;
}

} // namespace Scanner
