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

} // namespace

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
    command
        .add_option("--switch", preparation.flags,
                    "Switch NAME=on or NAME=off first: infraredLaser, blueLaser; may be repeated")
        ->allow_extra_args(false);
    command.add_option("--project", preparation.pattern,
                       "Project off, stripes, speckle or cross first; a scan projects by itself");
    command.add_option("--turntable", preparation.turntableDegrees,
                       "Turn the simulated scanner's object to this angle first, in degrees");
}

void prepare(OpenScanner &scanner, const Preparation &preparation)
{
    for (const std::string &text : preparation.settings) {
        const NamedValue setting = splitNamedValue(fromArgument(text));
        scanner.call(QStringLiteral("setProperty"),
                     {setting.name, parseJson(setting.value, setting.name)});
    }
    for (const std::string &text : preparation.flags) {
        const NamedValue flag = splitNamedValue(fromArgument(text));
        scanner.call(QStringLiteral("setFlagBitInterface"), {flag.name, isOn(flag)});
    }
    if (!preparation.pattern.empty())
        scanner.call(QStringLiteral("project"), {fromArgument(preparation.pattern)});
    if (preparation.turntableDegrees)
        scanner.call(QStringLiteral("turntableRotate"),
                     {QStringLiteral("simulator"),
                      QVariantMap{{QStringLiteral("degrees"), *preparation.turntableDegrees}},
                      false});
}

} // namespace KvSyncCli
