#include "Kvsync.h"

using namespace KvSyncTest;

TEST(KvsyncCommandLine, HelpGoesToStandardOutputAndIsNoFailure)
{
    for (const QString &command :
         {QString(), QStringLiteral("scan"), QStringLiteral("exec"), QStringLiteral("scanner"),
          QStringLiteral("scanner set"), QStringLiteral("plugins"), QStringLiteral("plugins why"),
          QStringLiteral("scanner user-info write")}) {
        const QStringList words = command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const Outcome outcome = runKvsync(words + QStringList{QStringLiteral("--help")});
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.errors.toStdString(), "");
        EXPECT_TRUE(outcome.output.contains(QStringLiteral("Usage: kvsync ") + command))
            << outcome.output.toStdString();
    }
}

TEST(KvsyncCommandLine, NeedsACommand)
{
    expectWrongCommandLine(
        {}, QStringLiteral("kvsync: InvalidParameter (0x01000009): A subcommand is required"));
}

TEST(KvsyncCommandLine, RefusesAnUnknownOption)
{
    expectWrongCommandLine(
        {QStringLiteral("exec"), QStringLiteral("Scanner"), QStringLiteral("getRunningDevList"),
         QStringLiteral("--loud")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): The following argument was not "
                       "expected: --loud"));
}

TEST(KvsyncCommandLine, RefusesPluginFoldersOfOneName)
{
    expectFailure({QStringLiteral("exec"), QStringLiteral("Scanner"),
                   QStringLiteral("getRunningDevList"), QStringLiteral("--logic-dir"),
                   QStringLiteral("Device")},
                  QStringLiteral("kvsync: InvalidParameter (0x01000009): Plug-in path  Device and "
                                 "Plug-in path Device cannot be the same or null"));
}
