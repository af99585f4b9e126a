#ifndef KVSYNC_SCANFOLDER_H
#define KVSYNC_SCANFOLDER_H

#include "output/OutputFiles.h"

#include <QtCore/QLockFile>

namespace KvSyncCli {

/// The folder of one scan, kept from other processes as long as this object lives.
class ScanFolder
{
public:
    /// Makes the folder if it is missing. Throws `PathNotExist` if files cannot be written there or
    /// another process scans into it, and `InvalidParameter` if it holds an earlier scan that is
    /// not to be replaced.
    ScanFolder(const QString &path, bool replaceEarlier);

    const QDir &dir() const { return folder.dir(); }
    QString recordPath() const;
    QString contactSheetPath() const;
    static QString imageName(int frame, int camera);
    /// The name of an image that cannot be told from another by its frame's number: `place` counts
    /// the images of the scan, from 1.
    static QString imageName(int frame, int camera, int place);

    /// Removes an earlier scan's images and contact sheet, and what a process that was killed left
    /// of them; nothing else, and not its record. Throws `DeviceOperationFailed`.
    void removeImages();

private:
    QStringList images() const;
    void lock();
    bool wasCutShort() const;

    const OutputFolder folder;
    QLockFile lockFile;
};

} // namespace KvSyncCli

#endif
