#include "OpenScanner.h"

#include "Json.h"
#include "StandardOutput.h"

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

void addScannerOptions(CLI::App &command, ScannerOptions &options)
{
    command.add_option("--serial", options.serial,
                       "Serial number of the scanner; without it, the one that is there");
    command.add_flag("--json", options.json, "Print JSON");
}

OpenScanner::OpenScanner(const Context &context, const ScannerOptions &options,
                         const std::function<void(const Event &event)> &listener)
    : host(context.options, QStringLiteral("Scanner"), QVersionNumber(1, 0))
    , device(listening(host, listener), {{QStringLiteral("serial"), fromArgument(options.serial)}})
{
}

void print(Context &context, const ScannerOptions &options, const QString &text,
           const QJsonObject &object)
{
    context.output.write(options.json ? jsonText(object) : text.toUtf8());
}

} // namespace KvSyncCli
