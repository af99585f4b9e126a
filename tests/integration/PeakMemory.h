#ifndef KVSYNC_TESTS_INTEGRATION_PEAKMEMORY_H
#define KVSYNC_TESTS_INTEGRATION_PEAKMEMORY_H

#include <QtCore/QtGlobal>

namespace KvSyncTest {

/// The most memory that this process has had resident so far; 0 if the system does not tell.
qint64 peakResidentBytes();

} // namespace KvSyncTest

#endif
