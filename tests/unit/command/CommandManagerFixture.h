#ifndef KVSYNC_TESTS_COMMANDMANAGERFIXTURE_H
#define KVSYNC_TESTS_COMMANDMANAGERFIXTURE_H

#include "command/CommandManager.h"
#include "support/ApplicationFolder.h"
#include "support/ExpectThrows.h"
#include "support/LogCapture.h"
#include "support/RowName.h"

#include <QtCore/QFile>
#include <gtest/gtest.h>

#include <vector>

namespace KvSyncTest {

/// A manager that looks into a folder of its own, and what it logs.
class CommandManagerFixture : public ::testing::Test
{
protected:
    CommandManagerFixture() { manager.setPluginDirPath(folder.name()); }

    /// Puts a good plug-in into the folder under each name.
    void provide(const QStringList &fileNames)
    {
        for (const QString &fileName : fileNames)
            folder.copyModule(commandFixture("Recorder"), fileName);
    }

    LogLine loadLine(const QString &fileName) const
    {
        return debugLine("load device plugin " + folder.filePath(fileName));
    }

    static LogLine findLine(const QString &key) { return debugLine("find " + key + " plugin"); }

    void expectLog(const std::vector<LogLine> &expected) const { EXPECT_EQ(log.lines(), expected); }

    void expectNotLoaded(const QString &name, const QVersionNumber &version, const QString &key)
    {
        expectThrows(PluginNotLoaded, key + " plugin is not exist",
                     [&] { manager.getCommandInterface(name, version); });
    }

    ApplicationFolder folder;
    KvSyncCore::CommandManager manager;
    LogCapture log;
};

} // namespace KvSyncTest

#endif
