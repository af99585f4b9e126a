#ifndef KVSYNC_PLUGINDIRECTORY_H
#define KVSYNC_PLUGINDIRECTORY_H

#include <QtCore/QString>

namespace KvSyncCli {

/// A folder that the user names, from wherever the user stands, as the core takes it: the way there
/// from the application's folder. Throws `InvalidParameter` if there is none, which is so between
/// two drives.
QString wayFromApplication(const QString &folder);

/// The folder at the end of such a way, put together as the core does it.
QString pluginDirectory(const QString &way);

} // namespace KvSyncCli

#endif
