#include "commands/DeviceSetup.h"
#include "output/Images.h"
#include "output/Json.h"
#include "output/OutputFiles.h"
#include "session/ServiceSession.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QJsonArray>

#include <memory>
#include <optional>

namespace KvSyncCli {

namespace {

struct SnapOptions
{
    DeviceOptions scanner;
    DeviceSetup setup;
    Illumination illumination;
    QString folder;
    bool overwrite = false;
    std::optional<int> route;
};

constexpr int colorPlanes = 3;

// Red, green and blue in one picture.
QImage combined(const QList<QImage> &planes)
{
    QImage image(planes.first().size(), QImage::Format_RGB888);
    for (int row = 0; row < image.height(); ++row) {
        uchar *pixel = image.scanLine(row);
        for (int column = 0; column < image.width(); ++column)
            for (const QImage &plane : planes)
                *pixel++ = plane.constScanLine(row)[column];
    }
    return image;
}

QVariantList snap(const SnapOptions &options, Context &context)
{
    QVariantMap parameters;
    if (options.route)
        parameters.insert(QStringLiteral("route"), *options.route);
    ServiceSession session(context.directories, context.interruption);
    session.open(options.scanner.address(context.directories));
    applySetup(session, options.setup);
    applyIllumination(session, options.illumination);
    const QVariantList planes =
        session.callDevice(QStringLiteral("captureImage"), {QStringLiteral("color"), parameters})
            .toList();
    session.close();
    return planes;
}

QStringList earlierImages(const QDir &folder)
{
    return folder.entryList(
        {QStringLiteral("snapshot.png"), QStringLiteral("snapshot-plane-*.png")}, QDir::Files);
}

void refuseEarlierImages(const QDir &folder)
{
    if (!earlierImages(folder).isEmpty())
        throw KvSyncTool::Exception(
            InvalidParameter,
            QStringLiteral("%1 holds an earlier snapshot; --overwrite replaces it")
                .arg(folder.path()));
}

void runSnap(const SnapOptions &options, Context &context)
{
    const OutputFolder output(options.folder);
    const QDir &folder = output.dir();
    if (!options.overwrite)
        refuseEarlierImages(folder);
    const QVariantList planes = snap(options, context);
    // A sensor of fewer planes would leave some of them.
    removeFiles(folder, earlierImages(folder));
    QList<QImage> images;
    QJsonArray summary;
    QString text;
    for (const QVariant &plane : planes) {
        const QVariantMap map = plane.toMap();
        const QString name = QStringLiteral("snapshot-plane-%1.png").arg(images.size());
        const QString hash = sha256(map.value(QStringLiteral("data")).toByteArray());
        images.append(imageFrom(map));
        writePng(folder.filePath(name), images.last());
        summary.append(QJsonObject{{QStringLiteral("file"), name},
                                   {QStringLiteral("width"), images.last().width()},
                                   {QStringLiteral("height"), images.last().height()},
                                   {QStringLiteral("sha256"), hash}});
        text += QStringLiteral("plane %1  %2\n").arg(images.size() - 1).arg(hash);
    }
    QJsonObject object{{QStringLiteral("folder"), folder.absolutePath()},
                       {QStringLiteral("planes"), summary}};
    if (images.size() == colorPlanes) {
        const QString picture = folder.filePath(QStringLiteral("snapshot.png"));
        writePng(picture, combined(images));
        object.insert(QStringLiteral("picture"), picture);
        text += QStringLiteral("picture %1\n").arg(QDir::toNativeSeparators(picture));
    }
    print(context, options.scanner.json, text, object);
}

} // namespace

void addScannerSnapCommand(CLI::App &scanner, Command &chosen)
{
    const auto options = std::make_shared<SnapOptions>();
    CLI::App *const command =
        scanner.add_subcommand("snap", "Take a snapshot with the color camera");
    command->footer("Writes snapshot-plane-N.png for each plane of the sensor and, if there are\n"
                    "three, snapshot.png with them as red, green and blue.");
    refuseEmpty(
        addText(*command, "--out", options->folder, "Folder for the images; made if missing"))
        ->required();
    command->add_flag("--overwrite", options->overwrite,
                      "Replace an earlier snapshot in the folder, which is refused otherwise");
    command->add_option("--route", options->route,
                        "The scanner library's control route; 2, as in a scan, if missing");
    addSetupOptions(*command, options->setup);
    addIlluminationOptions(*command, options->illumination, "");
    addScannerOptions(*command, options->scanner);
    command->callback([options, &chosen] {
        chosen = [options](Context &context) { runSnap(*options, context); };
    });
}

} // namespace KvSyncCli
