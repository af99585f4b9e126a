#include "commands/DeviceSetup.h"

#include "output/Json.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>

namespace KvSyncCli {

namespace {

bool isOn(const NamedValue &flag)
{
    if (flag.value != QLatin1String("on") && flag.value != QLatin1String("off"))
        throw KvSyncTool::Exception(
            InvalidParameter,
            QStringLiteral("The flag \"%1\" is on or off, not \"%2\"").arg(flag.name, flag.value));
    return flag.value == QLatin1String("on");
}

QVariantMap flagsOf(const Illumination &illumination)
{
    QVariantMap flags;
    for (const NamedValue &flag : namedValues(illumination.switches))
        flags.insert(flag.name, isOn(flag));
    return flags;
}

} // namespace

QVariantMap DeviceSetup::asked() const
{
    QVariantMap all;
    if (!settings.empty())
        all.insert(QStringLiteral("set"), jsonValues(settings));
    if (turntableDegrees)
        all.insert(QStringLiteral("turntableDegrees"), *turntableDegrees);
    return all;
}

QVariantMap Illumination::parameters() const
{
    QVariantMap all;
    if (!switches.empty())
        all.insert(QStringLiteral("switch"), flagsOf(*this));
    if (!pattern.isEmpty())
        all.insert(QStringLiteral("pattern"), pattern);
    return all;
}

void addSettingOption(CLI::App &command, DeviceSetup &setup)
{
    addRepeatedText(command, "--set", setup.settings,
                    "Set NAME=VALUE first, as the command set does; may be repeated");
}

void addSetupOptions(CLI::App &command, DeviceSetup &setup)
{
    addSettingOption(command, setup);
    command.add_option("--turntable", setup.turntableDegrees,
                       "Turn the simulated scanner's object to this angle first, in degrees");
}

void addIlluminationOptions(CLI::App &command, Illumination &illumination,
                            const std::string &withoutPattern)
{
    addRepeatedText(command, "--switch", illumination.switches,
                    "Switch NAME=on or NAME=off: infraredLaser, blueLaser; may be repeated");
    refuseEmpty(addText(command, "--project", illumination.pattern,
                        "Project off, flat, speckle or stripes" + withoutPattern));
}

// In the order of the command line: a later value may depend on an earlier one.
void applySetup(ServiceSession &session, const DeviceSetup &setup)
{
    for (const NamedValue &setting : namedValues(setup.settings))
        session.callDevice(QStringLiteral("setProperty"),
                           {setting.name, parseJson(setting.value, setting.name)});
    if (setup.turntableDegrees)
        session.callDevice(QStringLiteral("turntableRotate"),
                           {QStringLiteral("simulator"),
                            QVariantMap{{QStringLiteral("degrees"), *setup.turntableDegrees}},
                            false});
}

void applyIllumination(ServiceSession &session, const Illumination &illumination)
{
    const QVariantMap flags = flagsOf(illumination);
    for (auto flag = flags.begin(); flag != flags.end(); ++flag)
        session.callDevice(QStringLiteral("setFlagBitInterface"), {flag.key(), flag.value()});
    if (!illumination.pattern.isEmpty())
        session.callDevice(QStringLiteral("project"), {illumination.pattern});
}

} // namespace KvSyncCli
