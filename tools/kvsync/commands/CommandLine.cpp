#include "commands/CommandLine.h"

#include "commands/Command.h"
#include "commands/Options.h"
#include "output/Console.h"
#include "output/Logging.h"
#include "session/Interruption.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>

#include <sstream>
#include <vector>

namespace KvSyncCli {

namespace {

constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int wrongCommandLine = 2;

/// What may be said of every command.
struct GlobalOptions
{
    QString logicFolder; ///< from where the user stands; empty for the one beside kvsync
    QString deviceFolder;
    bool verbose = false;
};

// In the order in which CLI11 takes them: the last first, without the program's name.
std::vector<std::string> reversed(const QStringList &arguments)
{
    std::vector<std::string> result;
    for (int i = arguments.size() - 1; i > 0; --i)
        result.push_back(arguments.at(i).toStdString());
    return result;
}

void addGlobalOptions(CLI::App &app, GlobalOptions &options)
{
    refuseEmpty(addText(app, "--logic-dir", options.logicFolder,
                        "Folder of the command plug-ins, from where you are; without it, Logic "
                        "beside kvsync"));
    refuseEmpty(addText(app, "--device-dir", options.deviceFolder,
                        "Folder of the device plug-ins, from where you are; without it, Device "
                        "beside kvsync"));
    app.add_flag("--verbose", options.verbose, "Show the log on standard error");
    app.set_version_flag("--version", "kvsync " KVSYNC_VERSION, "Print the version");
}

// The two that stand beside kvsync may be missing: a command that needs one says so itself.
PluginDirectories directoriesFrom(const GlobalOptions &options)
{
    PluginDirectories directories;
    if (!options.logicFolder.isEmpty())
        directories.logic = pathFromApplication(options.logicFolder);
    if (!options.deviceFolder.isEmpty())
        directories.device = pathFromApplication(options.deviceFolder);
    return directories;
}

// The service refuses a word or a value, and it has all of them from the command line.
bool isWrongWord(ErrorCode code)
{
    return code == InvalidParameter || code == WrongArgumentCount || code == FunctionNotExist;
}

// Tells of the exception that is being handled.
int reportError()
{
    printError(currentErrorText());
    try {
        throw;
    } catch (const KvSyncTool::Exception &error) {
        return isWrongWord(error.code()) ? wrongCommandLine : failed;
    } catch (...) {
        return failed;
    }
}

int run(const Command &command, const GlobalOptions &options)
{
    Interruption interruption;
    try {
        const PluginDirectories directories = directoriesFrom(options);
        ConsoleOutput output(options.verbose);
        configureLogging(options.verbose);
        Context context{directories, output, interruption};
        command(context);
        return succeeded;
    } catch (...) {
        if (interruption.signal() == 0)
            return reportError();
    }
    printError(interruption.text());
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
        return QString::fromStdString(error.what());
    const QString word = QString::fromStdString(unknown.front());
    if (word.startsWith(QLatin1Char('-')))
        return QStringLiteral("There is no option %1").arg(word);
    if (innermost(app).get_require_subcommand_min() > 0)
        return QStringLiteral("There is no command \"%1\"").arg(word);
    return QString::fromStdString(error.what());
}

int showHelp(const CLI::App &app, const CLI::ParseError &asked)
{
    std::ostringstream help;
    app.exit(asked, help, help);
    try {
        ConsoleOutput(false).write(QByteArray::fromStdString(help.str()));
        return succeeded;
    } catch (...) {
        return reportError();
    }
}

// Help that was asked for is no failure.
int finish(const CLI::App &app, const CLI::ParseError &error)
{
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
        return showHelp(app, error);
    printError(errorText(InvalidParameter, whatIsWrong(app, error)));
    printHint(helpHint(app));
    return wrongCommandLine;
}

} // namespace

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
    addCommands(app, chosen);
    try {
        app.parse(reversed(arguments));
    } catch (const CLI::ParseError &error) {
        return finish(app, error);
    }
    try {
        return run(chosen, options);
    } catch (...) {
        return reportError();
    }
}

} // namespace KvSyncCli
