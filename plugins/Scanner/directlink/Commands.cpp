#include "Commands.h"

#include "Errors.h"

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

void checkKeys(const Command &command, const QVariantMap &parameters)
{
    for (auto entry = parameters.begin(); entry != parameters.end(); ++entry) {
        if (!command.keys.contains(entry.key()))
            raise(InvalidParameter,
                  QStringLiteral("The command \"%1\" has no parameter \"%2\", but %3")
                      .arg(command.name, entry.key(), command.keys.join(QStringLiteral(", "))));
    }
}

} // namespace

bool isLinkCommand(const QString &name)
{
    return findCommand(name) != nullptr;
}

QVariantMap runLinkCommand(DirectLink &link, const QString &name, const QVariantMap &parameters)
{
    checkKeys(*findCommand(name), parameters);
    QMap<QString, QVariant> used = parameters;
    check(link.call([&](DeviceController &c) {
        return c.executeCommand(DirectLink::handle, name, used);
    }),
          QStringLiteral("The scanner refuses the command \"%1\"").arg(name));
    return used;
}

} // namespace Scanner
