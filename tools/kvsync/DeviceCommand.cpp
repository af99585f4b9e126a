#include "DeviceCommand.h"

#include <CLI/CLI.hpp>

namespace KvSyncCli {

namespace {

constexpr void (*addCommands[])(CLI::App &device, Command &chosen) = {
    addDeviceListCommand, addDeviceInfoCommand,   addDeviceGetCommand,
    addDeviceSetCommand,  addDeviceRotateCommand, addDeviceCaptureCommand,
};

} // namespace

void addDeviceCommand(CLI::App &app, Command &chosen)
{
    CLI::App *const device =
        app.add_subcommand("device", "Ask, set and try out devices of device plug-ins");
    device->require_subcommand(1);
    device->footer("Every command opens the device, does its work and closes it. A device that is\n"
                   "software alone lives as long as the command: what was set is gone with it.");
    for (const auto add : addCommands)
        add(*device, chosen);
}

} // namespace KvSyncCli
