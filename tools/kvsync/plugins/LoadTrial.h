#ifndef KVSYNC_LOADTRIAL_H
#define KVSYNC_LOADTRIAL_H

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KvSyncCli {

/// What became of a plug-in that was loaded.
struct LoadOutcome
{
    bool hasRoot = false;     ///< whether it yielded a root object
    bool refused = false;     ///< whether the system's loader refused it, so that none of it ran
    QStringList answers = {}; ///< the identifiers of ours that the root object answers to
    QString failure = {};     ///< why there is no root object
    QString remark = {};      ///< what would harm the host of one that loaded
};

/// Loads the plug-in as the core would, which runs its code: in another kvsync, which may crash,
/// hang or print as it likes, and has that long for loading and ending together.
LoadOutcome tryToLoad(const QString &filePath, int limitMs);

} // namespace KvSyncCli

#endif
