#include "output/ScanRecord.h"

#include "output/OutputFiles.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QSize>

#include <algorithm>
#include <functional>

namespace KvSyncCli {

namespace {

int number(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toInt();
}

QJsonObject imageJson(const ImageEntry &image)
{
    QJsonObject object{{QStringLiteral("frame"), image.frame},
                       {QStringLiteral("camera"), image.camera},
                       {QStringLiteral("width"), image.width},
                       {QStringLiteral("height"), image.height},
                       {QStringLiteral("timeMs"), image.timeMs}};
    if (image.failure.isEmpty()) {
        object.insert(QStringLiteral("file"), image.file);
        object.insert(QStringLiteral("sha256"), QString::fromLatin1(image.sha256.toHex()));
    } else {
        object.insert(QStringLiteral("failure"), image.failure);
    }
    return object;
}

// Where writing failed, others still waited.
bool isWaiting(const ImageEntry &image)
{
    return image.sha256.isEmpty() && image.failure.isEmpty();
}

// Everything but the images, which are too many to stand in one object.
QJsonObject headJson(const ScanRecord &record)
{
    QJsonObject head = record.facts;
    head.insert(QStringLiteral("began"), record.began);
    head.insert(QStringLiteral("reason"),
                record.reason.isEmpty() ? QStringLiteral("running") : record.reason);
    if (record.reason.isEmpty())
        return head;
    head.insert(QStringLiteral("ended"), record.ended);
    head.insert(QStringLiteral("text"), record.text);
    for (const char *const key : {"produced", "dropped", "causes", "disordered"})
        head.insert(QLatin1String(key), record.account.value(QLatin1String(key)));
    head.insert(QStringLiteral("delivered"), record.frames);
    head.insert(QStringLiteral("balanced"), record.isBalanced());
    head.insert(QStringLiteral("warnings"), QJsonArray::fromStringList(record.warnings()));
    head.insert(QStringLiteral("seconds"), record.seconds());
    head.insert(QStringLiteral("framesPerSecond"), record.framesPerSecond());
    if (record.hasContactSheet)
        head.insert(QStringLiteral("contactSheet"), QStringLiteral("contact-sheet.png"));
    return head;
}

bool writeImages(QIODevice &file, const std::deque<ImageEntry> &images)
{
    const char *separator = "\n";
    for (const ImageEntry &image : images) {
        if (isWaiting(image))
            continue;
        const QByteArray line = QJsonDocument(imageJson(image)).toJson(QJsonDocument::Compact);
        if (!writeAll(file, separator + ("        " + line)))
            return false;
        separator = ",\n";
    }
    return true;
}

QString droppedText(const QJsonObject &account)
{
    QStringList causes;
    const QJsonObject all = account.value(QStringLiteral("causes")).toObject();
    for (auto cause = all.begin(); cause != all.end(); ++cause)
        if (cause.value().toInt() > 0)
            causes.append(QStringLiteral("%1 %2").arg(cause.key()).arg(cause.value().toInt()));
    return causes.isEmpty() ? QString()
                            : QStringLiteral(" (%1)").arg(causes.join(QStringLiteral(", ")));
}

// As the device tells them; those of a device that does not are taken from the scan's first frame.
QList<QSize> cameraSizes(const ScanRecord &record)
{
    QList<QSize> sizes;
    const QJsonArray cameras = record.facts.value(QStringLiteral("device"))
                                   .toObject()
                                   .value(QStringLiteral("cameras"))
                                   .toArray();
    for (const QJsonValue &each : cameras)
        sizes.append({number(each.toObject(), "width"), number(each.toObject(), "height")});
    for (const ImageEntry &image : record.images)
        if (cameras.isEmpty() && image.frame == record.images.front().frame)
            sizes.append({image.width, image.height});
    return sizes;
}

QString imagesText(const std::deque<ImageEntry> &images,
                   const std::function<bool(const ImageEntry &image)> &isOdd, const QString &text)
{
    const auto first = std::find_if(images.begin(), images.end(), isOdd);
    if (first == images.end())
        return {};
    return text.arg(std::count_if(first, images.end(), isOdd)).arg(first->frame).arg(first->camera);
}

QString lackingText(const ScanRecord &record)
{
    const int frames =
        number(record.account.value(QStringLiteral("causes")).toObject(), "unusable");
    return frames == 0 ? QString()
                       : QStringLiteral("frames dropped for lack of an image or its pixels: %1")
                             .arg(frames);
}

} // namespace

double ScanRecord::seconds() const
{
    return (lastMs - firstMs) / 1000.0;
}

double ScanRecord::framesPerSecond() const
{
    return seconds() > 0.0 ? (frames - 1) / seconds() : 0.0;
}

bool ScanRecord::isBalanced() const
{
    return number(account, "produced") == frames + number(account, "dropped");
}

QStringList ScanRecord::warnings() const
{
    const QList<QSize> sizes = cameraSizes(*this);
    const QString texts[] = {
        lackingText(*this),
        imagesText(
            images, [](const ImageEntry &image) { return !image.failure.isEmpty(); },
            QStringLiteral("images that could not be used: %1, the first of frame %2, camera %3")),
        imagesText(
            images,
            [&](const ImageEntry &image) {
                return image.failure.isEmpty() && !sizes.contains(QSize(image.width, image.height));
            },
            QStringLiteral("images of another size than the cameras have: %1, the first of frame "
                           "%2, camera %3")),
    };
    QStringList all;
    for (const QString &each : texts)
        if (!each.isEmpty())
            all.append(each);
    return all;
}

void writeRecord(const QString &path, const ScanRecord &record)
{
    QByteArray head = QJsonDocument(headJson(record)).toJson(QJsonDocument::Indented).trimmed();
    head.chop(1); // the brace
    head = head.trimmed() + ",\n    \"images\": [";
    writeAtomically(path, [&](QIODevice &file) {
        return writeAll(file, head) && writeImages(file, record.images) &&
               writeAll(file, "\n    ]\n}\n");
    });
}

QString recordText(const ScanRecord &record)
{
    QString text;
    int written = 0;
    for (const ImageEntry &image : record.images) {
        if (isWaiting(image))
            continue;
        if (image.failure.isEmpty())
            ++written;
        text += QStringLiteral("frame %1 camera %2  %3\n")
                    .arg(image.frame)
                    .arg(image.camera)
                    .arg(image.failure.isEmpty() ? QString::fromLatin1(image.sha256.toHex())
                                                 : image.failure);
    }
    text += QStringLiteral("produced %1 = delivered %2 + dropped %3%4\n")
                .arg(number(record.account, "produced"))
                .arg(record.frames)
                .arg(number(record.account, "dropped"))
                .arg(droppedText(record.account));
    if (record.frames > 1)
        text += QStringLiteral("%1 frames a second, over %2 s from the first to the last\n")
                    .arg(record.framesPerSecond(), 0, 'f', 1)
                    .arg(record.seconds(), 0, 'f', 2);
    for (const QString &warning : record.warnings())
        text += QStringLiteral("warning: %1\n").arg(warning);
    return text + QStringLiteral("%1 images").arg(written);
}

} // namespace KvSyncCli
