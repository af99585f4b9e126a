#ifndef KVSYNC_REPORTJSON_H
#define KVSYNC_REPORTJSON_H

#include "plugins/PluginReport.h"

namespace KvSyncCli {

/// A line of the list, for programs.
QJsonObject shortJson(const PluginReport &report);
/// All that is known, for programs; the list's keys among it.
QJsonObject fullJson(const PluginReport &report);

} // namespace KvSyncCli

#endif
