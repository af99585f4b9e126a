#ifndef KVSYNC_TESTS_HOSTFIXTURE_H
#define KVSYNC_TESTS_HOSTFIXTURE_H

#include "KvSyncCore/SyncCore.h"
#include "fixtures/plugins/Recorder/RecorderControl.h"
#include "support/ApplicationFolder.h"
#include "support/ExpectThrows.h"
#include "support/LogCapture.h"
#include "support/RowName.h"

#include <gtest/gtest.h>

#include <vector>

namespace KvSyncTest {

/// A host of its own over the exported facade, with the plug-in Recorder at hand as Demo 1.0.
class HostFixture : public ::testing::Test
{
protected:
    HostFixture()
    {
        folder.copyModule(commandFixture("Recorder"), "Demo.1.0.1.dll");
        core.init(folder.name(), "Device");
    }

    RecorderControl &loadDemo()
    {
        core.loadCommandPlugin("Demo", {1, 0});
        return control();
    }

    RecorderControl &control()
    {
        auto *const found = qobject_cast<RecorderControl *>(core.getCommandPlugin("Demo", {1, 0}));
        EXPECT_NE(found, nullptr);
        return *found;
    }

    QVariant execute(const QString &function, const QVariantList &arguments = {})
    {
        return core.execute("Demo", function, arguments, {1, 0});
    }

    static LogLine findLine(const QString &key) { return debugLine("find " + key + " plugin"); }

    ApplicationFolder folder;
    KvSyncCore::SyncCore core;
    LogCapture log;
};

} // namespace KvSyncTest

#endif
