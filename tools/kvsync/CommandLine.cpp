#include "CommandLine.h"

#include "Command.h"
#include "Failure.h"
#include "Logging.h"
#include "StandardOutput.h"
#include "session/Interruption.h"
#include "session/PluginDirectory.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QDir>

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
    refuseEmpty(
        app.add_option("--logic-dir", options.logicDir,
                       "Folder of the command plug-ins, from where you are; without it, Logic "
                       "beside kvsync"));
    refuseEmpty(
        app.add_option("--device-dir", options.deviceDir,
                       "Folder of the device plug-ins, from where you are; without it, Device "
                       "beside kvsync"));
    app.add_flag("--verbose", options.verbose, "Show the log on standard error");
    app.set_version_flag("--version", "kvsync " KVSYNC_VERSION, "Print the version");
}

// The two that stand beside kvsync may be missing: a command that needs one says so itself.
void takeFolder(const CLI::App &app, const char *option, std::string &folder)
{
    if (app.count(option) == 0)
        return;
    const QString named = fromArgument(folder);
    const QString way = wayFromApplication(named);
    if (!QDir(named).exists())
        throw KvSyncTool::Exception(PathNotExist,
                                    QStringLiteral("There is no plug-in folder %1")
                                        .arg(QDir::cleanPath(QDir(named).absolutePath())));
    folder = way.toStdString();
}

// The service refuses a word or a value, and it has all of them from the command line.
bool isWrongWord(ErrorCode code)
{
    return code == InvalidParameter || code == WrongArgumentCount || code == FunctionNotExist;
}

// Tells of the exception that is being handled.
int reportFailure()
{
    printFailure(presentFailureText());
    try {
        throw;
    } catch (const KvSyncTool::Exception &failure) {
        return isWrongWord(failure.code()) ? wrongCommandLine : failed;
    } catch (...) {
        return failed;
    }
}

int run(const Command &command, const GlobalOptions &options)
{
    Interruption interruption;
    try {
        StandardOutput output(options.verbose);
        decideOnLogging(options.verbose);
        Context context{options, output, interruption};
        command(context);
        return succeeded;
    } catch (...) {
        if (interruption.signal() == 0)
            return reportFailure();
    }
    printFailure(interruption.text());
    return interruption.exitStatus();
}

const CLI::App &innermost(const CLI::App &app)
{
    const CLI::App *command = &app;
    while (!command->get_subcommands().empty())
        command = command->get_subcommands().front();
    return *command;
}

QString helpHint(const CLI::App &app)
{
    QString words;
    for (const CLI::App *command = &innermost(app); command; command = command->get_parent())
        words.prepend(QString::fromStdString(command->get_name()) + QLatin1Char(' '));
    return words + QStringLiteral("--help tells more");
}

// CLI11 calls a command that it does not know a missing one, and a misspelt option that is required
// too.
QString whatIsWrong(const CLI::App &app, const CLI::ParseError &error)
{
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty())
        return fromArgument(error.what());
    const QString word = fromArgument(unknown.front());
    if (word.startsWith(QLatin1Char('-')))
        return QStringLiteral("There is no option %1").arg(word);
    if (innermost(app).get_require_subcommand_min() > 0)
        return QStringLiteral("There is no command \"%1\"").arg(word);
    return fromArgument(error.what());
}

int showHelp(const CLI::App &app, const CLI::ParseError &asked)
{
    std::ostringstream help;
    app.exit(asked, help, help);
    try {
        StandardOutput(false).write(QByteArray::fromStdString(help.str()));
        return succeeded;
    } catch (...) {
        return reportFailure();
    }
}

// Help that was asked for is no failure.
int finish(const CLI::App &app, const CLI::ParseError &error)
{
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
        return showHelp(app, error);
    printFailure(shownFailure(InvalidParameter, whatIsWrong(app, error)));
    printHint(helpHint(app));
    return wrongCommandLine;
}

} // namespace

CLI::Option *refuseEmpty(CLI::Option *option)
{
    return option->check(CLI::Validator(
        [](const std::string &text) {
            return text.empty() ? std::string("An empty text means nothing here") : std::string();
        },
        ""));
}

int runCommandLine(const QStringList &arguments)
{
    CLI::App app("Drives scanners through the service core and its command plug-ins.", "kvsync");
    app.footer(
        "Exit status: 0, or 1 if a command failed, or 2 if the command line or a value on it is\n"
        "wrong (InvalidParameter, WrongArgumentCount, FunctionNotExist), or 128 and the signal's\n"
        "number if a signal ended it: 130 after Ctrl-C, 143 after SIGTERM, 129 after SIGHUP.\n"
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
        takeFolder(app, "--logic-dir", options.logicDir);
        takeFolder(app, "--device-dir", options.deviceDir);
    } catch (const KvSyncTool::Exception &) {
        return reportFailure();
    } catch (const CLI::ParseError &error) {
        return finish(app, error);
    }
    try {
        return run(chosen, options);
    } catch (...) {
        return reportFailure();
    }
}

} // namespace KvSyncCli
