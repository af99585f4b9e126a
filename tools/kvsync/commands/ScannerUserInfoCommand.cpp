#include "commands/Options.h"
#include "session/ServiceSession.h"
#include "session/Simulator.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

struct UserInfoOptions
{
    DeviceOptions scanner;
    int address = 0;
    QString text;
    QString store;
};

void runUserInfo(const UserInfoOptions &options, const QString &function,
                 const QVariantList &arguments, Context &context)
{
    if (!options.store.isEmpty())
        useUserInformationFile(options.store);
    ServiceSession session(context.directories, context.interruption);
    session.open(options.scanner.address(context.directories));
    const QVariant answer = session.execute(function, arguments);
    session.close();
    const QString text = answer.isValid() ? answer.toString() : options.text;
    print(context, options.scanner.json, text + QLatin1Char('\n'),
          {{QStringLiteral("address"), options.address}, {QStringLiteral("text"), text}});
}

void addUserInfoOptions(CLI::App &command, UserInfoOptions &options)
{
    command.add_option("--address", options.address, "Block of the store, from 0")
        ->capture_default_str();
    refuseEmpty(addText(
        command, "--store", options.store,
        "File in which a simulated scanner keeps its user information; without it, that is gone "
        "when kvsync ends"));
    addScannerOptions(command, options.scanner);
}

void addRead(CLI::App &userInfo, Command &chosen)
{
    const auto options = std::make_shared<UserInfoOptions>();
    CLI::App *const command = userInfo.add_subcommand("read", "Print a text from the store");
    addUserInfoOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) {
            runUserInfo(*options, QStringLiteral("readUserInformation"), {options->address},
                        context);
        };
    });
}

void addWrite(CLI::App &userInfo, Command &chosen)
{
    const auto options = std::make_shared<UserInfoOptions>();
    CLI::App *const command = userInfo.add_subcommand("write", "Write a text to the store");
    addText(*command, "TEXT", options->text, "At most 511 bytes in UTF-8")->required();
    addUserInfoOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) {
            runUserInfo(*options, QStringLiteral("writeUserInformation"),
                        {options->address, options->text}, context);
        };
    });
}

} // namespace

void addScannerUserInfoCommand(CLI::App &scanner, Command &chosen)
{
    CLI::App *const userInfo =
        scanner.add_subcommand("user-info", "Read and write the scanner's user information");
    userInfo->require_subcommand(1);
    addRead(*userInfo, chosen);
    addWrite(*userInfo, chosen);
}

} // namespace KvSyncCli
