// "info", of the directly linked scanner and of devices of device plug-ins.
#include "commands/Options.h"
#include "output/Json.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

QString scannerText(const QVariantMap &info)
{
    QString text;
    text += QStringLiteral("firmware %1\n").arg(info.value(QStringLiteral("firmware")).toString());
    text += info.value(QStringLiteral("fastUsb")).toBool() ? QStringLiteral("on a fast USB port\n")
                                                           : QStringLiteral("on a slow USB port\n");
    text +=
        QStringLiteral("a frame every %1 ms\n").arg(info.value(QStringLiteral("periodMs")).toInt());
    const QVariantList cameras = info.value(QStringLiteral("cameras")).toList();
    for (const QVariant &each : cameras) {
        const QVariantMap camera = each.toMap();
        text += QStringLiteral("camera %1  %2  %3 x %4 pixels\n")
                    .arg(camera.value(QStringLiteral("camera")).toInt())
                    .arg(camera.value(QStringLiteral("serial")).toString())
                    .arg(camera.value(QStringLiteral("width")).toInt())
                    .arg(camera.value(QStringLiteral("height")).toInt());
    }
    return text;
}

QString deviceText(const QVariantMap &info)
{
    return QStringLiteral("%1\nplug-in %2 %3, device %4\n%5\n")
        .arg(info.value(QStringLiteral("name")).toString(),
             info.value(QStringLiteral("plugin")).toString(),
             info.value(QStringLiteral("version")).toString())
        .arg(info.value(QStringLiteral("index")).toInt())
        .arg(typesText(info));
}

void runInfo(const DeviceOptions &options, QString (*text)(const QVariantMap &info),
             Context &context)
{
    ServiceSession session(context.directories, context.interruption);
    session.open(options.address(context.directories));
    const QVariantMap info = session.execute(QStringLiteral("info")).toMap();
    session.close();
    print(context, options.json, text(info), toJson(info, Bytes::Summary).toObject());
}

} // namespace

void addScannerInfoCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<DeviceOptions>();
    CLI::App *const command = scanner.add_subcommand("info", "Firmware, cameras and connection");
    addScannerOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runInfo(*options, scannerText, context); };
    });
}

void addDeviceInfoCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<DeviceOptions>();
    CLI::App *const command = device.add_subcommand("info", "Name and capabilities");
    addPluginDeviceOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runInfo(*options, deviceText, context); };
    });
}

} // namespace KvSyncCli
