#include "PeakMemory.h"

#ifdef Q_OS_WIN
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>
#else
#include <QtCore/QFile>
#endif

namespace KvSyncTest {

#ifdef Q_OS_WIN

qint64 peakResidentBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
        return 0;
    return static_cast<qint64>(counters.PeakWorkingSetSize);
}

#else

qint64 peakResidentBytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine()) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).replace("kB", "").trimmed().toLongLong() * 1024;
    }
    return 0;
}

#endif

} // namespace KvSyncTest
