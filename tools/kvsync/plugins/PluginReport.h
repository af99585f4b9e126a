#ifndef KVSYNC_PLUGINREPORT_H
#define KVSYNC_PLUGINREPORT_H

#include "LibraryFile.h"
#include "LibrarySearch.h"
#include "PluginFileName.h"

#include <QtCore/QJsonObject>

#include <vector>

namespace KvSyncCli {

enum class PluginKind {
    Unknown,
    CommandPlugin,
    DevicePlugin,
};

/// "command", "device", or null for what is neither.
const char *kindName(PluginKind kind);

/// One cause why the core does not load a file, or cannot use it. Programs go by the code.
struct Reason
{
    const char *code;
    QString text;
};

/// All that can be told of one file.
struct PluginReport
{
    QString filePath;
    PluginFileName fileName;
    bool found = false;  ///< by the pattern of its own name
    QString winner = {}; ///< the file that the core takes for that pattern; empty if there is none
    LibraryFile library = {};
    QJsonObject metaData = {};
    PluginKind kind = PluginKind::Unknown;
    std::vector<NeededLibrary> needed = {};
    std::vector<Reason> reasons = {}; ///< the nearest first

    /// Whether the core's choice falls on this file, good or bad.
    bool isSelected() const;
    /// Whether it is also fit to be loaded and used, as far as is known.
    bool wouldLoad() const { return reasons.empty(); }
    QString iid() const;
};

enum class LoadTrial {
    No,  ///< the plug-in's code is not run
    Yes, ///< it is, as the core would run it
};

/// Looks at one entry of a folder. `expected` is the kind that the folder is for, or Unknown for a
/// folder that is for both.
PluginReport inspectPlugin(const PluginSelection &folder, const QString &filePath,
                           PluginKind expected, LoadTrial trial);

} // namespace KvSyncCli

#endif
