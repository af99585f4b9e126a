#ifndef KVSYNC_REPORTTEXT_H
#define KVSYNC_REPORTTEXT_H

#include "plugins/PluginReport.h"

namespace KvSyncCli {

/// A line of the list, for people.
QString shortText(const PluginReport &report);
/// All that is known, for people.
QString fullText(const PluginReport &report);

} // namespace KvSyncCli

#endif
