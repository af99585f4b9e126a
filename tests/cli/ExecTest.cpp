#include "PluginFolders.h"
#include "support/ApplicationFolder.h"

#include <QtCore/QJsonArray>
#include <QtCore/QProcess>

using namespace KvSyncTest;

namespace {

QStringList exec(const QStringList &arguments)
{
    return QStringList{QStringLiteral("exec")} + arguments;
}

const QStringList openSimulator{QStringLiteral("--open"), QStringLiteral("{\"serial\": \"\"}")};

} // namespace

TEST(KvsyncExec, PrintsResultAndSignalsAsJson)
{
    const Outcome outcome = runKvsync(
        exec({QStringLiteral("Scanner"), QStringLiteral("captureImage"), QStringLiteral("\"scan\""),
              QStringLiteral("{\"frames\": 1, \"timeoutMs\": 60000}")}) +
        openSimulator);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors.toStdString(), "");
    const QJsonObject json = outcome.json();
    EXPECT_EQ(json.value(QStringLiteral("result")).toArray().size(), 2);
    const QJsonArray events = json.value(QStringLiteral("signals")).toArray();
    ASSERT_EQ(events.size(), 3);
    const QJsonObject progress = events.at(1).toObject();
    EXPECT_EQ(progress.value(QStringLiteral("isPub")), QJsonValue(true));
    EXPECT_EQ(progress.value(QStringLiteral("plugin")), QJsonValue(QStringLiteral("Scanner")));
    EXPECT_EQ(progress.value(QStringLiteral("signal")), QJsonValue(QStringLiteral("progress")));
    EXPECT_EQ(progress.value(QStringLiteral("version")), QJsonValue(QStringLiteral("1.0")));
    EXPECT_EQ(progress.value(QStringLiteral("list"))
                  .toArray()
                  .at(0)
                  .toObject()
                  .value(QStringLiteral("delivered")),
              QJsonValue(QStringLiteral("1"))); // counts have 64 bits, which travel as text
}

TEST(KvsyncExec, PrintsByteArraysAsSizeAndHashOrInFull)
{
    const QStringList arguments =
        exec({QStringLiteral("Scanner"), QStringLiteral("captureImage"), QStringLiteral("\"scan\""),
              QStringLiteral("{\"frames\": 1, \"timeoutMs\": 60000}")}) +
        openSimulator;
    const auto dataOf = [](const Outcome &outcome) {
        return outcome.json()
            .value(QStringLiteral("result"))
            .toArray()
            .at(0)
            .toObject()
            .value(QStringLiteral("data"))
            .toObject();
    };
    const QJsonObject summary = dataOf(runKvsync(arguments));
    EXPECT_EQ(summary.value(QStringLiteral("bytes")), QJsonValue(1280 * 1024));
    EXPECT_EQ(summary.value(QStringLiteral("sha256")).toString().size(), 64);
    const QJsonObject full = dataOf(runKvsync(arguments + QStringList{QStringLiteral("--base64")}));
    EXPECT_EQ(
        QByteArray::fromBase64(full.value(QStringLiteral("base64")).toString().toLatin1()).size(),
        1280 * 1024);
}

TEST(KvsyncExec, PrintsHandlesAsTexts)
{
    const Outcome outcome =
        runKvsync(exec({QStringLiteral("Scanner"), QStringLiteral("openDevices"),
                        QStringLiteral("{\"serial\": \"KV-SIM-0001\"}")}));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.json().value(QStringLiteral("result")), QJsonValue(QStringLiteral("1")));
}

TEST(KvsyncExec, PassesHandlesThatAreTextsInFull)
{
    expectFailure(exec({QStringLiteral("Scanner"), QStringLiteral("closeDevices"),
                        QStringLiteral("\"9223372036854775807\"")}),
                  QStringLiteral("kvsync: HandleInvalid (0x010F0003): No open device has the "
                                 "handle 9223372036854775807"));
}

TEST(KvsyncExec, PassesAListInBracketsAsOneArgument)
{
    const Outcome outcome =
        runKvsync(exec({QStringLiteral("Scanner"), QStringLiteral("execute"),
                        QStringLiteral("\"info\""), QStringLiteral("[1, [2, 3]]")}) +
                  openSimulator);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    EXPECT_EQ(
        outcome.json().value(QStringLiteral("result")).toObject().value(QStringLiteral("firmware")),
        QJsonValue(QStringLiteral("KV-SIM 1.0.0")));
}

TEST(KvsyncExec, PrintsAnEmptyResultAsNull)
{
    const Outcome outcome = runKvsync(
        exec({QStringLiteral("Scanner"), QStringLiteral("resetDevices")}) + openSimulator);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    EXPECT_TRUE(outcome.json().value(QStringLiteral("result")).isNull());
}

TEST(KvsyncExec, TellsTheCoresFailures)
{
    struct Row
    {
        QStringList arguments;
        QString line;
    };
    const QString scanner = QStringLiteral("Scanner");
    const QString list = QStringLiteral("getRunningDevList");
    const Row rows[] = {
        {{QStringLiteral("Missing"), list},
         QStringLiteral(
             "kvsync: PluginFileNotExist (0x01000006): There is no plug-in Missing in ") +
             logicFolder() + QStringLiteral("; it holds Scanner 1.0")},
        {{scanner, list, QStringLiteral("--version"), QStringLiteral("7.0")},
         QStringLiteral(
             "kvsync: PluginFileNotExist (0x01000006): There is no plug-in Scanner 7.0 in ") +
             logicFolder() + QStringLiteral("; it holds Scanner 1.0")},
    };
    for (const Row &row : rows)
        expectFailure(exec(row.arguments), row.line);
}

