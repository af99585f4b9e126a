#include "Command.h"
#include "Environment.h"
#include "FrameCapture.h"
#include "Preparation.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

struct ScanOptions
{
    CaptureOptions capture;
    Preparation preparation;
    std::string plan;
};

constexpr int firstFrame = 1;

void runScan(const ScanOptions &options, Context &context)
{
    if (!options.plan.empty())
        useFaultPlan(fromArgument(options.plan));
    captureFrames(context, options.capture, firstFrame,
                  [&](OpenScanner &scanner) { prepare(scanner, options.preparation); });
}

} // namespace

void addScanCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<ScanOptions>();
    CLI::App *const command =
        app.add_subcommand("scan", "Scan with the directly linked scanner and write the images");
    command->footer(
        "Writes frame-NNNNN-camera-C.png for every image and contact-sheet.png (a row a camera, a\n"
        "column a frame). Frame numbers begin at 1; a gap between them is a dropped frame. The\n"
        "summary tells the SHA-256 of every image's pixels.");
    addCaptureOptions(*command, options->capture);
    command->add_flag("--color", options->capture.color, "Scan with the colour camera too");
    command->add_option("--plan", options->plan,
                        "Fault plan for the simulated scanner, a JSON file");
    addPreparationOptions(*command, options->preparation);
    addScannerOptions(*command, options->capture.device);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runScan(*options, context); };
    });
}

} // namespace KvSyncCli
