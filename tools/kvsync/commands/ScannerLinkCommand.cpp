// "scanner command".
#include "commands/Options.h"
#include "output/Json.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

struct LinkOptions
{
    DeviceOptions scanner;
    QString name;
    QStringList parameters;
};

void runLink(const LinkOptions &options, Context &context)
{
    const QVariantMap parameters = jsonValues(options.parameters);
    ServiceSession session(context.directories, context.interruption);
    session.open(options.scanner.address(context.directories));
    const QVariant answer = session.execute(options.name, {parameters});
    session.close();
    print(context, options.scanner.json, QStringLiteral("%1 done\n").arg(options.name),
          {{QStringLiteral("command"), options.name},
           {QStringLiteral("answer"), toJson(answer, Bytes::Summary)}});
}

} // namespace

void addScannerLinkCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<LinkOptions>();
    CLI::App *const command = scanner.add_subcommand("command", "Run a command of the direct link");
    command->footer(
        "Commands and parameters; one that is missing is sent as 0 or false, but startScan\n"
        "keeps what is set:\n"
        "  startScan                     periodMs, color, colorMode, pattern, switch\n"
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
    addText(*command, "NAME", options->name, "Name of the command")->required();
    addFurtherTexts(*command, "PARAMETERS", options->parameters, "KEY=VALUE each, VALUE as JSON");
    addScannerOptions(*command, options->scanner);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runLink(*options, context); };
    });
}

} // namespace KvSyncCli
