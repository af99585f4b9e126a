#include "DeviceCommand.h"
#include "Preparation.h"
#include "session/FrameCapture.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

struct DeviceCaptureOptions
{
    CaptureOptions capture;
    Preparation preparation;
};

void runCapture(const DeviceCaptureOptions &options, Context &context)
{
    captureFrames(context, options.capture,
                  {[&](OpenScanner &device) { prepare(device, options.preparation); },
                   {},
                   options.preparation.told()});
}

} // namespace

void addDeviceCaptureCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<DeviceCaptureOptions>();
    CLI::App *const command =
        device.add_subcommand("capture", "Take frames with a camera and write the images");
    command->footer(
        "Writes the same files as scan does. Frames have the camera's own numbers, from 1; a gap\n"
        "between them is a dropped frame.");
    addCaptureOptions(*command, options->capture);
    command->add_option("--camera", options->capture.camera,
                        "The sensor, from 0; without it, all that the camera has");
    command->add_flag("--color", options->capture.color, "Take the images in color");
    addSettingOption(*command, options->preparation);
    addPluginDeviceOptions(*command, options->capture.device);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runCapture(*options, context); };
    });
}

} // namespace KvSyncCli
