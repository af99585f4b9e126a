#include "Command.h"
#include "ContactSheet.h"
#include "Environment.h"
#include "FrameReport.h"
#include "ImageFiles.h"
#include "Json.h"
#include "OpenScanner.h"
#include "Preparation.h"
#include "ProgressBar.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <memory>
#include <optional>

namespace KvSyncCli {

namespace {

struct ScanOptions
{
    ScannerOptions scanner;
    Preparation preparation;
    int frames = 0;
    std::string folder;
    std::string plan;
    std::optional<int> periodMs;
    std::optional<int> timeoutMs;
    bool color = false;
};

struct Scan
{
    QVariantList images; ///< the plug-in's maps
    int dropped = 0;
    double seconds = 0.0; ///< from the first frame to the last
};

QVariantMap captureParameters(const ScanOptions &options)
{
    QVariantMap parameters{{QStringLiteral("frames"), options.frames},
                           {QStringLiteral("color"), options.color}};
    if (options.periodMs)
        parameters.insert(QStringLiteral("periodMs"), *options.periodMs);
    if (options.timeoutMs)
        parameters.insert(QStringLiteral("timeoutMs"), *options.timeoutMs);
    return parameters;
}

Scan scan(const ScanOptions &options, const Context &context)
{
    ProgressBar bar;
    Scan result;
    QElapsedTimer sinceFirst;
    OpenScanner scanner(context, options.scanner, [&](const Event &event) {
        if (event.name != QLatin1String("progress"))
            return;
        if (!sinceFirst.isValid())
            sinceFirst.start();
        result.seconds = static_cast<double>(sinceFirst.nsecsElapsed()) / 1e9;
        const QVariantMap progress = event.payload.value(0).toMap();
        result.dropped = progress.value(QStringLiteral("dropped")).toInt();
        bar.show(progress.value(QStringLiteral("delivered")).toInt(), result.dropped,
                 progress.value(QStringLiteral("frames")).toInt());
    });
    prepare(scanner, options.preparation);
    result.images = scanner
                        .call(QStringLiteral("captureImage"),
                              {QStringLiteral("scan"), captureParameters(options)})
                        .toList();
    scanner.close();
    return result;
}

int frameOf(const QVariantMap &image)
{
    return image.value(QStringLiteral("frame")).toInt();
}

QList<int> frameNumbers(const QVariantList &images)
{
    QList<int> numbers;
    for (const QVariant &image : images) {
        const int number = frameOf(image.toMap());
        if (numbers.isEmpty() || numbers.last() != number)
            numbers.append(number);
    }
    return numbers;
}

QJsonObject writeImage(const QDir &folder, const QVariantMap &map, ContactSheet &sheet)
{
    const int frame = frameOf(map);
    const int camera = map.value(QStringLiteral("camera")).toInt();
    const QImage image = imageFrom(map);
    sheet.add(frame, camera, image);
    const QString name = QString::asprintf("frame-%05d-camera-%d.png", frame, camera);
    writePng(folder, name, image);
    return {{QStringLiteral("frame"), frame},
            {QStringLiteral("camera"), camera},
            {QStringLiteral("width"), image.width()},
            {QStringLiteral("height"), image.height()},
            {QStringLiteral("file"), name},
            {QStringLiteral("sha256"), sha256(map.value(QStringLiteral("data")).toByteArray())}};
}

FrameReport writeScan(const QDir &folder, const Scan &scanned)
{
    const QList<int> numbers = frameNumbers(scanned.images);
    ContactSheet sheet(numbers);
    FrameReport report;
    for (const QVariant &image : scanned.images)
        report.images.append(writeImage(folder, image.toMap(), sheet));
    report.folder = folder.absolutePath();
    report.contactSheet = writePng(folder, QStringLiteral("contact-sheet.png"), sheet.draw());
    report.delivered = numbers.size();
    report.dropped = scanned.dropped;
    report.produced = numbers.isEmpty() ? 0 : numbers.last();
    report.seconds = scanned.seconds;
    return report;
}

void runScan(const ScanOptions &options, Context &context)
{
    const QDir folder = openOutputFolder(fromArgument(options.folder));
    if (!options.plan.empty())
        useFaultPlan(fromArgument(options.plan));
    FrameReport report = writeScan(folder, scan(options, context));
    report.requested = options.frames;
    print(context, options.scanner, reportText(report), reportJson(report));
    if (!report.isBalanced())
        throw KvSyncTool::Exception(
            CameraFailed, QStringLiteral("The account of frames does not balance: %1 produced, "
                                         "%2 delivered, %3 dropped")
                              .arg(report.produced)
                              .arg(report.delivered)
                              .arg(report.dropped));
}

} // namespace

void addScanCommand(CLI::App &app, Command &chosen)
{
    const auto options = std::make_shared<ScanOptions>();
    CLI::App *const command =
        app.add_subcommand("scan", "Scan with the directly linked scanner and write the images");
    command->footer(
        "Writes frame-NNNNN-camera-C.png for every image and contact-sheet.png (a row a camera, a\n"
        "column a frame). Frame numbers begin at 1; a gap between them is a dropped frame. The\n"
        "summary tells the SHA-256 of every image's pixels.");
    command->add_option("--frames", options->frames, "How many frames to take, 1 to 10000")
        ->required();
    command->add_option("--out", options->folder, "Folder for the images; made if missing")
        ->required();
    command->add_option("--period", options->periodMs,
                        "Milliseconds from frame to frame; without it, as the scanner is set");
    command->add_option("--timeout", options->timeoutMs,
                        "Milliseconds to wait for the next frame; without it, 10000 and ten "
                        "periods");
    command->add_flag("--color", options->color, "Scan with the colour camera too");
    command->add_option("--plan", options->plan,
                        "Fault plan for the simulated scanner, a JSON file");
    addPreparationOptions(*command, options->preparation);
    addScannerOptions(*command, options->scanner);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runScan(*options, context); };
    });
}

} // namespace KvSyncCli
