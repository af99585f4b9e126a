#ifndef KVSYNC_TESTS_CRITICALLINESOFF_H
#define KVSYNC_TESTS_CRITICALLINESOFF_H

#include <QtCore/QLoggingCategory>

namespace KvSyncTest {

/// While it lives, the system's category does not take critical lines.
class CriticalLinesOff
{
public:
    CriticalLinesOff() { QLoggingCategory::setFilterRules("KvSyncTool.critical=false"); }
    ~CriticalLinesOff() { QLoggingCategory::setFilterRules(QString()); }
    CriticalLinesOff(const CriticalLinesOff &) = delete;
    CriticalLinesOff &operator=(const CriticalLinesOff &) = delete;
};

} // namespace KvSyncTest

#endif
