#include "commands/Options.h"
#include "output/Json.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace KvSyncCli {

namespace {

struct RotateOptions
{
    DeviceOptions device;
    QString axis = QStringLiteral("turntable");
    double degrees = 0.0;
    std::optional<double> degreesPerSecond;
    bool isAbsolute = false;
};

QString positionText(const QVariantMap &position)
{
    QString text;
    for (auto axis = position.begin(); axis != position.end(); ++axis)
        text += QStringLiteral("%1 %2 degrees\n").arg(axis.key()).arg(axis.value().toDouble());
    return text;
}

void runRotate(const RotateOptions &options, Context &context)
{
    QVariantMap parameters{{QStringLiteral("degrees"), options.degrees}};
    if (options.degreesPerSecond)
        parameters.insert(QStringLiteral("degreesPerSecond"), *options.degreesPerSecond);
    ServiceSession session(context.directories, context.interruption);
    session.open(options.device.address(context.directories));
    session.callDevice(QStringLiteral("turntableRotate"),
                       {options.axis, parameters, !options.isAbsolute});
    const QVariantMap position =
        session.callDevice(QStringLiteral("getProperty"), {QStringLiteral("position"), QVariant()})
            .toMap();
    session.close();
    print(context, options.device.json, positionText(position),
          {{QStringLiteral("position"), toJson(position, Bytes::Summary)}});
}

} // namespace

void addDeviceRotateCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<RotateOptions>();
    CLI::App *const command =
        device.add_subcommand("rotate", "Turn an axis, wait for its rest, and print where it is");
    command->add_option("DEGREES", options->degrees, "How far; put -- before a minus sign")
        ->required();
    addText(*command, "--axis", options->axis, "turntable, tilt or lift")->default_str("turntable");
    command->add_flag("--absolute", options->isAbsolute, "Turn to that angle, not by it");
    command->add_option("--speed", options->degreesPerSecond,
                        "Degrees a second; without it, as the motor likes");
    addPluginDeviceOptions(*command, options->device);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runRotate(*options, context); };
    });
}

} // namespace KvSyncCli
