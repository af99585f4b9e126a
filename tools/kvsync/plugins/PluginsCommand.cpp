// "plugins".
#include "plugins/PluginsCommand.h"

#include "Json.h"
#include "StandardOutput.h"
#include "plugins/PluginFolders.h"
#include "plugins/ReportJson.h"
#include "plugins/ReportText.h"

#include <CLI/CLI.hpp>
#include <QtCore/QJsonArray>

#include <memory>

namespace KvSyncCli {

namespace {

struct PluginsOptions
{
    bool json = false;
};

/// What one folder holds.
struct FolderReport
{
    PluginFolder folder;
    bool exists;
    std::vector<PluginReport> files;
};

FolderReport inspect(const PluginFolder &folder)
{
    const PluginSelection selection(folder.path);
    FolderReport report{folder, selection.exists(), {}};
    const QStringList entries = report.exists ? selection.entries() : QStringList();
    for (const QString &entry : entries)
        report.files.push_back(inspectPlugin(selection, folder.path + QLatin1Char('/') + entry,
                                             folder.kind, LoadTrial::No));
    return report;
}

QString text(const FolderReport &report)
{
    QString result =
        QStringLiteral("%1 plug-ins, %2\n")
            .arg(QString::fromLatin1(kindName(report.folder.kind)), report.folder.path);
    if (!report.exists)
        result += QStringLiteral("  no such folder\n");
    else if (report.files.empty())
        result += QStringLiteral("  no files\n");
    for (const PluginReport &file : report.files)
        result += shortText(file);
    return result;
}

QJsonObject json(const FolderReport &report)
{
    QJsonArray files;
    for (const PluginReport &file : report.files)
        files.append(shortJson(file));
    return {{QStringLiteral("kind"), QString::fromLatin1(kindName(report.folder.kind))},
            {QStringLiteral("path"), report.folder.path},
            {QStringLiteral("exists"), report.exists},
            {QStringLiteral("files"), files}};
}

void runPlugins(const PluginsOptions &options, Context &context)
{
    QString texts;
    QJsonArray folders;
    for (const PluginFolder &folder : pluginFolders(context.options)) {
        const FolderReport report = inspect(folder);
        texts += text(report);
        folders.append(json(report));
    }
    context.output.write(options.json ? jsonText({{QStringLiteral("folders"), folders}})
                                      : texts.toUtf8());
}

} // namespace

void addPluginsCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<PluginsOptions>();
    CLI::App *const command = app.add_subcommand(
        "plugins", "List the plug-in files, and say which are loaded and why others are not");
    command->require_subcommand(0, 1);
    command->footer(
        "Reads files and runs no plug-in's code. The core takes the file of a name, major and\n"
        "minor number with the highest build, good or bad; it falls back on no other.\n\n"
        "Reasons:\n"
        "  name-pattern                the core's search does not find the file by its name\n"
        "  shadowed-by-higher-build    the core takes another file\n"
        "  not-a-plugin                no library, a damaged one, or none of Qt's plug-ins\n"
        "  wrong-iid                   a plug-in of another kind, or of another version of it\n"
        "  wrong-architecture          made for another system or processor\n"
        "  built-with-incompatible-qt  made with a Qt that does not fit this one\n"
        "  missing-library             a library that it needs is not found\n"
        "  load-failed                 it cannot be read, or its loading was tried and failed");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, command, &chosen] {
        if (command->get_subcommands().empty())
            chosen = [options](Context &context) { runPlugins(*options, context); };
    });
    addPluginsWhyCommand(*command, chosen);
}

} // namespace KvSyncCli
