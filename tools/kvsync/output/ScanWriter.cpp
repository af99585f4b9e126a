#include "output/ScanWriter.h"

#include "output/Images.h"
#include "output/OutputFiles.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QFile>

#include <algorithm>
#include <thread>

namespace KvSyncCli {

namespace {

constexpr int mostWaitingImages = 6;
constexpr int mostThreads = 8;

int threadCount()
{
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 2, mostThreads);
}

QString now()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

ScanWriter::ScanWriter(ScanFolder &scanFolder)
    : folder(scanFolder)
    , queue(threadCount(), mostWaitingImages)
{
}

void ScanWriter::begin(const QJsonObject &facts)
{
    earlierRecord = contentOf(folder.recordPath());
    scan.facts = facts;
    scan.began = now();
    writeRecord(folder.recordPath(), scan);
}

void ScanWriter::withdraw()
{
    if (earlierRecord.isNull())
        QFile::remove(folder.recordPath());
    else
        writeAtomically(folder.recordPath(),
                        [this](QIODevice &file) { return writeAll(file, earlierRecord); });
}

void ScanWriter::addFrame(const QVariantList &maps)
{
    if (scan.frames == 0) {
        folder.removeImages();
        scan.firstMs = maps.value(0).toMap().value(QStringLiteral("timeMs")).toDouble();
    }
    const int place = scan.frames++;
    for (const QVariant &each : maps) {
        const QVariantMap map = each.toMap();
        ImageEntry entry;
        entry.frame = map.value(QStringLiteral("frame")).toInt();
        entry.camera = map.value(QStringLiteral("camera")).toInt();
        entry.width = map.value(QStringLiteral("width")).toInt();
        entry.height = map.value(QStringLiteral("height")).toInt();
        entry.timeMs = map.value(QStringLiteral("timeMs")).toDouble();
        entry.file = nameFor(entry);
        scan.lastMs = entry.timeMs;
        scan.images.push_back(entry);
        // It stays where it is while others are put behind it.
        ImageEntry &kept = scan.images.back();
        queue.post([this, map, place, &kept] { write(map, place, kept); });
    }
}

void ScanWriter::finish()
{
    queue.finish();
    const QImage drawn = sheet.draw();
    if (drawn.isNull())
        return;
    writePng(folder.contactSheetPath(), drawn);
    scan.hasContactSheet = true;
}

void ScanWriter::end(const QString &reason, const QString &text, const QJsonObject &account)
{
    scan.reason = reason;
    scan.text = text;
    scan.account = account;
    scan.ended = now();
    writeRecord(folder.recordPath(), scan);
    if (scan.frames == 0)
        folder.removeImages();
}

// A scanner may count wrongly; no image is lost by it.
QString ScanWriter::nameFor(const ImageEntry &entry)
{
    const QPair<int, int> key(entry.frame, entry.camera);
    if (entry.frame <= 0 || named.contains(key))
        return ScanFolder::imageName(entry.frame, entry.camera,
                                     static_cast<int>(scan.images.size()) + 1);
    named.insert(key);
    return ScanFolder::imageName(entry.frame, entry.camera);
}

void ScanWriter::write(const QVariantMap &map, int place, ImageEntry &entry)
{
    QImage image;
    try {
        image = imageFrom(map);
    } catch (const KvSyncTool::Exception &unusable) {
        // The scan goes on: the other images are whole.
        entry.failure = unusable.message();
        return;
    }
    writePng(folder.dir().filePath(entry.file), image);
    sheet.add(place, entry.frame, entry.camera, image);
    entry.sha256 = QCryptographicHash::hash(map.value(QStringLiteral("data")).toByteArray(),
                                            QCryptographicHash::Sha256);
}

} // namespace KvSyncCli
