#ifndef KVSYNC_COMMAND_H
#define KVSYNC_COMMAND_H

#include <QtCore/QString>

#include <functional>
#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace KvSyncCli {

class Interruption;
class StandardOutput;

/// What may be said of every command.
struct GlobalOptions
{
    // Ways from the application's folder, as the core takes them; see PluginDirectory.
    std::string logicDir = "Logic";
    std::string deviceDir = "Device";
    bool verbose = false;
};

/// What a running command works with.
struct Context
{
    const GlobalOptions &options;
    StandardOutput &output;
    Interruption &interruption;
};

/// A command that was chosen, its options bound. Throws KvSyncTool::Exception on failure, with
/// `InvalidParameter` if what stands on the command line cannot be used.
using Command = std::function<void(Context &context)>;

// Each adds a subcommand to the command line; parsing it puts the command into `chosen`. One file
// each, one row each in CommandLine.cpp.
void addScanCommand(CLI::App &app, Command &chosen);
void addScannerCommand(CLI::App &app, Command &chosen);
void addDeviceCommand(CLI::App &app, Command &chosen);
void addExecCommand(CLI::App &app, Command &chosen);
void addPluginsCommand(CLI::App &app, Command &chosen);

// CLI11 takes a text in brackets for a list of its own and pulls it apart. A control character in
// front keeps it whole on its way through.

inline std::string toArgument(const QString &text)
{
    return (text.startsWith(QLatin1Char('[')) ? "\x1f" : "") + text.toStdString();
}

/// Refuses an empty text, which would mean the same as none. Returns the option.
CLI::Option *refuseEmpty(CLI::Option *option);

/// The text as it stands on the command line.
inline QString fromArgument(const std::string &argument)
{
    return QString::fromStdString(argument).remove(QChar(0x1f));
}

} // namespace KvSyncCli

#endif
