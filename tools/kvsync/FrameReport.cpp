#include "FrameReport.h"

#include <QtCore/QDir>

namespace KvSyncCli {

QJsonObject reportJson(const FrameReport &report)
{
    return {
        {QStringLiteral("folder"), report.folder},
        {QStringLiteral("contactSheet"), report.contactSheet},
        {QStringLiteral("images"), report.images},
        {QStringLiteral("requested"), report.requested},
        {QStringLiteral("produced"), report.produced},
        {QStringLiteral("delivered"), report.delivered},
        {QStringLiteral("dropped"), report.dropped},
        {QStringLiteral("balanced"), report.isBalanced()},
        {QStringLiteral("seconds"), report.seconds},
        {QStringLiteral("framesPerSecond"), report.framesPerSecond()},
    };
}

QString reportText(const FrameReport &report)
{
    QString text;
    for (const QJsonValue &value : report.images) {
        const QJsonObject image = value.toObject();
        text += QStringLiteral("frame %1 camera %2  %3\n")
                    .arg(image.value(QStringLiteral("frame")).toInt())
                    .arg(image.value(QStringLiteral("camera")).toInt())
                    .arg(image.value(QStringLiteral("sha256")).toString());
    }
    text += QStringLiteral("produced %1 = delivered %2 + dropped %3\n")
                .arg(report.produced)
                .arg(report.delivered)
                .arg(report.dropped);
    if (report.delivered > 1)
        text += QStringLiteral("%1 frames a second, over %2 s from the first to the last\n")
                    .arg(report.framesPerSecond(), 0, 'f', 1)
                    .arg(report.seconds, 0, 'f', 2);
    text += QStringLiteral("%1 images in %2\n")
                .arg(report.images.size())
                .arg(QDir::toNativeSeparators(report.folder));
    text += QStringLiteral("contact sheet %1\n").arg(QDir::toNativeSeparators(report.contactSheet));
    return text;
}

} // namespace KvSyncCli
