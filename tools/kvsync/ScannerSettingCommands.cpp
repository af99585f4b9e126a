// "scanner get" and "scanner set".
#include "Json.h"
#include "OpenScanner.h"
#include "ScannerCommand.h"

#include <CLI/CLI.hpp>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <memory>

namespace KvSyncCli {

namespace {

struct SettingOptions
{
    ScannerOptions scanner;
    std::string name;
    std::string value;
};

// A number, or a list in brackets: what "set" takes.
QString shownValue(const QVariant &value)
{
    const QByteArray list =
        QJsonDocument(QJsonArray{toJson(value, Bytes::Summary)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

QString shownRange(const QVariantMap &setting)
{
    QString range = QStringLiteral("%1 to %2")
                        .arg(shownValue(setting.value(QStringLiteral("minimum"))),
                             shownValue(setting.value(QStringLiteral("maximum"))));
    const QString unit = setting.value(QStringLiteral("unit")).toString();
    if (!unit.isEmpty())
        range += QLatin1Char(' ') + unit;
    if (setting.value(QStringLiteral("count")).toInt() > 1)
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
    print(context, options.scanner, shownValue(value) + QLatin1Char('\n'),
          {{QStringLiteral("name"), fromArgument(options.name)},
           {QStringLiteral("value"), toJson(value, Bytes::Summary)}});
}

void runGet(const SettingOptions &options, Context &context)
{
    const bool all = options.name.empty();
    OpenScanner scanner(context, options.scanner);
    const QVariant answer =
        scanner.call(QStringLiteral("getProperty"),
                     {all ? QStringLiteral("list") : fromArgument(options.name), QVariant()});
    scanner.close();
    if (all)
        print(context, options.scanner, listText(answer.toList()),
              {{QStringLiteral("settings"), toJson(answer, Bytes::Summary)}});
    else
        printSetting(context, options, answer);
}

void runSet(const SettingOptions &options, Context &context)
{
    const QString name = fromArgument(options.name);
    const QVariant value = parseJson(fromArgument(options.value), QStringLiteral("VALUE"));
    OpenScanner scanner(context, options.scanner);
    scanner.call(QStringLiteral("setProperty"), {name, value});
    scanner.close();
    printSetting(context, options, value);
}

} // namespace

void addScannerGetCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<SettingOptions>();
    CLI::App *const command = scanner.add_subcommand("get", "Print one setting, or all of them");
    command->add_option("NAME", options->name, "Name of the setting; all if it is missing");
    addScannerOptions(*command, options->scanner);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runGet(*options, context); };
    });
}

void addScannerSetCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<SettingOptions>();
    CLI::App *const command =
        scanner.add_subcommand("set", "Set one setting; scanner get lists names and ranges");
    command->footer("Example: kvsync scanner set camera0.exposureUs 20000");
    command->add_option("NAME", options->name, "Name of the setting")->required();
    command->add_option("VALUE", options->value, "A number, or a list as [10, 20, 30]")->required();
    addScannerOptions(*command, options->scanner);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runSet(*options, context); };
    });
}

} // namespace KvSyncCli
