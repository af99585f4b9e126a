#include "output/ScanFolder.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

namespace KvSyncCli {

ScanFolder::ScanFolder(const QString &path, bool replaceEarlier)
    : folder(path)
    , lockFile(dir().filePath(QStringLiteral("scan.lock")))
{
    lock();
    if (replaceEarlier || (!QFileInfo::exists(recordPath()) && images().isEmpty()))
        return;
    const QString what = wasCutShort() ? QStringLiteral("a scan that was cut short")
                                       : QStringLiteral("an earlier scan");
    throw KvSyncTool::Exception(
        InvalidParameter, QStringLiteral("%1 holds %2; --overwrite replaces it").arg(path, what));
}

QString ScanFolder::recordPath() const
{
    return dir().filePath(QStringLiteral("scan.json"));
}

QString ScanFolder::contactSheetPath() const
{
    return dir().filePath(QStringLiteral("contact-sheet.png"));
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
    removeFiles(dir(), images());
}

// A file that is not whole yet has six letters behind its name.
QStringList ScanFolder::images() const
{
    static const QRegularExpression pattern(
        QStringLiteral("^(frame-(\\d{5}|-\\d{4})\\d*-camera-\\d+(-image-\\d+)?\\.png|"
                       "contact-sheet\\.png)(\\.[A-Za-z]{6})?$"));
    return dir().entryList(QDir::Files).filter(pattern);
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
        raiseUnwritable(PathNotExist, dir().path(),
                        QStringLiteral("process %1 scans into it").arg(process));
    raiseUnwritable(PathNotExist, dir().path(), QStringLiteral("the folder cannot be locked"));
}

// Nobody else holds the lock, so a scan that still runs by its record has none to end it.
bool ScanFolder::wasCutShort() const
{
    QFile record(recordPath());
    return record.open(QIODevice::ReadOnly) &&
           QJsonDocument::fromJson(record.readAll()).object().value(QStringLiteral("reason")) ==
               QJsonValue(QStringLiteral("running"));
}

} // namespace KvSyncCli
