#ifndef KVSYNC_TESTS_DEVICELOADING_H
#define KVSYNC_TESTS_DEVICELOADING_H

#include "device/support/DeviceTest.h"

namespace KvSyncTest {

/// loadDevicePlugin and everything that it logs, in order.
class DeviceLoading : public DeviceTest
{
protected:
    /// A fixture that loads, under that file name.
    void put(const QString &fileName);

    ErrorCode load(const QString &name, const QVersionNumber &wanted);

    /// What both logs say before a file is loaded.
    std::vector<LogLine> loadLines(const QString &fileName) const;

    void expectLoads(const QString &name, const QVersionNumber &wanted, const QString &fileName);

    /// The load fails so, and the plug-in still counts as not loaded.
    void expectFailure(const QString &name, const QVersionNumber &wanted, ErrorCode code,
                       const std::vector<LogLine> &lines);
    void expectMissingDirectory(const QString &name, const QVersionNumber &wanted,
                                const QString &directory);
    void expectNoFile(const QString &name, const QVersionNumber &wanted);

    const QString camera = "Camera";
    const QVersionNumber camera217{2, 1, 7};
};

} // namespace KvSyncTest

#endif
