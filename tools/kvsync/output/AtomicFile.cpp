#include "output/AtomicFile.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QSaveFile>

namespace KvSyncCli {

namespace {

// A commit does not notice when the last buffered bytes find no room. A disk that gets full takes a
// part of them first, and tells why it takes no more when it is offered the rest.
bool writeBuffered(QSaveFile &file)
{
    return file.flush() || file.flush();
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

} // namespace KvSyncCli
