#include "Command.h"
#include "Preparation.h"
#include "session/FrameCapture.h"
#include "session/Simulator.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>

#include <memory>

namespace KvSyncCli {

namespace {

struct ScanOptions
{
    CaptureOptions capture;
    Preparation preparation;
    Light light;
    std::string plan;
};

void runScan(const ScanOptions &options, Context &context)
{
    const QVariantMap told = options.preparation.told();
    if (options.capture.periodMs &&
        told.value(QStringLiteral("set")).toMap().contains(QStringLiteral("periodMs")))
        throw KvSyncTool::Exception(
            InvalidParameter, QStringLiteral("--period and --set periodMs contradict each other"));
    if (!options.plan.empty())
        useFaultPlan(fromArgument(options.plan));
    captureFrames(context, options.capture,
                  {[&](OpenScanner &scanner) { prepare(scanner, options.preparation); },
                   options.light.parameters(), told});
}

} // namespace

void addScanCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<ScanOptions>();
    CLI::App *const command =
        app.add_subcommand("scan", "Scan with the directly linked scanner and write the images");
    command->footer(
        "Writes frame-NNNNN-camera-C.png for every image as soon as it comes, scan.json (what was\n"
        "asked for, what came and when, and why the scan ended) and contact-sheet.png (a row a\n"
        "camera, a column a frame). Frame numbers begin at 1; a gap between them is a dropped\n"
        "frame. --json prints scan.json.");
    addCaptureOptions(*command, options->capture);
    command->add_flag("--color", options->capture.color, "Scan with the color camera too");
    refuseEmpty(command->add_option("--plan", options->plan,
                                    "Fault plan for the simulated scanner, a JSON file"));
    addPreparationOptions(*command, options->preparation);
    addLightOptions(*command, options->light, "; without it, a scan projects speckle");
    addScannerOptions(*command, options->capture.device);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runScan(*options, context); };
    });
}

} // namespace KvSyncCli
