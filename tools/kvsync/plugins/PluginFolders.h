#ifndef KVSYNC_PLUGINFOLDERS_H
#define KVSYNC_PLUGINFOLDERS_H

#include "Command.h"
#include "PluginReport.h"

#include <vector>

namespace KvSyncCli {

/// One of the two folders that the core looks into.
struct PluginFolder
{
    PluginKind kind;
    QString path; ///< as the core puts it together, never cleaned
};

/// Command plug-ins first.
std::vector<PluginFolder> pluginFolders(const GlobalOptions &options);

/// Where a file that the user names stands, and what is expected there.
struct PluginPlace
{
    QString folder;
    QString filePath;
    PluginKind expected;
};

/// A bare name is looked for in both folders, then beside the user; a path is a path. Throws
/// `PathNotExist`.
PluginPlace findPlugin(const GlobalOptions &options, const QString &file);

} // namespace KvSyncCli

#endif
