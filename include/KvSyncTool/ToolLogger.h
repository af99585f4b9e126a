#ifndef KVSYNCTOOL_TOOLLOGGER_H
#define KVSYNCTOOL_TOOLLOGGER_H

#include "KvSyncTool/Export.h"

#include <QtCore/QLoggingCategory>

namespace KvSyncTool {

/// The system's one logging category, named "KvSyncTool". Hosts and plug-ins filter by it and write
/// to it with Qt's categorized macros. It outlives every static object of the process, so that
/// destructors may log too. Callable from any thread.
KVSYNCTOOL_EXPORT const QLoggingCategory &ToolLogger();

} // namespace KvSyncTool

#endif
