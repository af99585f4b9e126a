#ifndef KVSYNC_ATOMICFILE_H
#define KVSYNC_ATOMICFILE_H

#include <KvSyncTool/ErrorCode.h>
#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QString>

#include <functional>

namespace KvSyncCli {

/// Writes a file whole or not at all: under another name first, which replaces `path` in the end.
/// `write` returns whether it could write. Leaves `path` as it was if it throws: `PathNotExist` if
/// there is no place for such a file, `DeviceOperationFailed` if its bytes cannot be written, as on
/// a full disk.
void writeAtomically(const QString &path, const std::function<bool(QIODevice &file)> &write);

/// Writes all bytes. A disk that gets full takes a part of them first, and tells why it takes no
/// more when it is offered the rest.
bool writeAll(QIODevice &file, const QByteArray &bytes);

/// "PATH cannot be written: REASON"
[[noreturn]] void raiseUnwritable(ErrorCode code, const QString &path, const QString &reason);

} // namespace KvSyncCli

#endif
