#include "Controls.h"

#include "Errors.h"

#include <QtCore/QVariant>

namespace Scanner::DirectLink {

using KvSyncCore::DeviceController;

namespace {

struct Flag
{
    QLatin1String name;
    QLatin1String command;
    QLatin1String modeKey; ///< empty: the command has no mode
    int mode;
    QLatin1String flagKey;
};

using Text = QLatin1String;

// clang-format off
const Flag lasers[] = {
    {Text("infraredLaser"), Text("EnableIRLaser"), Text(), 0, Text("bIRLaserEnable")},
    {Text("blueLaser"), Text("EnableBlueLaser"), Text("laserWorkMode"), 0, Text("bLaserEnable")},
};

const Flag flags[] = {
    lasers[0],
    lasers[1],
    {Text("trigger"), Text("EnableVideoTrigger"), Text("cameraTriggerMode"), 1, Text("bEnable")},
};

struct Pattern
{
    QLatin1String name;
    ProjectorSpace::MajorPatternType type;
};

const Pattern patterns[] = {
    {Text("off"), ProjectorSpace::NoPattern},
    {Text("flat"), ProjectorSpace::FlatPattern},
    {Text("speckle"), ProjectorSpace::SpecklePattern},
    {Text("stripes"), ProjectorSpace::StripePattern},
};
// clang-format on

const Pattern &patternNamed(const QString &name)
{
    return rowNamed(patterns, name, QStringLiteral("pattern"));
}

ErrorCode set(DeviceController &controller, const Flag &flag, bool on)
{
    QMap<QString, QVariant> parameters{{flag.flagKey, on}};
    if (!flag.modeKey.isEmpty())
        parameters.insert(flag.modeKey, flag.mode);
    return controller.executeCommand(Connection::handle, flag.command, parameters);
}

} // namespace

void switchFlag(Connection &link, const QString &name, bool on)
{
    const Flag &flag = rowNamed(flags, name, QStringLiteral("flag"));
    link.run(QStringLiteral("The scanner refuses to switch \"%1\"").arg(name),
             [&](DeviceController &c) { return set(c, flag, on); });
}

void projectPattern(Connection &link, const QString &name)
{
    const Pattern &pattern = patternNamed(name);
    link.run(QStringLiteral("The scanner refuses to project \"%1\"").arg(name),
             [&](DeviceController &c) {
                 return c.project(Connection::handle, pattern.type, ProjectorSpace::DefaultVariant);
             });
}

void switchLightOff(Connection &link)
{
    for (const Flag &laser : lasers)
        switchFlag(link, laser.name, false);
    projectPattern(link, QStringLiteral("off"));
}

void switchLasersOff(DeviceController &controller)
{
    for (const Flag &laser : lasers)
        set(controller, laser, false);
}

ScanLight ScanLight::from(const Parameters &parameters)
{
    ScanLight light;
    const QVariantMap switches = parameters.map(QStringLiteral("switch"));
    light.asked = parameters.has(QStringLiteral("pattern")) || !switches.isEmpty();
    if (parameters.has(QStringLiteral("pattern"))) {
        light.pattern = parameters.text(QStringLiteral("pattern"));
        patternNamed(light.pattern);
    }
    for (auto entry = switches.begin(); entry != switches.end(); ++entry) {
        rowNamed(lasers, entry.key(), QStringLiteral("laser"));
        light.switches.insert(entry.key(),
                              flagFrom(entry.value(), QStringLiteral("\"%1\"").arg(entry.key())));
    }
    return light;
}

void ScanLight::apply(Connection &link) const
{
    projectPattern(link, pattern);
    for (auto laser = switches.begin(); laser != switches.end(); ++laser)
        switchFlag(link, laser.key(), laser.value());
}

ErrorCode ScanLight::end(DeviceController &controller) const
{
    ErrorCode first = Success;
    for (const Flag &laser : lasers) {
        const ErrorCode result =
            switches.value(laser.name, false) ? set(controller, laser, false) : Success;
        first = first == Success ? result : first;
    }
    return first;
}

} // namespace Scanner::DirectLink
