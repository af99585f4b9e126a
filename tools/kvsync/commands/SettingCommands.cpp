// "get" and "set", of the directly linked scanner and of devices of device plug-ins.
#include "commands/Options.h"
#include "output/Json.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <memory>

namespace KvSyncCli {

namespace {

struct SettingOptions
{
    DeviceOptions device;
    QString name;
    QString value;
    QStringList keys; ///< NAME=VALUE
};

// JSON: what "set" takes.
QString shownValue(const QVariant &value)
{
    const QByteArray list =
        QJsonDocument(QJsonArray{toJson(value, Bytes::Summary)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

QString shownRange(const QVariantMap &setting)
{
    if (!setting.contains(QStringLiteral("minimum")))
        return QStringLiteral("the plug-in's own");
    const bool isWritable = setting.value(QStringLiteral("writable"), true).toBool();
    QString range = isWritable ? QStringLiteral("%1 to %2")
                                     .arg(shownValue(setting.value(QStringLiteral("minimum"))),
                                          shownValue(setting.value(QStringLiteral("maximum"))))
                               : QStringLiteral("cannot be set");
    const QString unit = setting.value(QStringLiteral("unit")).toString();
    if (!unit.isEmpty())
        range += isWritable ? QLatin1Char(' ') + unit : QStringLiteral("; in ") + unit;
    if (isWritable && setting.value(QStringLiteral("count")).toInt() > 1)
        range += QStringLiteral(" each");
    return range;
}

QString listText(const QVariantList &settings)
{
    QString text;
    for (const QVariant &each : settings) {
        const QVariantMap setting = each.toMap();
        const QString value = setting.contains(QStringLiteral("value"))
                                  ? shownValue(setting.value(QStringLiteral("value")))
                                  : QStringLiteral("-");
        text += QStringLiteral("%1 %2  (%3)\n")
                    .arg(setting.value(QStringLiteral("name")).toString(), -22)
                    .arg(value, 12)
                    .arg(shownRange(setting));
    }
    return text;
}

void printSetting(Context &context, const SettingOptions &options, const QVariant &value)
{
    print(context, options.device.json, shownValue(value) + QLatin1Char('\n'),
          {{QStringLiteral("name"), options.name},
           {QStringLiteral("value"), toJson(value, Bytes::Summary)}});
}

void runGet(const SettingOptions &options, Context &context)
{
    const bool all = options.name.isEmpty();
    const QVariantMap keys = jsonValues(options.keys);
    ServiceSession session(context.directories, context.interruption);
    session.open(options.device.address(context.directories));
    const QVariant answer =
        session.callDevice(QStringLiteral("getProperty"),
                           {all ? QStringLiteral("list") : options.name, QVariant(keys)});
    session.close();
    if (all)
        print(context, options.device.json, listText(answer.toList()),
              {{QStringLiteral("settings"), toJson(answer, Bytes::Summary)}});
    else
        printSetting(context, options, answer);
}

void runSet(const SettingOptions &options, Context &context)
{
    const QVariant value = parseJson(options.value, QStringLiteral("VALUE"));
    ServiceSession session(context.directories, context.interruption);
    session.open(options.device.address(context.directories));
    session.callDevice(QStringLiteral("setProperty"), {options.name, value});
    session.close();
    printSetting(context, options, value);
}

using Options = std::shared_ptr<SettingOptions>;

CLI::App *addGet(CLI::App &parent, const Options &options, Command &chosen)
{
    CLI::App *const command = parent.add_subcommand("get", "Print one setting, or all of them");
    addText(*command, "NAME", options->name, "Name of the setting; all if it is missing");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runGet(*options, context); };
    });
    return command;
}

CLI::App *addSet(CLI::App &parent, const Options &options, Command &chosen)
{
    CLI::App *const command =
        parent.add_subcommand("set", "Set one setting; get lists names and ranges");
    addText(*command, "NAME", options->name, "Name of the setting")->required();
    addText(*command, "VALUE", options->value, "A number, or a list as [10, 20, 30]")->required();
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runSet(*options, context); };
    });
    return command;
}

} // namespace

void addScannerGetCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<SettingOptions>();
    addScannerOptions(*addGet(scanner, options, chosen), options->device);
}

void addScannerSetCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<SettingOptions>();
    CLI::App *const command = addSet(scanner, options, chosen);
    command->footer("Example: kvsync scanner set camera0.exposureUs 20000");
    addScannerOptions(*command, options->device);
}

void addDeviceGetCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<SettingOptions>();
    CLI::App *const command = addGet(device, options, chosen);
    command->footer("Example: kvsync device get gain --with selector=1 --plugin VirtualScanner");
    addRepeatedText(*command, "--with", options->keys,
                    "Ask a property of the plug-in's own with KEY=VALUE; may be repeated");
    addPluginDeviceOptions(*command, options->device);
}

void addDeviceSetCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<SettingOptions>();
    CLI::App *const command = addSet(device, options, chosen);
    command->footer(
        "A property of the plug-in's own takes several values as {\"KEY\": VALUE, ...}.\n"
        "Example: kvsync device set camera0.size \"[320, 240]\" --plugin VirtualScanner");
    addPluginDeviceOptions(*command, options->device);
}

} // namespace KvSyncCli
