#ifndef KVSYNC_PLUGINREPORT_H
#define KVSYNC_PLUGINREPORT_H

#include "LibraryFile.h"
#include "LibrarySearch.h"
#include "plugins/PluginFileName.h"
#include "plugins/PluginKind.h"

#include <QtCore/QJsonObject>

#include <optional>
#include <vector>

namespace KvSyncCli {

/// One cause why the core does not load a file, or cannot use it; or something that is odd in one
/// that it does. Programs go by the code.
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
    std::vector<Reason> reasons = {};  ///< the nearest first
    std::vector<Reason> warnings = {}; ///< none of which keeps it from being loaded

    /// Whether the core's choice falls on this file, good or bad.
    bool isSelected() const;
    /// Whether it is also fit to be loaded and used, as far as is known.
    bool wouldLoad() const { return reasons.empty(); }
    QString iid() const;
};

/// How many milliseconds loading may take where it is to be tried; without a number, nothing of a
/// plug-in's code runs.
using LoadLimit = std::optional<int>;

/// Looks at one entry of a folder. `expected` is the kind that the folder is for, or Unknown for a
/// folder that is for both.
PluginReport inspectPlugin(const PluginSelection &folder, const QString &filePath,
                           PluginKind expected, const LoadLimit &loadLimitMs);

} // namespace KvSyncCli

#endif
