#include "Kvsync.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtGui/QImage>

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

void expectEnd(const QStringList &arguments, int exitCode, const QString &errors)
{
    const Outcome outcome = runKvsync(arguments);
    EXPECT_EQ(outcome.exitCode, exitCode);
    EXPECT_EQ(outcome.output.toStdString(), "");
    EXPECT_EQ(outcome.errors.toStdString(), errors.toStdString() + "\n");
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
    process.start(kvsyncProgram(), arguments);
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

Outcome runKvsync(const QStringList &arguments, const QMap<QString, QString> &environment)
{
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (auto each = environment.begin(); each != environment.end(); ++each)
        variables.insert(each.key(), each.value());
    process.setProcessEnvironment(variables);
    return runKvsync(arguments, process);
}

void expectFailure(const QStringList &arguments, const QString &errorLine)
{
    expectEnd(arguments, 1, errorLine);
}

void expectWrongValue(const QStringList &arguments, const QString &errorLine)
{
    expectEnd(arguments, 2, errorLine);
}

void expectWrongCommandLine(const QStringList &arguments, const QString &errorLine,
                            const QString &command)
{
    expectEnd(arguments, 2,
              errorLine + QLatin1Char('\n') + command + QStringLiteral(" --help tells more"));
}

void copyFile(const QString &from, const QString &to)
{
    EXPECT_TRUE(QFile::copy(from, to)) << from.toStdString() << " " << to.toStdString();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QJsonObject recordIn(const QString &folder)
{
    return QJsonDocument::fromJson(contentOf(folder + QStringLiteral("/scan.json"))).object();
}

void expectImages(const QString &folder, const QJsonObject &record)
{
    QStringList expected;
    for (const QJsonValue &value : record.value(QStringLiteral("images")).toArray()) {
        const QJsonObject image = value.toObject();
        if (image.contains(QStringLiteral("failure"))) {
            EXPECT_FALSE(image.contains(QStringLiteral("file")));
            continue;
        }
        expected.append(image.value(QStringLiteral("file")).toString());
        EXPECT_EQ(QImage(folder + QLatin1Char('/') + expected.last()).size(),
                  QSize(image.value(QStringLiteral("width")).toInt(),
                        image.value(QStringLiteral("height")).toInt()))
            << expected.last().toStdString();
    }
    expected.sort();
    EXPECT_EQ(QDir(folder).entryList({QStringLiteral("frame-*")}, QDir::Files, QDir::Name),
              expected);
    EXPECT_EQ(QDir(folder).entryList({QStringLiteral("*.png.*"), QStringLiteral("scan.json.*"),
                                      QStringLiteral("scan.lock")},
                                     QDir::Files | QDir::Hidden),
              QStringList());
}

QString kvsyncProgram()
{
    return programFolder() + QStringLiteral("/kvsync");
}

QString logicFolder()
{
    return programFolder() + QStringLiteral("/Logic");
}

} // namespace KvSyncTest
