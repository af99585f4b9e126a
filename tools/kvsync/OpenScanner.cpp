#include "OpenScanner.h"

#include "Json.h"
#include "StandardOutput.h"
#include "session/PluginDirectory.h"
#include "session/PluginVersion.h"

#include <CLI/CLI.hpp>

namespace KvSyncCli {

namespace {

ServiceHost &listening(ServiceHost &host, const std::function<void(const Event &event)> &listener)
{
    if (listener)
        host.listen(listener);
    return host;
}

} // namespace

QVariantMap DeviceOptions::address(const GlobalOptions &global) const
{
    if (plugin.empty())
        return {{QStringLiteral("serial"), fromArgument(serial)}};
    const QVersionNumber chosen =
        choosePluginVersion(pluginDirectory(fromArgument(global.deviceDir)), fromArgument(plugin),
                            fromArgument(version));
    return {{QStringLiteral("plugin"), fromArgument(plugin)},
            {QStringLiteral("version"), chosen.toString()},
            {QStringLiteral("index"), index}};
}

void addScannerOptions(CLI::App &command, DeviceOptions &options)
{
    command.add_option("--serial", options.serial,
                       "Serial number of the scanner, as list tells it; without it, the one that "
                       "is there");
    command.add_flag("--json", options.json, "Print JSON");
}

void addPluginDeviceOptions(CLI::App &command, DeviceOptions &options)
{
    refuseEmpty(command.add_option("--plugin", options.plugin, "Name of the device plug-in"))
        ->required();
    refuseEmpty(command.add_option(
        "--plugin-version", options.version,
        "Version of the plug-in, of which the newest build is taken; without it, the newest"));
    command.add_option("--index", options.index, "Place in the plug-in's list of devices, from 0")
        ->capture_default_str();
    command.add_flag("--json", options.json, "Print JSON");
}

OpenScanner::OpenScanner(const Context &context, const DeviceOptions &options,
                         const std::function<void(const Event &event)> &listener)
    : host(context.options, QStringLiteral("Scanner"), QVersionNumber(1, 0))
    , device(listening(host, listener), context.interruption, options.address(context.options))
{
}

void print(Context &context, const DeviceOptions &options, const QString &text,
           const QJsonObject &object)
{
    context.output.write(options.json ? jsonText(object) : text.toUtf8());
}

} // namespace KvSyncCli
