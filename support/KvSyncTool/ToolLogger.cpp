#include "KvSyncTool/ToolLogger.h"

namespace KvSyncTool {

const QLoggingCategory &ToolLogger()
{
    static const QLoggingCategory category("KvSyncTool");
    return category;
}

} // namespace KvSyncTool
