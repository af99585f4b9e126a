#include "CommandLine.h"

#include "Command.h"
#include "Failure.h"
#include "Logging.h"
#include "StandardOutput.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace KvSyncCli {

namespace {

constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int wrongCommandLine = 2;

constexpr void (*addCommands[])(CLI::App &app, Command &chosen) = {
    addScanCommand, addScannerCommand, addDeviceCommand, addExecCommand, addPluginsCommand,
};

// In the order in which CLI11 takes them: the last first, without the program's name.
std::vector<std::string> reversed(const QStringList &arguments)
{
    std::vector<std::string> result;
    for (int i = arguments.size() - 1; i > 0; --i)
        result.push_back(toArgument(arguments.at(i)));
    return result;
}

void addGlobalOptions(CLI::App &app, GlobalOptions &options)
{
    app.add_option("--logic-dir", options.logicDir,
                   "Folder of the command plug-ins, below the program's own folder")
        ->capture_default_str();
    app.add_option("--device-dir", options.deviceDir,
                   "Folder of the device plug-ins, below the program's own folder")
        ->capture_default_str();
    app.add_flag("--verbose", options.verbose, "Show the log on standard error");
}

int run(const Command &command, const GlobalOptions &options)
{
    try {
        StandardOutput output(options.verbose);
        const Logging logging(options.verbose);
        Context context{options, output};
        command(context);
        return succeeded;
    } catch (const KvSyncTool::Exception &failure) {
        printFailure(failure.code(), failure.message());
    } catch (const std::exception &failure) {
        printFailure(QString::fromLocal8Bit(failure.what()));
    }
    return failed;
}

// Help that was asked for is no failure.
int finish(const CLI::App &app, const CLI::ParseError &error)
{
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        std::ostringstream help;
        app.exit(error, help, help);
        StandardOutput(false).write(QByteArray::fromStdString(help.str()));
        return succeeded;
    }
    printFailure(InvalidParameter, fromArgument(error.what()));
    printHint(QStringLiteral("kvsync --help tells more"));
    return wrongCommandLine;
}

} // namespace

int runCommandLine(const QStringList &arguments)
{
    CLI::App app("Drives scanners through the service core and its command plug-ins.", "kvsync");
    app.footer("Exit status: 0, or 1 if a command failed, or 2 if the command line is wrong.\n"
               "A failure is told on standard error: the code's name, its number and a text.");
    app.require_subcommand(1);
    app.fallthrough();
    GlobalOptions options;
    Command chosen;
    addGlobalOptions(app, options);
    for (const auto add : addCommands)
        add(app, chosen);
    try {
        app.parse(reversed(arguments));
    } catch (const CLI::ParseError &error) {
        return finish(app, error);
    }
    return run(chosen, options);
}

} // namespace KvSyncCli
