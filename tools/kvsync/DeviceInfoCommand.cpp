#include "DeviceCommand.h"
#include "DeviceText.h"
#include "Json.h"
#include "OpenScanner.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

QString infoText(const QVariantMap &info)
{
    return QStringLiteral("%1\nplug-in %2 %3, device %4\n%5\n")
        .arg(info.value(QStringLiteral("name")).toString(),
             info.value(QStringLiteral("plugin")).toString(),
             info.value(QStringLiteral("version")).toString())
        .arg(info.value(QStringLiteral("index")).toInt())
        .arg(shownTypes(info));
}

void runInfo(const DeviceOptions &options, Context &context)
{
    OpenScanner device(context, options);
    const QVariantMap info = device.execute(QStringLiteral("info")).toMap();
    device.close();
    print(context, options, infoText(info), toJson(info, Bytes::Summary).toObject());
}

} // namespace

void addDeviceInfoCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<DeviceOptions>();
    CLI::App *const command = device.add_subcommand("info", "Name and capabilities");
    addPluginDeviceOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runInfo(*options, context); };
    });
}

} // namespace KvSyncCli
