#include "Command.h"
#include "Json.h"
#include "OpenDevice.h"
#include "ServiceHost.h"
#include "StandardOutput.h"
#include "session/PluginDirectory.h"
#include "session/PluginVersion.h"

#include <CLI/CLI.hpp>
#include <QtCore/QJsonArray>

#include <memory>
#include <mutex>
#include <vector>

namespace KvSyncCli {

namespace {

struct ExecOptions
{
    std::string plugin;
    std::string function;
    std::vector<std::string> arguments;
    std::string version;
    std::string open;
    bool base64 = false;
};

/// The events of one call, in order of arrival; they may come from any thread.
class EventList
{
public:
    explicit EventList(Bytes bytes)
        : bytesForm(bytes)
    {
    }

    void append(const Event &event)
    {
        const QJsonObject object{
            {QStringLiteral("isPub"), event.isPublic},
            {QStringLiteral("plugin"), event.pluginName},
            {QStringLiteral("signal"), event.name},
            {QStringLiteral("list"), toJson(QVariant(event.payload), bytesForm)},
            {QStringLiteral("version"), event.version.toString()},
        };
        const std::lock_guard<std::mutex> lock(mutex);
        events.append(object);
    }

    QJsonArray all() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return events;
    }

private:
    const Bytes bytesForm;
    mutable std::mutex mutex;
    QJsonArray events;
};

QVariantList parseArguments(const std::vector<std::string> &texts)
{
    QVariantList arguments;
    for (const std::string &text : texts) {
        const QString name = QStringLiteral("Argument %1").arg(arguments.size() + 1);
        arguments.append(parseJson(fromArgument(text), name));
    }
    return arguments;
}

QVariant callFunction(ServiceHost &host, Interruption &interruption, const ExecOptions &options,
                      const QVariantList &arguments)
{
    const QString function = fromArgument(options.function);
    if (options.open.empty()) {
        QVariant result = host.call(function, arguments);
        // A device that stays open could send events while the core goes.
        if (function == QLatin1String("openDevices"))
            host.call(QStringLiteral("closeDevices"), {result});
        return result;
    }
    const QVariant parameters = parseJson(fromArgument(options.open), QStringLiteral("--open"));
    OpenDevice device(host, interruption, parameters.toMap());
    QVariant result = device.call(function, arguments);
    device.close();
    return result;
}

void runExec(const ExecOptions &options, Context &context)
{
    const Bytes bytes = options.base64 ? Bytes::Base64 : Bytes::Summary;
    const QVariantList arguments = parseArguments(options.arguments);
    const QVersionNumber version =
        choosePluginVersion(pluginDirectory(fromArgument(context.options.logicDir)),
                            fromArgument(options.plugin), fromArgument(options.version));
    EventList events(bytes);
    QVariant result;
    {
        ServiceHost host(context.options, fromArgument(options.plugin), version);
        host.listen([&events](const Event &event) { events.append(event); });
        result = callFunction(host, context.interruption, options, arguments);
    }
    context.output.write(jsonText({{QStringLiteral("result"), toJson(result, bytes)},
                                   {QStringLiteral("signals"), events.all()}}));
}

} // namespace

void addExecCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<ExecOptions>();
    CLI::App *const command = app.add_subcommand("exec", "Call any function of a command plug-in");
    command->footer(
        "Prints {\"result\": ..., \"signals\": [...]} as JSON. 64-bit integers, such as handles, "
        "are texts,\nin both directions. Put -- before arguments that begin with a minus sign.\n\n"
        "Functions: getRunningDevList, openDevices, closeDevices, resetDevices, getProperty,\n"
        "setProperty, resetInterface, setFlagBitInterface, project, captureImage,\n"
        "turntableRotate, execute.\n\n"
        "Examples:\n"
        "  kvsync exec Scanner getRunningDevList\n"
        "  kvsync exec Scanner captureImage '\"scan\"' '{\"frames\": 2}' --open '{\"serial\": "
        "\"\"}'");
    command->add_option("PLUGIN", options->plugin, "Name of the command plug-in")->required();
    command->add_option("FUNCTION", options->function, "Name of the function")->required();
    command->add_option("ARGUMENTS", options->arguments,
                        "Arguments of the function, one JSON value each");
    refuseEmpty(command->add_option(
        "--version", options->version,
        "Version of the plug-in, of which the newest build is taken; without it, the newest"));
    refuseEmpty(command->add_option("--open", options->open,
                                    "Open a device with these parameters (JSON) first, put its "
                                    "handle before the arguments, and close it afterwards"));
    command->add_flag("--base64", options->base64,
                      "Print byte arrays in full, not as their size and SHA-256");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runExec(*options, context); };
    });
}

} // namespace KvSyncCli
