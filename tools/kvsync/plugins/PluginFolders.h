#ifndef KVSYNC_PLUGINFOLDERS_H
#define KVSYNC_PLUGINFOLDERS_H

#include "plugins/PluginKind.h"

#include <vector>

namespace KvSyncCli {

/// The two folders that the core looks into, as it takes them: relative to the application's
/// folder.
struct PluginDirectories
{
    QString logic = QStringLiteral("Logic");   ///< of the command plug-ins
    QString device = QStringLiteral("Device"); ///< of the device plug-ins
};

/// A folder that the user names, relative to where the user stands, as such a path. Throws
/// `PathNotExist` if there is no such folder, and `InvalidParameter` if no relative path leads
/// there, which is so between two drives.
QString pathFromApplication(const QString &folder);

/// The folder of such a path, joined as the core joins it, never cleaned.
QString pluginDirectory(const QString &relativePath);

/// One of the two folders.
struct PluginFolder
{
    PluginKind kind;
    QString path; ///< as pluginDirectory joins it
};

/// Command plug-ins first.
std::vector<PluginFolder> pluginFolders(const PluginDirectories &directories);

/// Where a file that the user names stands, and what is expected there.
struct PluginPlace
{
    QString folder;
    QString filePath;
    PluginKind expected;
};

/// A bare name is looked for in both folders, then beside the user; a path is a path. Throws
/// `PathNotExist`.
PluginPlace findPlugin(const PluginDirectories &directories, const QString &file);

} // namespace KvSyncCli

#endif
