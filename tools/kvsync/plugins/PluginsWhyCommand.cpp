// "plugins why".
#include "Json.h"
#include "StandardOutput.h"
#include "plugins/PluginFolders.h"
#include "plugins/PluginsCommand.h"
#include "plugins/ReportJson.h"
#include "plugins/ReportText.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

struct WhyOptions
{
    std::string file;
    TrialChoice trial;
    bool json = false;
};

void runWhy(const WhyOptions &options, Context &context)
{
    const PluginPlace place = findPlugin(context.options, fromArgument(options.file));
    const PluginReport report = inspectPlugin(PluginSelection(place.folder), place.filePath,
                                              place.expected, options.trial.loadLimitMs());
    context.output.write(options.json ? jsonText(fullJson(report)) : fullText(report).toUtf8());
}

} // namespace

void addPluginsWhyCommand(CLI::App &plugins, Command &chosen)
{
    const auto options = std::make_shared<WhyOptions>();
    CLI::App *const command =
        plugins.add_subcommand("why", "Tell all about one file, and why it is loaded or not");
    command->footer(
        "Tells how the name is read, which file the core takes instead, the metadata, and the\n"
        "libraries that the file needs with the place of each. The exit status is 0 whatever\n"
        "the result. Example: kvsync plugins why Scanner.1.0.1.dll");
    command
        ->add_option("FILE", options->file,
                     "A name in one of the two folders, or a path to a file anywhere")
        ->required();
    addTrialOptions(*command, options->trial);
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runWhy(*options, context); };
    });
}

} // namespace KvSyncCli
