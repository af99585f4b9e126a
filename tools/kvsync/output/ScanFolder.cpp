#include "output/ScanFolder.h"

#include "ImageFiles.h"
#include "output/AtomicFile.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace KvSyncCli {

ScanFolder::ScanFolder(const QString &path, bool replaceEarlier)
    : folder(openOutputFolder(path))
    , lockFile(folder.filePath(QStringLiteral("scan.lock")))
{
    lock();
    if (!replaceEarlier && (QFileInfo::exists(recordPath()) || !images().isEmpty()))
        throw KvSyncTool::Exception(
            InvalidParameter,
            QStringLiteral("%1 holds an earlier scan; --overwrite replaces it").arg(path));
}

QString ScanFolder::recordPath() const
{
    return folder.filePath(QStringLiteral("scan.json"));
}

QString ScanFolder::contactSheetPath() const
{
    return folder.filePath(QStringLiteral("contact-sheet.png"));
}

QString ScanFolder::imageName(int frame, int camera)
{
    return QString::asprintf("frame-%05d-camera-%d.png", frame, camera);
}

QString ScanFolder::imageName(int frame, int camera, int place)
{
    return QString::asprintf("frame-%05d-camera-%d-image-%d.png", frame, camera, place);
}

void ScanFolder::removeImages()
{
    for (const QString &name : images()) {
        QFile file(folder.filePath(name));
        if (!file.remove())
            raiseUnwritable(file.fileName(), file.errorString());
    }
}

// A file that is not whole yet has six letters behind its name.
QStringList ScanFolder::images() const
{
    static const QRegularExpression pattern(
        QStringLiteral("^(frame-(\\d{5}|-\\d{4})\\d*-camera-\\d+(-image-\\d+)?\\.png|"
                       "contact-sheet\\.png)(\\.[A-Za-z]{6})?$"));
    return folder.entryList(QDir::Files).filter(pattern);
}

// A scan may take days. Whether the process that holds the lock still runs is looked at all the
// same.
void ScanFolder::lock()
{
    lockFile.setStaleLockTime(0);
    if (lockFile.tryLock())
        return;
    qint64 process = 0;
    QString host;
    QString program;
    if (lockFile.error() == QLockFile::LockFailedError &&
        lockFile.getLockInfo(&process, &host, &program))
        raiseUnwritable(folder.path(), QStringLiteral("process %1 scans into it").arg(process));
    raiseUnwritable(folder.path(), QStringLiteral("the folder cannot be locked"));
}

} // namespace KvSyncCli
