#include "FrameCapture.h"

#include "ContactSheet.h"
#include "ImageFiles.h"
#include "Json.h"
#include "ProgressBar.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QElapsedTimer>

namespace KvSyncCli {

namespace {

struct Scan
{
    QVariantList images; ///< the plug-in's maps
    int dropped = 0;
    double seconds = 0.0; ///< from the first frame to the last
};

QVariantMap captureParameters(const CaptureOptions &options)
{
    QVariantMap parameters{{QStringLiteral("frames"), options.frames},
                           {QStringLiteral("color"), options.color}};
    if (options.camera)
        parameters.insert(QStringLiteral("camera"), *options.camera);
    if (options.periodMs)
        parameters.insert(QStringLiteral("periodMs"), *options.periodMs);
    if (options.timeoutMs)
        parameters.insert(QStringLiteral("timeoutMs"), *options.timeoutMs);
    return parameters;
}

Scan scan(const Context &context, const CaptureOptions &options,
          const std::function<void(OpenScanner &device)> &prepare)
{
    ProgressBar bar;
    Scan result;
    QElapsedTimer sinceFirst;
    OpenScanner device(context, options.device, [&](const Event &event) {
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
    prepare(device);
    result.images = device
                        .call(QStringLiteral("captureImage"),
                              {QStringLiteral("scan"), captureParameters(options)})
                        .toList();
    device.close();
    return result;
}

int frameOf(const QVariantMap &image)
{
    return image.value(QStringLiteral("frame")).toInt();
}

int cameraOf(const QVariantMap &image)
{
    return image.value(QStringLiteral("camera")).toInt();
}

// Of the first camera, by which frames are counted: others may number theirs by themselves.
QList<int> frameNumbers(const QVariantList &images)
{
    const int counted = cameraOf(images.value(0).toMap());
    QList<int> numbers;
    for (const QVariant &image : images) {
        if (cameraOf(image.toMap()) == counted)
            numbers.append(frameOf(image.toMap()));
    }
    return numbers;
}

QJsonObject writeImage(const QDir &folder, const QVariantMap &map, ContactSheet &sheet)
{
    const int frame = frameOf(map);
    const int camera = cameraOf(map);
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

FrameReport writeScan(const QDir &folder, const Scan &scanned, int firstNumber)
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
    report.produced = numbers.isEmpty() ? 0 : numbers.last() - firstNumber + 1;
    report.seconds = scanned.seconds;
    return report;
}

} // namespace

void addCaptureOptions(CLI::App &command, CaptureOptions &options)
{
    command.add_option("--frames", options.frames, "How many frames to take, 1 to 10000")
        ->required();
    command.add_option("--out", options.folder, "Folder for the images; made if missing")
        ->required();
    command.add_option("--period", options.periodMs,
                       "Milliseconds from frame to frame; without it, as the device is set");
    command.add_option("--timeout", options.timeoutMs,
                       "Milliseconds to wait for the next frame; without it, 10000, and ten "
                       "periods of a scan");
}

void captureFrames(Context &context, const CaptureOptions &options, int firstNumber,
                   const std::function<void(OpenScanner &device)> &prepare)
{
    const QDir folder = openOutputFolder(fromArgument(options.folder));
    FrameReport report = writeScan(folder, scan(context, options, prepare), firstNumber);
    report.requested = options.frames;
    print(context, options.device, reportText(report), reportJson(report));
    if (!report.isBalanced())
        throw KvSyncTool::Exception(
            CameraFailed, QStringLiteral("The account of frames does not balance: %1 produced, "
                                         "%2 delivered, %3 dropped")
                              .arg(report.produced)
                              .arg(report.delivered)
                              .arg(report.dropped));
}

} // namespace KvSyncCli
