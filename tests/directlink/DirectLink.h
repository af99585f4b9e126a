#ifndef KVSYNC_TESTS_DIRECTLINK_H
#define KVSYNC_TESTS_DIRECTLINK_H

#include "Journal.h"
#include "KvSyncCore/DeviceController.h"
#include "device/DeviceManager.h"
#include "support/RecordingScanner/RecordingScanner.h"

#include <gmock/gmock.h>

namespace KvSyncTest {

/// A handle that names nothing: the direct link does not look at it.
constexpr DeviceHandle anyHandle = 99;

constexpr Tessel3Sync::RETSTATUS accepted = Tessel3Sync::RETSTATUS_SUCCESS;
constexpr Tessel3Sync::RETSTATUS refused = Tessel3Sync::RETSTATUS(3);

/// Pointers of the host, by the names under which they are recorded: "onScan", "onStatus" and
/// "context".
void *onScan();
void *onStatus();
void *context();

/// Effects with which every function writes something that differs from every initial value.
ScannerEffects talkativeScanner();

/// A device manager over the recording scanner, with its controller. Its connection is recorded as
/// "device", the manager itself as "manager". Debug output is on, whatever the machine says.
class DirectLink
{
public:
    DirectLink();
    ~DirectLink();
    DirectLink(const DirectLink &) = delete;
    DirectLink &operator=(const DirectLink &) = delete;

    /// Connects to the cameras "A" (values 1 and 3) and "B" (2 and 4).
    void connect();

    RecordingScanner &scanner;
    KvSyncCore::DeviceManager manager;
    KvSyncCore::DeviceController controller{&manager};
};

/// A fixture that is connected from the start.
class ConnectedScanner : public ::testing::Test
{
protected:
    ConnectedScanner() { link.connect(); }

    DirectLink link;
    RecordingScanner &scanner = link.scanner;
    KvSyncCore::DeviceController &controller = link.controller;
};

/// A fixture without a connection.
class UnconnectedScanner : public ::testing::Test
{
protected:
    DirectLink link;
    RecordingScanner &scanner = link.scanner;
    KvSyncCore::DeviceController &controller = link.controller;
};

} // namespace KvSyncTest

#endif
