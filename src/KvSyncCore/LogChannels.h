#ifndef KVSYNCCORE_LOGCHANNELS_H
#define KVSYNCCORE_LOGCHANNELS_H

#include "KvSyncTool/ToolLogger.h"

#include <QtCore/QDebug>

// Lines carry the signature of the operation that writes them, so these stay macros: a function
// would put its own signature into the log. Texts come out exactly as streamed.

#define KVSYNC_DEBUG qCDebug(KvSyncTool::ToolLogger).nospace().noquote()
#define KVSYNC_CRITICAL qCCritical(KvSyncTool::ToolLogger).nospace().noquote()

#endif