TEST(KvsyncExec, AWrongCallIsAWrongCommandLine)
{
    expectWrongValue(
        exec({QStringLiteral("Scanner"), QStringLiteral("dance")}),
        QStringLiteral("kvsync: FunctionNotExist (0x01002000): The dance function doesn't exist"));
    expectWrongValue(
        exec({QStringLiteral("Scanner"), QStringLiteral("execute"), QStringLiteral("1")}),
        QStringLiteral("kvsync: WrongArgumentCount (0x01002001): The execute function "
                       "has the wrong number of arguments"));
    for (const QString &version : {QStringLiteral("new"), QStringLiteral("1.0beta")})
        expectWrongValue(exec({QStringLiteral("Scanner"), QStringLiteral("getRunningDevList"),
                               QStringLiteral("--version"), version}),
                         QStringLiteral("kvsync: InvalidParameter (0x01000009): \"%1\" is no "
                                        "version such as \"1.0\"")
                             .arg(version));
}

TEST(KvsyncExec, WithoutAVersionTheNewestIsTaken)
{
    PluginFolders folders;
    for (const QString &file :
         {QStringLiteral("Recorder.1.9.3.dll"), QStringLiteral("Recorder.1.10.1.dll")})
        copyFile(commandFixture(QStringLiteral("Recorder")), folders.logicFile(file));
    const auto versionIn = [&](const QStringList &further) {
        return folders
            .run(exec({QStringLiteral("Recorder"), QStringLiteral("getRunningDevList"),
                       QStringLiteral("--verbose")}) +
                 further)
            .errors;
    };
    EXPECT_TRUE(versionIn({}).contains(QStringLiteral("find Recorder.1.10 plugin")));
    EXPECT_TRUE(versionIn({QStringLiteral("--version"), QStringLiteral("1.9")})
                    .contains(QStringLiteral("find Recorder.1.9 plugin")));
}

TEST(KvsyncExec, TellsWhichArgumentIsNotJson)
{
    const QString scanner = QStringLiteral("Scanner");
    const QString execute = QStringLiteral("execute");
    expectWrongValue(
        exec({scanner, execute, QStringLiteral("1"), QStringLiteral("info")}),
        QStringLiteral("kvsync: InvalidParameter (0x01000009): Argument 2 is not JSON: "
                       "illegal number: info"));
    expectWrongValue(exec({scanner, execute, QStringLiteral("1, 2")}),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): Argument 1 is not one "
                                    "JSON value: 1, 2"));
    expectWrongValue(exec({scanner, execute, QStringLiteral("")}),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): Argument 1 is not one "
                                    "JSON value: "));
    expectWrongValue(exec({scanner, execute, QStringLiteral("--open"), QStringLiteral("{")}),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): --open is not JSON: "
                                    "unterminated object: {"));
}

TEST(KvsyncExec, ShowsTheLogOnStandardErrorIfVerbose)
{
    const Outcome outcome =
        runKvsync(exec({QStringLiteral("Scanner"), QStringLiteral("openDevices"),
                        QStringLiteral("{\"serial\": \"\"}"), QStringLiteral("--verbose")}));
    EXPECT_EQ(outcome.json().value(QStringLiteral("result")), QJsonValue(QStringLiteral("1")));
    for (const QString &line :
         {QStringLiteral("find Scanner.1.0 plugin"), QStringLiteral(" before connect"),
          QStringLiteral("End ConnectDevice")})
        EXPECT_TRUE(outcome.errors.contains(line)) << line.toStdString();
}

TEST(KvsyncExec, TheLogGoesByVerboseAloneNotByTheEnvironment)
{
    const QStringList call = exec({QStringLiteral("Scanner"), QStringLiteral("openDevices"),
                                   QStringLiteral("{\"serial\": \"\"}")});
    const auto errorsUnder = [](const QString &rules, const QString &level,
                                const QStringList &arguments) {
        return runKvsync(arguments, {{QStringLiteral("QT_LOGGING_RULES"), rules},
                                     {QStringLiteral("GLOG_minloglevel"), level}})
            .errors;
    };
    EXPECT_EQ(errorsUnder(QStringLiteral("*=true"), QStringLiteral("0"), call).toStdString(), "");
    const QString all = errorsUnder(QStringLiteral("*=false"), QStringLiteral("3"),
                                    call + QStringList{QStringLiteral("--verbose")});
    for (const QString &line :
         {QStringLiteral("find Scanner.1.0 plugin"), QStringLiteral(" before connect")})
        EXPECT_TRUE(all.contains(line)) << all.toStdString();
}

TEST(KvsyncExec, APluginThatThrowsAnythingIsTold)
{
    PluginFolders folders;
    copyFile(commandFixture(QStringLiteral("ThrowsNumber")),
             folders.logicFile(QStringLiteral("ThrowsNumber.1.0.1.dll")));
    const Outcome outcome =
        folders.run(exec({QStringLiteral("ThrowsNumber"), QStringLiteral("getRunningDevList")}));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors.toStdString(),
              "kvsync: A plug-in threw something that is no exception\n");
}

#ifdef Q_OS_LINUX
TEST(KvsyncExec, FailsIfStandardOutputCannotBeWritten)
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(logicFolder() + QStringLiteral("/../kvsync"),
                  exec({QStringLiteral("Scanner"), QStringLiteral("getRunningDevList")}));
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardError().toStdString(),
              "kvsync: DeviceOperationFailed (0x010F0000): Standard output cannot be written\n");
}

TEST(KvsyncHelp, FailsIfStandardOutputCannotBeWritten)
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(logicFolder() + QStringLiteral("/../kvsync"), {QStringLiteral("--help")});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardError().toStdString(),
              "kvsync: DeviceOperationFailed (0x010F0000): Standard output cannot be written\n");
}
#endif
