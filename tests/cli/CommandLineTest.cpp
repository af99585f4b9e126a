#include "Kvsync.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

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

TEST(KvsyncCommandLine, SaysThatACommandIsUnknown)
{
    for (const QStringList &words :
         {QStringList{QStringLiteral("dance")},
          QStringList{QStringLiteral("scanner"), QStringLiteral("dance")},
          QStringList{QStringLiteral("device"), QStringLiteral("--verbose"),
                      QStringLiteral("dance")}})
        expectWrongCommandLine(words, QStringLiteral("kvsync: InvalidParameter (0x01000009): There "
                                                     "is no command \"dance\""));
    expectWrongCommandLine(
        {QStringLiteral("--loud")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): There is no option --loud"));
}

TEST(KvsyncCommandLine, TellsItsVersion)
{
    const Outcome outcome = runKvsync({QStringLiteral("--version")});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors.toStdString(), "");
    EXPECT_EQ(outcome.output.toStdString(), "kvsync " KVSYNC_VERSION "\n");
}

TEST(KvsyncCommandLine, RefusesEmptyTextsThatWouldMeanNothing)
{
    const QStringList scan{QStringLiteral("scan"), QStringLiteral("--frames"), QStringLiteral("1")};
    const QStringList device{QStringLiteral("device"), QStringLiteral("info")};
    const auto refuses = [](const QStringList &words, const QString &option) {
        expectWrongCommandLine(words + QStringList{option, QString()},
                               QStringLiteral("kvsync: InvalidParameter (0x01000009): %1: An empty "
                                              "text means nothing here")
                                   .arg(option));
    };
    for (const char *const option : {"--out", "--plan", "--project", "--logic-dir", "--device-dir"})
        refuses(scan, QString::fromLatin1(option));
    for (const char *const option : {"--plugin", "--plugin-version"})
        refuses(device, QString::fromLatin1(option));
}

TEST(KvsyncCommandLine, TakesPluginFoldersFromWhereTheUserStands)
{
    const QFileInfo logic(logicFolder());
    for (const QString &path : {logic.path() + QStringLiteral("/./Logic"), QStringLiteral("Logic"),
                                QStringLiteral("Logic/../Logic/")}) {
        QProcess process;
        process.setWorkingDirectory(logic.path());
        const Outcome outcome = runKvsync({QStringLiteral("scanner"), QStringLiteral("list"),
                                           QStringLiteral("--logic-dir"), path},
                                          process);
        EXPECT_EQ(outcome.exitCode, 0) << path.toStdString() << outcome.errors.toStdString();
    }
    QTemporaryDir elsewhere;
    QProcess process;
    process.setWorkingDirectory(elsewhere.path());
    const Outcome outcome = runKvsync({QStringLiteral("scanner"), QStringLiteral("list"),
                                       QStringLiteral("--logic-dir"), QStringLiteral("Logic")},
                                      process);
    EXPECT_NE(outcome.exitCode, 0); // nothing is there, or no way leads there
}

#ifdef Q_OS_WIN
TEST(KvsyncCommandLine, SaysThatNoWayLeadsToAnotherDrive)
{
    const QString here = QFileInfo(logicFolder()).path();
    const QString drive =
        here.startsWith(QLatin1Char('C')) ? QStringLiteral("D:/") : QStringLiteral("C:/");
    expectWrongValue(
        {QStringLiteral("scanner"), QStringLiteral("list"), QStringLiteral("--logic-dir"),
         drive + QStringLiteral("Logic")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): No way leads from %1 to "
                       "%2Logic: plug-in folders stand on the drive of kvsync itself")
            .arg(here, drive));
}
#endif

TEST(KvsyncCommandLine, RefusesPluginFoldersOfOneName)
{
    const QString device = QFileInfo(logicFolder()).path() + QStringLiteral("/Device");
    expectWrongValue(
        {QStringLiteral("scanner"), QStringLiteral("list"), QStringLiteral("--logic-dir"), device},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): Plug-in path  Device and "
                       "Plug-in path Device cannot be the same or null"));
}
