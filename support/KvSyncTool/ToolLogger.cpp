#include "KvSyncTool/ToolLogger.h"

namespace KvSyncTool {

const QLoggingCategory &ToolLogger()
{
    // Never destroyed: whoever ends after this library's statics may still log.
    static const auto &category = *new QLoggingCategory("KvSyncTool");
    return category;
}

} // namespace KvSyncTool
