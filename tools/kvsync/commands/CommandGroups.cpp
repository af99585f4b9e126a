// Which commands there are, and below which.
#include "commands/Command.h"

#include <CLI/CLI.hpp>

namespace KvSyncCli {

namespace {

constexpr AddCommand scannerCommands[] = {
    addScannerListCommand, addScannerInfoCommand, addScannerGetCommand,      addScannerSetCommand,
    addScannerSnapCommand, addScannerLinkCommand, addScannerUserInfoCommand,
};

constexpr AddCommand deviceCommands[] = {
    addDeviceListCommand, addDeviceInfoCommand,   addDeviceGetCommand,
    addDeviceSetCommand,  addDeviceRotateCommand, addDeviceCaptureCommand,
};

void addScannerCommand(CLI::App &app, Command &chosen)
{
    CLI::App *const scanner =
        app.add_subcommand("scanner", "Ask, set and try out the directly linked scanner");
    scanner->require_subcommand(1);
    scanner->footer(
        "Every command connects the scanner, does its work and disconnects. A simulated\n"
        "scanner lives as long as the command: what was set is gone with it.");
    for (const AddCommand add : scannerCommands)
        add(*scanner, chosen);
}

void addDeviceCommand(CLI::App &app, Command &chosen)
{
    CLI::App *const device =
        app.add_subcommand("device", "Ask, set and try out devices of device plug-ins");
    device->require_subcommand(1);
    device->footer("Every command opens the device, does its work and closes it. A device that is\n"
                   "software alone lives as long as the command: what was set is gone with it.");
    for (const AddCommand add : deviceCommands)
        add(*device, chosen);
}

constexpr AddCommand topCommands[] = {
    addScanCommand, addScannerCommand, addDeviceCommand, addExecCommand, addPluginsCommand,
};

} // namespace

void addCommands(CLI::App &app, Command &chosen)
{
    for (const AddCommand add : topCommands)
        add(app, chosen);
}

} // namespace KvSyncCli
