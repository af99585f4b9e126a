#include "Json.h"
#include "OpenScanner.h"
#include "ScannerCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace KvSyncCli {

namespace {

QString infoText(const QVariantMap &info)
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

void runInfo(const DeviceOptions &options, Context &context)
{
    OpenScanner scanner(context, options);
    const QVariantMap info = scanner.execute(QStringLiteral("info")).toMap();
    scanner.close();
    print(context, options, infoText(info), toJson(info, Bytes::Summary).toObject());
}

} // namespace

void addScannerInfoCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<DeviceOptions>();
    CLI::App *const command = scanner.add_subcommand("info", "Firmware, cameras and connection");
    addScannerOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runInfo(*options, context); };
    });
}

} // namespace KvSyncCli
