#include "Kvsync.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>

namespace KvSyncTest {

namespace {

constexpr int longestRunMs = 120000;

// Test programs stand in tests/<program>/, kvsync in bin/: the build tree may be moved.
QString programFolder()
{
    return QFileInfo(QCoreApplication::applicationDirPath() + QStringLiteral("/../../bin"))
        .canonicalFilePath();
}

QString textOf(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes).remove(QLatin1Char('\r'));
}

} // namespace

QJsonObject Outcome::json() const
{
    const QJsonDocument document = QJsonDocument::fromJson(output.toUtf8());
    EXPECT_TRUE(document.isObject()) << output.toStdString() << errors.toStdString();
    return document.object();
}

QStringList patiently()
{
    return {QStringLiteral("--timeout"), QStringLiteral("60000")};
}

Outcome runKvsync(const QStringList &arguments)
{
    QProcess process;
    return runKvsync(arguments, process);
}

Outcome runKvsync(const QStringList &arguments, QProcess &process)
{
    process.start(programFolder() + QStringLiteral("/kvsync"), arguments);
    const bool ended = process.waitForFinished(longestRunMs);
    EXPECT_TRUE(ended) << process.errorString().toStdString();
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), textOf(process.readAllStandardOutput()),
            textOf(process.readAllStandardError())};
}

void expectFailure(const QStringList &arguments, const QString &errorLine)
{
    const Outcome outcome = runKvsync(arguments);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output.toStdString(), "");
    EXPECT_EQ(outcome.errors.toStdString(), errorLine.toStdString() + "\n");
}

void expectWrongCommandLine(const QStringList &arguments, const QString &errorLine)
{
    const Outcome outcome = runKvsync(arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.output.toStdString(), "");
    EXPECT_EQ(outcome.errors.toStdString(),
              errorLine.toStdString() + "\nkvsync --help tells more\n");
}

QString logicFolder()
{
    return programFolder() + QStringLiteral("/Logic");
}

} // namespace KvSyncTest
