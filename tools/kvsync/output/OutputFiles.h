#ifndef KVSYNC_OUTPUTFILES_H
#define KVSYNC_OUTPUTFILES_H

#include <KvSyncTool/ErrorCode.h>
#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QIODevice>
#include <QtCore/QStringList>

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

/// Removes these files of a folder. Throws `DeviceOperationFailed`.
void removeFiles(const QDir &folder, const QStringList &names);

/// A folder that a command writes into. Folders that had to be made for it are removed again if
/// they are still empty in the end.
class OutputFolder
{
public:
    /// Throws `PathNotExist` if files cannot be written there: better before a scan than after it.
    explicit OutputFolder(const QString &path);
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    const QDir &dir() const { return folder; }

private:
    /// Makes nothing yet.
    OutputFolder(const QString &path, const QStringList &missingFolders);

    const QDir folder;
    const QStringList made; ///< the innermost first
};

} // namespace KvSyncCli

#endif
