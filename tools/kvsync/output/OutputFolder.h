#ifndef KVSYNC_OUTPUTFOLDER_H
#define KVSYNC_OUTPUTFOLDER_H

#include <QtCore/QDir>
#include <QtCore/QStringList>

namespace KvSyncCli {

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
