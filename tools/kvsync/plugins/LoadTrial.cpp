#include "plugins/LoadTrial.h"

#include "plugins/TrialProcess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <optional>

namespace KvSyncCli {

namespace {

/// Runs the process to its end. Nobody reads what the plug-in prints, so no pipe fills up.
/// Returns what became of it, or an empty text if it ended as it should.
QString run(const QStringList &arguments, int limitMs)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QCoreApplication::applicationFilePath(), arguments);
    if (!process.waitForStarted(-1))
        return QStringLiteral("could not be started: ") + process.errorString();
    if (!process.waitForFinished(limitMs)) {
        process.kill();
        process.waitForFinished();
        return QStringLiteral("did not end within %1 ms").arg(limitMs);
    }
    if (process.exitStatus() == QProcess::CrashExit)
        return QStringLiteral("crashed");
    if (process.exitCode() != 0)
        return QStringLiteral("ended with status %1").arg(process.exitCode());
    return {};
}

LoadOutcome tryOnce(const QString &filePath, SymbolCheck check, int limitMs)
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report.json"));
    const QString mishap = run(trialArguments(filePath, check, report), limitMs);
    LoadOutcome outcome;
    if (const auto told = readTrialReport(report))
        outcome = *told;
    else
        outcome.failure =
            QStringLiteral("the process that loaded it ") +
            (mishap.isEmpty() ? QStringLiteral("ended before it was loaded") : mishap);
    if (outcome.hasRoot && !mishap.isEmpty())
        outcome.remark = QStringLiteral("the process that had loaded it %1 at its end").arg(mishap);
    return outcome;
}

} // namespace

// The loader looks for a function when it is first called: a plug-in that lacks one is loaded by
// the core, and ends its host then. So all are looked for at first, and a refusal is tried again.
LoadOutcome tryToLoad(const QString &filePath, int limitMs)
{
    LoadOutcome strict = tryOnce(filePath, SymbolCheck::AllAtOnce, limitMs);
    if (!strict.refused)
        return strict;
    LoadOutcome outcome = tryOnce(filePath, SymbolCheck::AsTheCore, limitMs);
    if (outcome.hasRoot)
        outcome.remark = strict.failure;
    return outcome;
}

} // namespace KvSyncCli
