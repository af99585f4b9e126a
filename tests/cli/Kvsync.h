#ifndef KVSYNC_TESTS_CLI_KVSYNC_H
#define KVSYNC_TESTS_CLI_KVSYNC_H

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

class QProcess;

namespace KvSyncTest {

/// How a run of kvsync ended. Line ends are "\n" on every system.
struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;

    /// The whole output as one JSON object; fails the test if it is anything else.
    QJsonObject json() const;
};

/// Put behind a scan that shall succeed: loaded machines and sanitizers make pictures slowly.
QStringList patiently();

/// Runs the built kvsync to its end; fails the test if it crashes or takes more than two minutes.
Outcome runKvsync(const QStringList &arguments);
/// The same in a process that the caller has prepared.
Outcome runKvsync(const QStringList &arguments, QProcess &process);
/// The same with these environment variables set.
Outcome runKvsync(const QStringList &arguments, const QMap<QString, QString> &environment);

/// Expects exit status 1, an empty output, and exactly this line on standard error.
void expectFailure(const QStringList &arguments, const QString &errorLine);

/// The same with exit status 2: a value on the command line is one that cannot be used.
void expectWrongValue(const QStringList &arguments, const QString &errorLine);

/// Expects exit status 2, an empty output, and this line before the hint to the help of `command`.
void expectWrongCommandLine(const QStringList &arguments, const QString &errorLine,
                            const QString &command = QStringLiteral("kvsync"));

void copyFile(const QString &from, const QString &to);
void writeFile(const QString &path, const QByteArray &content);
QByteArray contentOf(const QString &path);

/// The scan.json of a folder.
QJsonObject recordIn(const QString &folder);

/// Expects that the folder holds the images of this record, whole, and no other image or half file.
void expectImages(const QString &folder, const QJsonObject &record);

/// The path of kvsync.
QString kvsyncProgram();

/// The folder of the command plug-ins beside kvsync, as its texts show it.
QString logicFolder();

} // namespace KvSyncTest

#endif
