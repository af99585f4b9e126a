#include "Preparation.h"

#include "Json.h"
#include "NamedValue.h"

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

QVariantMap settingsOf(const Preparation &preparation)
{
    QVariantMap settings;
    for (const NamedValue &setting : namedValues(preparation.settings))
        settings.insert(setting.name, parseJson(setting.value, setting.name));
    return settings;
}

QVariantMap flagsOf(const Light &light)
{
    QVariantMap flags;
    for (const NamedValue &flag : namedValues(light.flags))
        flags.insert(flag.name, isOn(flag));
    return flags;
}

} // namespace

QVariantMap Preparation::told() const
{
    QVariantMap all;
    if (!settings.empty())
        all.insert(QStringLiteral("set"), settingsOf(*this));
    if (turntableDegrees)
        all.insert(QStringLiteral("turntableDegrees"), *turntableDegrees);
    return all;
}

QVariantMap Light::parameters() const
{
    QVariantMap all;
    if (!flags.empty())
        all.insert(QStringLiteral("switch"), flagsOf(*this));
    if (!pattern.empty())
        all.insert(QStringLiteral("pattern"), fromArgument(pattern));
    return all;
}

void addSettingOption(CLI::App &command, Preparation &preparation)
{
    command
        .add_option("--set", preparation.settings,
                    "Set NAME=VALUE first, as the command set does; may be repeated")
        ->allow_extra_args(false);
}

void addPreparationOptions(CLI::App &command, Preparation &preparation)
{
    addSettingOption(command, preparation);
    command.add_option("--turntable", preparation.turntableDegrees,
                       "Turn the simulated scanner's object to this angle first, in degrees");
}

void addLightOptions(CLI::App &command, Light &light, const std::string &withoutPattern)
{
    command
        .add_option("--switch", light.flags,
                    "Switch NAME=on or NAME=off: infraredLaser, blueLaser; may be repeated")
        ->allow_extra_args(false);
    refuseEmpty(command.add_option("--project", light.pattern,
                                   "Project off, flat, speckle or stripes" + withoutPattern));
}

// In the order of the command line: a later value may depend on an earlier one.
void prepare(OpenScanner &scanner, const Preparation &preparation)
{
    for (const NamedValue &setting : namedValues(preparation.settings))
        scanner.call(QStringLiteral("setProperty"),
                     {setting.name, parseJson(setting.value, setting.name)});
    if (preparation.turntableDegrees)
        scanner.call(QStringLiteral("turntableRotate"),
                     {QStringLiteral("simulator"),
                      QVariantMap{{QStringLiteral("degrees"), *preparation.turntableDegrees}},
                      false});
}

void switchLight(OpenScanner &scanner, const Light &light)
{
    const QVariantMap flags = flagsOf(light);
    for (auto flag = flags.begin(); flag != flags.end(); ++flag)
        scanner.call(QStringLiteral("setFlagBitInterface"), {flag.key(), flag.value()});
    if (!light.pattern.empty())
        scanner.call(QStringLiteral("project"), {fromArgument(light.pattern)});
}

} // namespace KvSyncCli
