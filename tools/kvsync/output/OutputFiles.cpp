#include "output/OutputFiles.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryFile>

namespace KvSyncCli {

namespace {

// A commit does not notice when the last buffered bytes find no room. A disk that gets full takes a
// part of them first, and tells why it takes no more when it is offered the rest.
bool writeBuffered(QSaveFile &file)
{
    return file.flush() || file.flush();
}

QStringList missingFolders(const QString &path)
{
    QStringList missing;
    QString folder = QDir::cleanPath(QDir(path).absolutePath());
    while (!QFileInfo::exists(folder) && !QDir(folder).isRoot()) {
        missing.append(folder);
        folder = QFileInfo(folder).path();
    }
    return missing;
}

} // namespace

void writeAtomically(const QString &path, const std::function<bool(QIODevice &file)> &write)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        raiseUnwritable(PathNotExist, path, file.errorString());
    if (!write(file) || !writeBuffered(file) || !file.commit())
        raiseUnwritable(DeviceOperationFailed, path, file.errorString());
}

bool writeAll(QIODevice &file, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

void raiseUnwritable(ErrorCode code, const QString &path, const QString &reason)
{
    throw KvSyncTool::Exception(code, QStringLiteral("%1 cannot be written: %2").arg(path, reason));
}

void removeFiles(const QDir &folder, const QStringList &names)
{
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        if (!file.remove())
            raiseUnwritable(DeviceOperationFailed, file.fileName(), file.errorString());
    }
}

OutputFolder::OutputFolder(const QString &path, const QStringList &missingFolders)
    : folder(path)
    , made(missingFolders)
{
}

// Once the delegate is done the destructor runs, even if what follows throws.
OutputFolder::OutputFolder(const QString &path)
    : OutputFolder(path, missingFolders(path))
{
    if (!folder.mkpath(QStringLiteral(".")))
        raiseUnwritable(PathNotExist, path, QStringLiteral("the folder cannot be made"));
    QTemporaryFile probe(folder.filePath(QStringLiteral("kvsync-XXXXXX")));
    if (!probe.open())
        raiseUnwritable(PathNotExist, path, probe.errorString());
}

OutputFolder::~OutputFolder()
{
    for (const QString &each : made)
        if (!QDir().rmdir(each))
            return;
}

} // namespace KvSyncCli
