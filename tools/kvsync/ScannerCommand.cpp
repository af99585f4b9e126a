#include "ScannerCommand.h"

#include <CLI/CLI.hpp>

namespace KvSyncCli {

namespace {

constexpr void (*addCommands[])(CLI::App &scanner, Command &chosen) = {
    addScannerListCommand, addScannerInfoCommand, addScannerGetCommand,      addScannerSetCommand,
    addScannerSnapCommand, addScannerLinkCommand, addScannerUserInfoCommand,
};

} // namespace

void addScannerCommand(CLI::App &app, Command &chosen)
{
    CLI::App *const scanner =
        app.add_subcommand("scanner", "Ask, set and try out the directly linked scanner");
    scanner->require_subcommand(1);
    scanner->footer(
        "Every command connects the scanner, does its work and disconnects. A simulated\n"
        "scanner lives as long as the command: what was set is gone with it.");
    for (const auto add : addCommands)
        add(*scanner, chosen);
}

} // namespace KvSyncCli
