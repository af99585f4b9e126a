// What a user or the system ends by a signal: the real program, a real signal.
#include "Kvsync.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <csignal>

using namespace KvSyncTest;

class KvsyncInterruption : public testing::Test
{
protected:
    /// A scan that gets no frame for a minute.
    QStringList idleScan() const
    {
        return {QStringLiteral("scan"),
                QStringLiteral("--verbose"),
                QStringLiteral("--overwrite"),
                QStringLiteral("--frames"),
                QStringLiteral("2"),
                QStringLiteral("--period"),
                QStringLiteral("60000"),
                QStringLiteral("--timeout"),
                QStringLiteral("3600000"),
                QStringLiteral("--out"),
                folder.filePath(QStringLiteral("scan"))};
    }

    void start(const QStringList &words)
    {
        process.setReadChannel(QProcess::StandardError);
        process.start(kvsyncProgram(), words);
    }

    /// Lets the scanner library keep kvsync waiting in this function.
    QStringList delayed(const QString &function, int delayMs) const
    {
        const QString plan = folder.filePath(QStringLiteral("plan.json"));
        writeFile(plan, QStringLiteral(R"({"faults": [{"function": "%1", "delayMs": %2}]})")
                            .arg(function)
                            .arg(delayMs)
                            .toUtf8());
        return {QStringLiteral("--plan"), plan};
    }

    /// Waits for this text of the log.
    void waitFor(const QByteArray &text)
    {
        while (!log.contains(text)) {
            ASSERT_TRUE(process.waitForReadyRead(longestWaitMs)) << log.toStdString();
            log += process.readAllStandardError();
        }
    }

    void send(int signal)
    {
        ASSERT_GT(process.processId(), 0);
        ASSERT_EQ(kill(static_cast<pid_t>(process.processId()), signal), 0);
    }

    int exitCode()
    {
        EXPECT_TRUE(process.waitForFinished(longestWaitMs));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        log += process.readAllStandardError();
        return process.exitCode();
    }

    static constexpr int longestWaitMs = 60000;

    QTemporaryDir folder;
    QProcess process;
    QByteArray log; ///< what came on standard error
};

TEST_F(KvsyncInterruption, ASignalClosesTheScannerAndTellsInTheExitStatus)
{
    struct Row
    {
        int signal;
        int exitCode;
        QByteArray name;
    };
    for (const Row &row :
         {Row{SIGINT, 130, "SIGINT"}, Row{SIGTERM, 143, "SIGTERM"}, Row{SIGHUP, 129, "SIGHUP"}}) {
        log.clear();
        start(idleScan());
        waitFor(" setScanCallback success");
        send(row.signal);
        EXPECT_EQ(exitCode(), row.exitCode);
        EXPECT_TRUE(log.contains("disconnectDevice start")) << log.toStdString();
        EXPECT_TRUE(log.contains("kvsync: Ended by " + row.name + "\n")) << log.toStdString();
    }
}

TEST_F(KvsyncInterruption, AScanKeepsWhatCameAndTellsWhyItEnded)
{
    const QString out = folder.filePath(QStringLiteral("scan"));
    start({QStringLiteral("scan"), QStringLiteral("--frames"), QStringLiteral("100000"),
           QStringLiteral("--period"), QStringLiteral("40"), QStringLiteral("--out"), out});
    // By their number alone: a loaded machine drops frames.
    const QStringList images{QStringLiteral("frame-*.png")};
    while (QDir(out).entryList(images, QDir::Files).size() < 3)
        ASSERT_FALSE(process.waitForFinished(5)) << process.readAllStandardError().toStdString();
    send(SIGINT);
    EXPECT_EQ(exitCode(), 130);
    EXPECT_EQ(log.toStdString(), "kvsync: SIGINT: closing what is open; a second one ends at once\n"
                                 "kvsync: Ended by SIGINT\n");
    const QJsonObject record = recordIn(out);
    EXPECT_EQ(record.value(QStringLiteral("reason")), QJsonValue(QStringLiteral("interrupted")));
    EXPECT_EQ(record.value(QStringLiteral("text")), QJsonValue(QStringLiteral("Ended by SIGINT")));
    EXPECT_EQ(record.value(QStringLiteral("requested")), QJsonValue(100000));
    EXPECT_EQ(record.value(QStringLiteral("balanced")), QJsonValue(true));
    EXPECT_GE(record.value(QStringLiteral("delivered")).toInt(), 2);
    expectImages(out, record);
}

TEST_F(KvsyncInterruption, ASignalWhileTheScannerIsOpenedClosesIt)
{
    start(idleScan() + delayed(QStringLiteral("ConnectDevice"), 1500));
    waitFor(" before connect");
    send(SIGTERM);
    EXPECT_EQ(exitCode(), 143);
    EXPECT_TRUE(log.contains("disconnectDevice start")) << log.toStdString();
}

TEST_F(KvsyncInterruption, ASecondSignalEndsAtOnce)
{
    start(idleScan() + delayed(QStringLiteral("DisConnectDevice"), 600000));
    waitFor(" setScanCallback success");
    send(SIGINT);
    waitFor("kvsync: SIGINT: closing what is open; a second one ends at once\n");
    waitFor("disconnectDevice start");
    send(SIGINT);
    ASSERT_TRUE(process.waitForFinished(longestWaitMs));
    EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(process.exitCode(), SIGINT);
}

TEST_F(KvsyncInterruption, ACallOfAPluginDeviceIsEndedToo)
{
    start({QStringLiteral("device"), QStringLiteral("rotate"), QStringLiteral("3000"),
           QStringLiteral("--speed"), QStringLiteral("0.01"), QStringLiteral("--verbose"),
           QStringLiteral("--plugin"), QStringLiteral("VirtualScanner"), QStringLiteral("--index"),
           QStringLiteral("2")});
    waitFor("VirtualScanner.1.0");
    send(SIGTERM);
    EXPECT_EQ(exitCode(), 143);
}
