#ifndef KVSYNC_COMMAND_H
#define KVSYNC_COMMAND_H

#include "plugins/PluginFolders.h"

#include <functional>

namespace CLI {
class App;
} // namespace CLI

namespace KvSyncCli {

class Interruption;
class ConsoleOutput;

/// What a running command works with.
struct Context
{
    const PluginDirectories &directories;
    ConsoleOutput &output;
    Interruption &interruption;
};

/// A command that was chosen, its options bound. Throws KvSyncTool::Exception on failure, with
/// `InvalidParameter` if what stands on the command line cannot be used.
using Command = std::function<void(Context &context)>;

/// Adds a subcommand to a command; parsing it puts it into `chosen`. One row each in
/// CommandGroups.cpp.
using AddCommand = void (*)(CLI::App &parent, Command &chosen);

/// All that stand below kvsync itself.
void addCommands(CLI::App &app, Command &chosen);

void addScanCommand(CLI::App &app, Command &chosen);
void addExecCommand(CLI::App &app, Command &chosen);
void addPluginsCommand(CLI::App &app, Command &chosen);

// Below "scanner".
void addScannerListCommand(CLI::App &scanner, Command &chosen);
void addScannerInfoCommand(CLI::App &scanner, Command &chosen);
void addScannerGetCommand(CLI::App &scanner, Command &chosen);
void addScannerSetCommand(CLI::App &scanner, Command &chosen);
void addScannerSnapCommand(CLI::App &scanner, Command &chosen);
void addScannerLinkCommand(CLI::App &scanner, Command &chosen);
void addScannerUserInfoCommand(CLI::App &scanner, Command &chosen);

// Below "device".
void addDeviceListCommand(CLI::App &device, Command &chosen);
void addDeviceInfoCommand(CLI::App &device, Command &chosen);
void addDeviceGetCommand(CLI::App &device, Command &chosen);
void addDeviceSetCommand(CLI::App &device, Command &chosen);
void addDeviceRotateCommand(CLI::App &device, Command &chosen);
void addDeviceCaptureCommand(CLI::App &device, Command &chosen);

} // namespace KvSyncCli

#endif
