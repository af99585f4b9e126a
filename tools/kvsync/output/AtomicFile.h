#ifndef KVSYNC_ATOMICFILE_H
#define KVSYNC_ATOMICFILE_H

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QString>

#include <functional>

namespace KvSyncCli {

/// Writes a file whole or not at all: under another name first, which replaces `path` in the end.
/// `write` answers whether it could write. Throws `PathNotExist`, and leaves `path` as it was.
void writeAtomically(const QString &path, const std::function<bool(QIODevice &file)> &write);

/// Writes all bytes. A disk that gets full takes a part of them first, and tells why it takes no
/// more when it is offered the rest.
bool writeAll(QIODevice &file, const QByteArray &bytes);

/// "PATH cannot be written: REASON", as `PathNotExist`.
[[noreturn]] void raiseUnwritable(const QString &path, const QString &reason);

} // namespace KvSyncCli

#endif
