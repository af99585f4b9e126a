#include "output/OutputFolder.h"

#include "output/AtomicFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryFile>

namespace KvSyncCli {

namespace {

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
