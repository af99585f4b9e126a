#include "session/FrameCapture.h"

#include "Json.h"
#include "StandardOutput.h"
#include "session/Capture.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QFile>

namespace KvSyncCli {

namespace {

QVariantMap captureParameters(const CaptureOptions &options, const QVariantMap &further)
{
    QVariantMap parameters = further;
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

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

// A device that does not say something takes frames all the same.
template <typename Question>
QJsonValue answerTo(Question question)
{
    try {
        return question();
    } catch (const KvSyncTool::Exception &failure) {
        return QJsonObject{{QStringLiteral("failure"), failure.message()}};
    }
}

QJsonValue settingsOf(OpenScanner &device)
{
    QJsonObject values;
    const QVariantList settings =
        device.call(QStringLiteral("getProperty"), {QStringLiteral("list"), QVariant()}).toList();
    for (const QVariant &each : settings) {
        const QVariantMap setting = each.toMap();
        if (setting.contains(QStringLiteral("value")))
            values.insert(setting.value(QStringLiteral("name")).toString(),
                          toJson(setting.value(QStringLiteral("value")), Bytes::Summary));
    }
    return values;
}

QJsonObject factsOf(OpenScanner &device, const CaptureOptions &options, const QVariantMap &asked)
{
    return {{QStringLiteral("program"), QStringLiteral("kvsync " KVSYNC_VERSION)},
            {QStringLiteral("requested"), options.frames},
            {QStringLiteral("asked"), toJson(asked, Bytes::Summary)},
            {QStringLiteral("device"), answerTo([&] {
                 return toJson(device.execute(QStringLiteral("info")), Bytes::Summary);
             })},
            {QStringLiteral("settings"), answerTo([&] { return settingsOf(device); })}};
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

void printRecord(Context &context, const CaptureOptions &options, const ScanFolder &folder,
                 const ScanRecord &record)
{
    if (options.device.json) {
        QFile file(folder.recordPath());
        if (!file.open(QIODevice::ReadOnly))
            throw KvSyncTool::Exception(
                PathNotExist,
                QStringLiteral("%1 cannot be read: %2").arg(file.fileName(), file.errorString()));
        context.output.write(file.readAll());
    } else {
        QString text =
            recordText(record) + QStringLiteral(" in %1\n").arg(shown(folder.dir().absolutePath()));
        if (record.hasContactSheet)
            text += QStringLiteral("contact sheet %1\n").arg(shown(folder.contactSheetPath()));
        context.output.write(text.toUtf8());
    }
}

void captureInto(ScanFolder &folder, Context &context, const CaptureOptions &options,
                 const CapturePreparation &preparation)
{
    Capture capture(context.interruption, folder);
    OpenScanner device(context, options.device,
                       [&capture](const Event &event) { capture.hear(event); });
    preparation.prepare(device);
    const QVariantMap parameters = captureParameters(options, preparation.parameters);
    QVariantMap asked = parameters;
    for (const QVariantMap &more : {options.device.address(context.options), preparation.told})
        for (auto entry = more.begin(); entry != more.end(); ++entry)
            asked.insert(entry.key(), entry.value());
    try {
        capture.run(device, parameters, factsOf(device, options, asked));
    } catch (...) {
        if (capture.record().frames > 0)
            printRecord(context, options, folder, capture.record());
        throw;
    }
    printRecord(context, options, folder, capture.record());
    checkBalance(capture.record());
}

} // namespace

void addCaptureOptions(CLI::App &command, CaptureOptions &options)
{
    command.add_option("--frames", options.frames, "How many frames to take")->required();
    refuseEmpty(
        command.add_option("--out", options.folder, "Folder for the images; made if missing"))
        ->required();
    command.add_flag("--overwrite", options.overwrite,
                     "Replace an earlier scan in the folder, which is refused otherwise");
    command.add_option("--period", options.periodMs,
                       "Milliseconds from frame to frame; without it, as the device is set");
    command.add_option("--timeout", options.timeoutMs,
                       "Milliseconds to wait for the next frame; without it, 10000, and ten "
                       "periods of a scan");
}

void captureFrames(Context &context, const CaptureOptions &options,
                   const CapturePreparation &preparation)
{
    ScanFolder folder(fromArgument(options.folder), options.overwrite);
    // Nobody leaves before the record tells how it ended.
    const Interruption::Ending later(context.interruption, [] {});
    captureInto(folder, context, options, preparation);
}

} // namespace KvSyncCli
