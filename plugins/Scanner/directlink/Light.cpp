#include "Light.h"

#include "NamedRow.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>

namespace Scanner {

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
const Flag flags[] = {
    {Text("infraredLaser"), Text("EnableIRLaser"), Text(), 0, Text("bIRLaserEnable")},
    {Text("blueLaser"), Text("EnableBlueLaser"), Text("laserWorkMode"), 0, Text("bLaserEnable")},
    {Text("trigger"), Text("EnableVideoTrigger"), Text("cameraTriggerMode"), 1, Text("bEnable")},
};

struct Pattern
{
    QLatin1String name;
    ProjectorSpace::MajorPatternType type;
};

const Pattern patterns[] = {
    {Text("off"), ProjectorSpace::NoPattern},
    {Text("stripes"), ProjectorSpace::StripePattern},
    {Text("speckle"), ProjectorSpace::SpecklePattern},
    {Text("cross"), ProjectorSpace::CrossPattern},
};
// clang-format on

} // namespace

void switchFlag(DirectLink &link, const QString &name, bool on)
{
    const Flag &flag = rowNamed(flags, name, QStringLiteral("flag"));
    QMap<QString, QVariant> parameters{{flag.flagKey, on}};
    if (!flag.modeKey.isEmpty())
        parameters.insert(flag.modeKey, flag.mode);
    check(link.call([&](DeviceController &c) {
        return c.executeCommand(DirectLink::handle, flag.command, parameters);
    }),
          QStringLiteral("The scanner refuses to switch \"%1\"").arg(name));
}

void projectPattern(DirectLink &link, const QString &name)
{
    const Pattern &pattern = rowNamed(patterns, name, QStringLiteral("pattern"));
    check(link.call([&](DeviceController &c) {
        return c.project(DirectLink::handle, pattern.type, ProjectorSpace::DefaultVariant);
    }),
          QStringLiteral("The scanner refuses to project \"%1\"").arg(name));
}

void switchLightOff(DirectLink &link)
{
    switchFlag(link, QStringLiteral("infraredLaser"), false);
    switchFlag(link, QStringLiteral("blueLaser"), false);
    projectPattern(link, QStringLiteral("off"));
}

} // namespace Scanner
