// "scan", of the directly linked scanner, and "device capture", of devices of device plug-ins.
#include "commands/DeviceSetup.h"
#include "output/Console.h"
#include "session/ScanRecorder.h"
#include "session/ServiceSession.h"
#include "session/Simulator.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QFile>

#include <memory>
#include <optional>

namespace KvSyncCli {

namespace {

struct ScanOptions
{
    DeviceOptions device;
    DeviceSetup setup;
    int frames = 0;
    QString folder;
    bool overwrite = false;
    std::optional<int> periodMs;
    std::optional<int> timeoutMs;
    bool color = false;
    // Of the directly linked scanner.
    Illumination illumination;
    QString plan;
    // Of a device.
    std::optional<int> camera;
};

QVariantMap captureParameters(const ScanOptions &options)
{
    QVariantMap parameters = options.illumination.parameters();
    parameters.insert(QStringLiteral("frames"), options.frames);
    parameters.insert(QStringLiteral("color"), options.color);
    const auto insert = [&](const QString &key, const std::optional<int> &value) {
        if (value)
            parameters.insert(key, *value);
    };
    insert(QStringLiteral("camera"), options.camera);
    insert(QStringLiteral("periodMs"), options.periodMs);
    insert(QStringLiteral("timeoutMs"), options.timeoutMs);
    return parameters;
}

QVariantMap united(QVariantMap map, const QVariantMap &further)
{
    for (auto entry = further.begin(); entry != further.end(); ++entry)
        map.insert(entry.key(), entry.value());
    return map;
}

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

QString resultText(const ScanFolder &folder, const ScanRecord &record)
{
    QString text =
        recordText(record) + QStringLiteral(" in %1\n").arg(shown(folder.dir().absolutePath()));
    if (record.hasContactSheet)
        text += QStringLiteral("contact sheet %1\n").arg(shown(folder.contactSheetPath()));
    return text;
}

void printResult(Context &context, bool json, const ScanFolder &folder, const ScanRecord &record)
{
    if (!json) {
        context.output.write(resultText(folder, record).toUtf8());
        return;
    }
    QFile file(folder.recordPath());
    if (!file.open(QIODevice::ReadOnly))
        throw KvSyncTool::Exception(
            PathNotExist,
            QStringLiteral("%1 cannot be read: %2").arg(file.fileName(), file.errorString()));
    context.output.write(file.readAll());
}

void checkBalance(const ScanRecord &record)
{
    if (!record.isBalanced())
        throw KvSyncTool::Exception(
            CameraFailed, QStringLiteral("The account of frames does not balance: %1 produced, "
                                         "%2 delivered, %3 dropped")
                              .arg(record.account.value(QStringLiteral("produced")).toInt())
                              .arg(record.frames)
                              .arg(record.account.value(QStringLiteral("dropped")).toInt()));
}

// The result is printed also of a scan that fails after its first frame.
void recordInto(ScanFolder &folder, const ScanOptions &options, const QVariantMap &parameters,
                Context &context)
{
    ScanRecorder recorder(context.interruption, folder);
    ServiceSession session(context.directories, context.interruption);
    session.listen([&recorder](const PluginEvent &event) { recorder.onEvent(event); });
    const QVariantMap address = options.device.address(context.directories);
    session.open(address);
    applySetup(session, options.setup);
    const QVariantMap asked = united(united(parameters, address), options.setup.asked());
    try {
        recorder.run(session, parameters, asked);
    } catch (...) {
        if (recorder.record().frames > 0)
            printResult(context, options.device.json, folder, recorder.record());
        throw;
    }
    printResult(context, options.device.json, folder, recorder.record());
    checkBalance(recorder.record());
}

void refuseTwoPeriods(const ScanOptions &options)
{
    if (options.periodMs && options.setup.asked()
                                .value(QStringLiteral("set"))
                                .toMap()
                                .contains(QStringLiteral("periodMs")))
        throw KvSyncTool::Exception(
            InvalidParameter, QStringLiteral("--period and --set periodMs contradict each other"));
}

void runScan(const ScanOptions &options, Context &context)
{
    refuseTwoPeriods(options);
    const QVariantMap parameters = captureParameters(options);
    if (!options.plan.isEmpty())
        useFaultPlan(options.plan);
    ScanFolder folder(options.folder, options.overwrite);
    // Nobody leaves before the record tells how it ended.
    const Interruption::Ending later(context.interruption, [] {});
    recordInto(folder, options, parameters, context);
}

void addCommonOptions(CLI::App &command, ScanOptions &options)
{
    command.add_option("--frames", options.frames, "How many frames to take")->required();
    refuseEmpty(addText(command, "--out", options.folder, "Folder for the images; made if missing"))
        ->required();
    command.add_flag("--overwrite", options.overwrite,
                     "Replace an earlier scan in the folder, which is refused otherwise");
    command.add_option("--period", options.periodMs,
                       "Milliseconds from frame to frame; without it, as the device is set");
    command.add_option("--timeout", options.timeoutMs,
                       "Milliseconds to wait for the next frame; without it, 10000, and ten "
                       "periods of a scan");
}

} // namespace

void addScanCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<ScanOptions>();
    CLI::App *const command =
        app.add_subcommand("scan", "Scan with the directly linked scanner and write the images");
    command->footer(
        "Writes frame-NNNNN-camera-C.png for every image as soon as it comes, scan.json (what was\n"
        "asked for, what came and when, and why the scan ended) and contact-sheet.png (a row a\n"
        "camera, a column a frame). Frame numbers begin at 1; a gap between them is a dropped\n"
        "frame. --json prints scan.json.");
    addCommonOptions(*command, *options);
    command->add_flag("--color", options->color, "Scan with the color camera too");
    refuseEmpty(addText(*command, "--plan", options->plan,
                        "Fault plan for the simulated scanner, a JSON file"));
    addSetupOptions(*command, options->setup);
    addIlluminationOptions(*command, options->illumination,
                           "; without it, a scan projects speckle");
    addScannerOptions(*command, options->device);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runScan(*options, context); };
    });
}

void addDeviceCaptureCommand(CLI::App &device, Command &chosen)
{
    const auto options = std::make_shared<ScanOptions>();
    CLI::App *const command =
        device.add_subcommand("capture", "Take frames with a camera and write the images");
    command->footer(
        "Writes the same files as scan does. Frames have the camera's own numbers, from 1; a gap\n"
        "between them is a dropped frame.");
    addCommonOptions(*command, *options);
    command->add_option("--camera", options->camera,
                        "The sensor, from 0; without it, all that the camera has");
    command->add_flag("--color", options->color, "Take the images in color");
    addSettingOption(*command, options->setup);
    addPluginDeviceOptions(*command, options->device);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runScan(*options, context); };
    });
}

} // namespace KvSyncCli
