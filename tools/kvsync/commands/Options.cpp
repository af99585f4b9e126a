#include "commands/Options.h"

#include "output/Console.h"
#include "output/Json.h"
#include "plugins/PluginVersion.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QSet>

namespace KvSyncCli {

namespace {

constexpr int mostFurtherTexts = 1000;

NamedValue split(const QString &text)
{
    const int sign = text.indexOf(QLatin1Char('='));
    if (sign <= 0)
        throw KvSyncTool::Exception(InvalidParameter,
                                    QStringLiteral("\"%1\" is not NAME=VALUE").arg(text));
    return {text.left(sign), text.mid(sign + 1)};
}

CLI::Option *addTexts(CLI::App &command, const std::string &name, QStringList &texts,
                      const std::string &description)
{
    const CLI::callback_t take = [&texts](const CLI::results_t &words) {
        for (const std::string &word : words)
            texts.append(QString::fromStdString(word));
        return true;
    };
    return command.add_option(name, take, description)->type_name("TEXT");
}

} // namespace

CLI::Option *addText(CLI::App &command, const std::string &name, QString &text,
                     const std::string &description)
{
    const CLI::callback_t take = [&text](const CLI::results_t &words) {
        text = QString::fromStdString(words.front());
        return true;
    };
    return command.add_option(name, take, description)->type_name("TEXT");
}

CLI::Option *addRepeatedText(CLI::App &command, const std::string &name, QStringList &texts,
                             const std::string &description)
{
    return addTexts(command, name, texts, description)
        ->expected(1, CLI::detail::expected_max_vector_size);
}

// Of an argument that may have more texts than it asks for, CLI11 pulls those in brackets apart,
// as a list of its own. So this one asks for more than there will be, and takes what comes.
CLI::Option *addFurtherTexts(CLI::App &command, const std::string &name, QStringList &texts,
                             const std::string &description)
{
    return addTexts(command, name, texts, description)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->expected(mostFurtherTexts, CLI::detail::expected_max_vector_size);
}

CLI::Option *refuseEmpty(CLI::Option *option)
{
    return option->check(CLI::Validator(
        [](const std::string &text) {
            return text.empty() ? std::string("An empty text means nothing here") : std::string();
        },
        ""));
}

QList<NamedValue> namedValues(const QStringList &texts)
{
    QList<NamedValue> values;
    QSet<QString> names;
    for (const QString &text : texts) {
        const NamedValue value = split(text);
        if (names.contains(value.name))
            throw KvSyncTool::Exception(
                InvalidParameter,
                QStringLiteral("\"%1\" is given more than one value").arg(value.name));
        names.insert(value.name);
        values.append(value);
    }
    return values;
}

QVariantMap jsonValues(const QStringList &texts)
{
    QVariantMap values;
    for (const NamedValue &each : namedValues(texts))
        values.insert(each.name, parseJson(each.value, each.name));
    return values;
}

QVariantMap DeviceOptions::address(const PluginDirectories &directories) const
{
    if (plugin.isEmpty())
        return {{QStringLiteral("serial"), serial}};
    const QVersionNumber chosen =
        choosePluginVersion(pluginDirectory(directories.device), plugin, version);
    return {{QStringLiteral("plugin"), plugin},
            {QStringLiteral("version"), chosen.toString()},
            {QStringLiteral("index"), index}};
}

void addScannerOptions(CLI::App &command, DeviceOptions &options)
{
    addText(command, "--serial", options.serial,
            "Serial number of the scanner, as list tells it; without it, the one that is there");
    command.add_flag("--json", options.json, "Print JSON");
}

void addPluginDeviceOptions(CLI::App &command, DeviceOptions &options)
{
    refuseEmpty(addText(command, "--plugin", options.plugin, "Name of the device plug-in"))
        ->required();
    refuseEmpty(addText(
        command, "--plugin-version", options.version,
        "Version of the plug-in, of which the newest build is taken; without it, the newest"));
    command.add_option("--index", options.index, "Place in the plug-in's list of devices, from 0")
        ->capture_default_str();
    command.add_flag("--json", options.json, "Print JSON");
}

QString typesText(const QVariantMap &device)
{
    const QStringList types = device.value(QStringLiteral("types")).toStringList();
    return types.isEmpty() ? QStringLiteral("no capability") : types.join(QStringLiteral(", "));
}

void print(Context &context, bool json, const QString &text, const QJsonObject &object)
{
    context.output.write(json ? jsonText(object) : text.toUtf8());
}

} // namespace KvSyncCli
