// "plugins", and "plugins why" below it.
#include "commands/Options.h"
#include "output/Json.h"
#include "plugins/PluginReport.h"
#include "plugins/ReportJson.h"
#include "plugins/ReportText.h"
#include "plugins/TrialProcess.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QJsonArray>

#include <algorithm>
#include <memory>

namespace KvSyncCli {

namespace {

/// Whether plug-ins are loaded to see what comes of it, and for how long.
struct TrialChoice
{
    bool load = false;
    int limitMs = 30000;

    LoadLimit loadLimitMs() const { return load ? LoadLimit(limitMs) : LoadLimit(); }
};

struct PluginsOptions
{
    TrialChoice trial;
    bool json = false;
    bool strict = false;
};

struct WhyOptions
{
    QString file;
    TrialChoice trial;
    bool json = false;
};

struct TrialOptions
{
    QString file;
    QString report;
    bool allSymbols = false;
};

/// What one folder holds.
struct FolderReport
{
    PluginFolder folder;
    bool exists;
    std::vector<PluginReport> files;
};

FolderReport inspect(const PluginFolder &folder, const LoadLimit &loadLimitMs)
{
    const PluginSelection selection(folder.path);
    FolderReport report{folder, selection.exists(), {}};
    const QStringList entries = report.exists ? selection.entries() : QStringList();
    for (const QString &entry : entries)
        report.files.push_back(inspectPlugin(selection, folder.path + QLatin1Char('/') + entry,
                                             folder.kind, loadLimitMs));
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

void requireThatAllLoad(const std::vector<FolderReport> &folders)
{
    std::size_t all = 0;
    std::size_t bad = 0;
    for (const FolderReport &folder : folders) {
        all += folder.files.size();
        bad += static_cast<std::size_t>(
            std::count_if(folder.files.begin(), folder.files.end(),
                          [](const PluginReport &file) { return !file.wouldLoad(); }));
    }
    if (bad > 0)
        throw KvSyncTool::Exception(PluginLoadFailed,
                                    QStringLiteral("%1 of %2 files do not load").arg(bad).arg(all));
}

void runPlugins(const PluginsOptions &options, Context &context)
{
    QString texts;
    QJsonArray folders;
    std::vector<FolderReport> reports;
    for (const PluginFolder &folder : pluginFolders(context.directories)) {
        reports.push_back(inspect(folder, options.trial.loadLimitMs()));
        texts += text(reports.back());
        folders.append(json(reports.back()));
    }
    print(context, options.json, texts, {{QStringLiteral("folders"), folders}});
    if (options.strict)
        requireThatAllLoad(reports);
}

void runWhy(const WhyOptions &options, Context &context)
{
    const PluginPlace place = findPlugin(context.directories, options.file);
    const PluginReport report = inspectPlugin(PluginSelection(place.folder), place.filePath,
                                              place.expected, options.trial.loadLimitMs());
    print(context, options.json, fullText(report), fullJson(report));
}

/// "--load" and "--timeout".
void addTrialOptions(CLI::App &command, TrialChoice &trial)
{
    command.add_flag("--load", trial.load,
                     "Load plug-ins as the core would, which runs their code, in another process");
    command
        .add_option("--timeout", trial.limitMs,
                    "Milliseconds that loading one may take, 1 to 3600000")
        ->check(CLI::Range(1, 3600000))
        ->capture_default_str();
}

void addWhyCommand(CLI::App &plugins, Command &chosen)
{
    const auto options = std::make_shared<WhyOptions>();
    CLI::App *const command =
        plugins.add_subcommand("why", "Tell all about one file, and why it is loaded or not");
    command->footer(
        "Tells how the name is read, which file the core takes instead, the metadata, and the\n"
        "libraries that the file needs with the place of each. The exit status is 0 whatever\n"
        "the result. Example: kvsync plugins why Scanner.1.0.1.dll");
    addText(*command, "FILE", options->file,
            "A name in one of the two folders, or a path to a file anywhere")
        ->required();
    addTrialOptions(*command, options->trial);
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runWhy(*options, context); };
    });
}

// No help shows it: kvsync runs itself with it.
void addTrialCommand(CLI::App &plugins, Command &chosen)
{
    const auto options = std::make_shared<TrialOptions>();
    CLI::App *const command = plugins.add_subcommand(trialCommand);
    command->group("");
    addText(*command, "FILE", options->file, "")->required();
    addText(*command, "REPORT", options->report, "")->required();
    command->add_flag(allSymbolsFlag, options->allSymbols);
    command->callback([options, &chosen] {
        chosen = [options](Context &) {
            runTrial(options->file,
                     options->allSymbols ? SymbolCheck::AllAtOnce : SymbolCheck::AsTheCore,
                     options->report);
        };
    });
}

} // namespace

void addPluginsCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<PluginsOptions>();
    CLI::App *const command = app.add_subcommand(
        "plugins", "List the plug-in files, and say which are loaded and why others are not");
    command->require_subcommand(0, 1);
    command->footer(
        "Reads files, and runs no plug-in's code without --load. The core takes the file of a\n"
        "name, major and minor number with the highest build, good or bad; it falls back on no\n"
        "other.\n\n"
        "Reasons:\n"
        "  name-pattern                the core's search does not find the file by its name\n"
        "  shadowed-by-higher-build    the core takes another file\n"
        "  not-a-plugin                no library, a damaged one, or none of Qt's plug-ins\n"
        "  wrong-architecture          made for another system or processor\n"
        "  built-with-incompatible-qt  made with a Qt that does not fit this one\n"
        "  missing-library             a library that it needs is not found\n"
        "  load-failed                 it cannot be read, or its loading was tried and failed\n"
        "  missing-interface           it was loaded, and is no plug-in of the folder's kind\n\n"
        "Warnings, which keep no file from loading:\n"
        "  wrong-iid                   the metadata name another interface, or another version\n"
        "  harms-host                  it was loaded, and would end its host sooner or later");
    addTrialOptions(*command, options->trial);
    command->add_flag("--strict", options->strict,
                      "Fail if something stands in a folder that does not load");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, command, &chosen] {
        if (command->get_subcommands().empty())
            chosen = [options](Context &context) { runPlugins(*options, context); };
    });
    addWhyCommand(*command, chosen);
    addTrialCommand(*command, chosen);
}

} // namespace KvSyncCli
