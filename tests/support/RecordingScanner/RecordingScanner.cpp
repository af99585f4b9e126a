#include "support/RecordingScanner/RecordingScanner.h"

namespace KvSyncTest {

RecordingScanner &recordingScanner()
{
    static RecordingScanner scanner;
    return scanner;
}

} // namespace KvSyncTest
