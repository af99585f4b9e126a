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
        QStringLiteral("kvsync: InvalidParameter (0x01000009): There is no option --loud"),
        QStringLiteral("kvsync exec"));
}

TEST(KvsyncCommandLine, SaysThatACommandIsUnknown)
{
    const QString line =
        QStringLiteral("kvsync: InvalidParameter (0x01000009): There is no command \"dance\"");
    expectWrongCommandLine({QStringLiteral("dance")}, line);
    expectWrongCommandLine({QStringLiteral("scanner"), QStringLiteral("dance")}, line,
                           QStringLiteral("kvsync scanner"));
    expectWrongCommandLine(
        {QStringLiteral("device"), QStringLiteral("--verbose"), QStringLiteral("dance")}, line,
        QStringLiteral("kvsync device"));
    expectWrongCommandLine(
        {QStringLiteral("--loud")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): There is no option --loud"));
}

TEST(KvsyncCommandLine, NamesAMisspeltOptionNotTheOneThatItMissesForIt)
{
    expectWrongCommandLine(
        {QStringLiteral("scan"), QStringLiteral("-frames"), QStringLiteral("1"),
         QStringLiteral("--out"), QStringLiteral("x")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): There is no option -frames"),
        QStringLiteral("kvsync scan"));
}

TEST(KvsyncCommandLine, PointsToTheHelpOfTheInnermostCommand)
{
    expectWrongCommandLine(
        {QStringLiteral("scanner"), QStringLiteral("user-info"), QStringLiteral("write")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): TEXT is required"),
        QStringLiteral("kvsync scanner user-info write"));
}

TEST(KvsyncCommandLine, WordsThatNobodyKnowsAreWrongCommandLines)
{
    QTemporaryDir folder;
    const QStringList scan{QStringLiteral("scan"), QStringLiteral("--frames"), QStringLiteral("1"),
                           QStringLiteral("--out"), folder.filePath(QStringLiteral("scan"))};
    const QStringList wrong[] = {
        scan + QStringList{QStringLiteral("--project"), QStringLiteral("foo")},
        scan + QStringList{QStringLiteral("--switch"), QStringLiteral("foo=on")},
        scan + QStringList{QStringLiteral("--set"), QStringLiteral("foo=1")},
        {QStringLiteral("scanner"), QStringLiteral("set"), QStringLiteral("nope"),
         QStringLiteral("1")},
        {QStringLiteral("scanner"), QStringLiteral("command"), QStringLiteral("Nope")},
    };
    for (const QStringList &words : wrong) {
        const Outcome outcome = runKvsync(words);
        EXPECT_EQ(outcome.exitCode, 2) << words.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(
            outcome.errors.startsWith(QStringLiteral("kvsync: FunctionNotExist (0x01002000): ")))
            << outcome.errors.toStdString();
    }
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
    const auto refuses = [](const QStringList &words, const QString &option,
                            const QString &command) {
        expectWrongCommandLine(words + QStringList{option, QString()},
                               QStringLiteral("kvsync: InvalidParameter (0x01000009): %1: An empty "
                                              "text means nothing here")
                                   .arg(option),
                               command);
    };
    for (const char *const option : {"--out", "--plan", "--project", "--logic-dir", "--device-dir"})
        refuses(scan, QString::fromLatin1(option), QStringLiteral("kvsync scan"));
    for (const char *const option : {"--plugin", "--plugin-version"})
        refuses(device, QString::fromLatin1(option), QStringLiteral("kvsync device info"));
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

TEST(KvsyncCommandLine, SaysThatAPluginFolderThatIsNamedIsMissing)
{
    const QString missing = QFileInfo(logicFolder()).path() + QStringLiteral("/Missing");
    for (const char *const command : {"scanner", "device", "plugins"})
        for (const char *const option : {"--logic-dir", "--device-dir"}) {
            QStringList words{QString::fromLatin1(command), QStringLiteral("list"),
                              QString::fromLatin1(option), missing};
            if (words.first() == QLatin1String("plugins"))
                words.removeAt(1);
            expectFailure(words, QStringLiteral("kvsync: PathNotExist (0x01000001): There is no "
                                                "plug-in folder ") +
                                     missing);
        }
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
