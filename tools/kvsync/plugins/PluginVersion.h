#ifndef KVSYNC_PLUGINVERSION_H
#define KVSYNC_PLUGINVERSION_H

#include <QtCore/QString>
#include <QtCore/QVersionNumber>

namespace KvSyncCli {

/// The version line of a plug-in to load: `asked`, or the newest in the directory if that is empty.
/// Throws `InvalidParameter` for a text that is no version, `PathNotExist` if there is no such
/// directory, and `PluginFileNotExist`, whose text names the plug-ins that are there.
QVersionNumber choosePluginVersion(const QString &directory, const QString &plugin,
                                   const QString &asked);

} // namespace KvSyncCli

#endif
