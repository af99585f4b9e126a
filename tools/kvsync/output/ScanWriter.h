#ifndef KVSYNC_SCANWRITER_H
#define KVSYNC_SCANWRITER_H

#include "output/ContactSheet.h"
#include "output/ScanFolder.h"
#include "output/ScanRecord.h"
#include "output/WorkQueue.h"

#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QVariant>

namespace KvSyncCli {

/// Writes the files of a scan while it runs. Used by one thread; images are made into files by
/// several, each as soon as it came.
class ScanWriter
{
public:
    explicit ScanWriter(ScanFolder &scanFolder);

    /// Writes the record of a scan that begins.
    void begin(const QJsonObject &facts);
    /// There was no scan: restores the record that stood there before.
    void withdraw();

    /// Writes the images of a frame, the plug-in's maps. Blocks while too many wait to be written.
    void addFrame(const QVariantList &maps);
    /// Whether a file could not be written. An image that cannot be used is no failure: its entry
    /// says so.
    bool hasFailed() const { return queue.hasFailed(); }
    /// Waits for all images, then writes the contact sheet. Throws the first failure.
    void finish();
    /// Writes the record of a scan that is over. If no frame came, an earlier scan's images go now.
    void end(const QString &reason, const QString &text, const QJsonObject &account);

    const ScanRecord &record() const { return scan; }

private:
    QString nameFor(const ImageEntry &entry);
    void write(const QVariantMap &map, int place, ImageEntry &entry);

    ScanFolder &folder;
    QByteArray earlierRecord;
    ScanRecord scan;
    QSet<QPair<int, int>> named; ///< frames and cameras that name a file
    ContactSheet sheet;
    WorkQueue queue; ///< ends first: its jobs use the others
};

} // namespace KvSyncCli

#endif
