#include "commands/Options.h"
#include "output/Console.h"
#include "output/Json.h"
#include "plugins/PluginVersion.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>
#include <QtCore/QJsonArray>

#include <memory>
#include <mutex>

namespace KvSyncCli {

namespace {

struct ExecOptions
{
    QString plugin;
    QString function;
    QStringList arguments;
    QString version;
    QString open;
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

    void append(const PluginEvent &event)
    {
        const QJsonObject object{
            {QStringLiteral("isPub"), event.isPublic},
            {QStringLiteral("plugin"), event.plugin},
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

QVariantList parseArguments(const QStringList &texts)
{
    QVariantList arguments;
    for (const QString &text : texts) {
        const QString name = QStringLiteral("Argument %1").arg(arguments.size() + 1);
        arguments.append(parseJson(text, name));
    }
    return arguments;
}

QVariant callFunction(ServiceSession &session, const ExecOptions &options,
                      const QVariantList &arguments)
{
    if (options.open.isEmpty()) {
        QVariant result = session.call(options.function, arguments);
        // A device that stays open could send events while the core goes.
        if (options.function == QLatin1String("openDevices"))
            session.call(QStringLiteral("closeDevices"), {result});
        return result;
    }
    session.open(parseJson(options.open, QStringLiteral("--open")).toMap());
    QVariant result = session.callDevice(options.function, arguments);
    session.close();
    return result;
}

void runExec(const ExecOptions &options, Context &context)
{
    const Bytes bytes = options.base64 ? Bytes::Base64 : Bytes::Summary;
    const QVariantList arguments = parseArguments(options.arguments);
    const QVersionNumber version = choosePluginVersion(pluginDirectory(context.directories.logic),
                                                       options.plugin, options.version);
    EventList events(bytes);
    QVariant result;
    {
        ServiceSession session(context.directories, context.interruption, options.plugin, version);
        session.listen([&events](const PluginEvent &event) { events.append(event); });
        result = callFunction(session, options, arguments);
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
    addText(*command, "PLUGIN", options->plugin, "Name of the command plug-in")->required();
    addText(*command, "FUNCTION", options->function, "Name of the function")->required();
    addFurtherTexts(*command, "ARGUMENTS", options->arguments,
                    "Arguments of the function, one JSON value each");
    refuseEmpty(addText(
        *command, "--version", options->version,
        "Version of the plug-in, of which the newest build is taken; without it, the newest"));
    refuseEmpty(addText(*command, "--open", options->open,
                        "Open a device with these parameters (JSON) first, put its "
                        "handle before the arguments, and close it afterwards"));
    command->add_flag("--base64", options->base64,
                      "Print byte arrays in full, not as their size and SHA-256");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runExec(*options, context); };
    });
}

} // namespace KvSyncCli
