// "scanner command".
#include "Json.h"
#include "NamedValue.h"
#include "OpenScanner.h"
#include "ScannerCommand.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <vector>

namespace KvSyncCli {

namespace {

struct LinkOptions
{
    DeviceOptions scanner;
    std::string name;
    std::vector<std::string> parameters;
};

QVariantMap parametersFrom(const std::vector<std::string> &texts)
{
    QVariantMap parameters;
    for (const NamedValue &parameter : namedValues(texts))
        parameters.insert(parameter.name, parseJson(parameter.value, parameter.name));
    return parameters;
}

void runLink(const LinkOptions &options, Context &context)
{
    const QVariantMap parameters = parametersFrom(options.parameters);
    OpenScanner scanner(context, options.scanner);
    const QVariant answer = scanner.execute(fromArgument(options.name), {parameters});
    scanner.close();
    print(context, options.scanner, QStringLiteral("%1 done\n").arg(fromArgument(options.name)),
          {{QStringLiteral("command"), fromArgument(options.name)},
           {QStringLiteral("answer"), toJson(answer, Bytes::Summary)}});
}

} // namespace

void addScannerLinkCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<LinkOptions>();
    CLI::App *const command = scanner.add_subcommand("command", "Run a command of the direct link");
    command->footer(
        "Commands and parameters; those that are missing are sent as 0 or false:\n"
        "  startScan                     periodMs, color, colorMode\n"
        "  stopScan\n"
        "  Project                       projectWorkType\n"
        "  SetStrobeControlledByTrigger  controlRoute, strobeState\n"
        "  EnableBlueLaser               laserWorkMode, bLaserEnable\n"
        "  EnableIRLaser                 bIRLaserEnable\n"
        "  SetVideoTriggerPeriod         triggerPeriod\n"
        "  EnableVideoTrigger            cameraTriggerMode, bEnable\n"
        "  SetStrobeDutioRatio           TexDutioRatio, dutioRatioWithTex, dutioRatio\n"
        "  SetLaserLineDutioRatio        dutioRatio\n"
        "  SetProjectDutioRatio          dutioRatio\n"
        "  SetIRLaserDutioRatio          dutioRatio\n"
        "  SetDistanceIndicate           disStauts\n\n"
        "Example: kvsync scanner command EnableBlueLaser laserWorkMode=1 bLaserEnable=true");
    command->add_option("NAME", options->name, "Name of the command")->required();
    command->add_option("PARAMETERS", options->parameters, "KEY=VALUE each, VALUE as JSON");
    addScannerOptions(*command, options->scanner);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runLink(*options, context); };
    });
}

} // namespace KvSyncCli
