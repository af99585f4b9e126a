// The process that loads a plug-in for "plugins why --load".
#include "plugins/TrialProcess.h"

#include "plugins/PluginKind.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtCore/QSaveFile>
#include <QtCore/QTextCodec>

#include <exception>

#if defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace KvSyncCli {

namespace {

// Exceptions of this system speak UTF-8; a foreign one may speak as the system does.
QString textOf(const std::exception &failure)
{
    QTextCodec::ConverterState state;
    const QByteArray text(failure.what());
    const QString decoded =
        QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    return state.invalidChars == 0 ? decoded : QString::fromLocal8Bit(text);
}

LoadOutcome load(QPluginLoader &loader)
{
    if (!loader.load())
        return {false, true, {}, loader.errorString(), {}};
    QObject *const root = loader.instance();
    if (!root)
        return {false, false, {}, loader.errorString(), {}};
    LoadOutcome outcome{true, false, {}, {}, {}};
    for (const QString &iid : iidsOf(PluginKind::Unknown))
        if (root->qt_metacast(iid.toLatin1().constData()))
            outcome.answers.append(iid);
    return outcome;
}

LoadOutcome loadAndCatch(QPluginLoader &loader)
{
    try {
        return load(loader);
    } catch (const std::exception &failure) {
        return {false, false, {}, QStringLiteral("its code threw: ") + textOf(failure), {}};
    } catch (...) {
        return {false, false, {}, QStringLiteral("its code threw"), {}};
    }
}

// Whole or not at all: the process may end at any moment.
void writeReport(const QString &reportFile, const LoadOutcome &outcome)
{
    const QJsonObject report{{QStringLiteral("hasRoot"), outcome.hasRoot},
                             {QStringLiteral("refused"), outcome.refused},
                             {QStringLiteral("answers"), QJsonValue::fromVariant(outcome.answers)},
                             {QStringLiteral("failure"), outcome.failure}};
    QSaveFile file(reportFile);
    if (file.open(QIODevice::WriteOnly))
        file.write(QJsonDocument(report).toJson());
    if (!file.commit())
        throw KvSyncTool::Exception(DeviceOperationFailed, file.errorString());
}

} // namespace

void runTrial(const QString &filePath, SymbolCheck check, const QString &reportFile)
{
#if defined(Q_OS_WIN)
    // No window waits for somebody to click it away.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
#endif
    QPluginLoader loader(filePath);
    if (check == SymbolCheck::AllAtOnce)
        loader.setLoadHints(loader.loadHints() | QLibrary::ResolveAllSymbolsHint);
    writeReport(reportFile, loadAndCatch(loader));
}

QStringList trialArguments(const QString &filePath, SymbolCheck check, const QString &reportFile)
{
    QStringList arguments{QStringLiteral("plugins"), QString::fromLatin1(trialCommand), filePath,
                          reportFile};
    if (check == SymbolCheck::AllAtOnce)
        arguments.append(QString::fromLatin1(allSymbolsFlag));
    return arguments;
}

std::optional<LoadOutcome> readTrialReport(const QString &reportFile)
{
    QFile file(reportFile);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject report = QJsonDocument::fromJson(file.readAll()).object();
    return LoadOutcome{report.value(QStringLiteral("hasRoot")).toBool(),
                       report.value(QStringLiteral("refused")).toBool(),
                       report.value(QStringLiteral("answers")).toVariant().toStringList(),
                       report.value(QStringLiteral("failure")).toString(),
                       {}};
}

} // namespace KvSyncCli
