#ifndef KVSYNCTOOL_TOOLLOGGER_H
#define KVSYNCTOOL_TOOLLOGGER_H

#include "KvSyncTool/Export.h"

#include <QtCore/QLoggingCategory>

namespace KvSyncTool {

/// The one logging category of the system, named "KvSyncTool". Hosts and plug-ins filter by it and
/// write to it with Qt's categorised macros. It outlives every static object of the process, whose
/// destructors may log too; any thread may call.
KVSYNCTOOL_EXPORT const QLoggingCategory &ToolLogger();

} // namespace KvSyncTool

#endif
