// The process that loads a plug-in for "plugins why --load".
#include "plugins/TrialCommand.h"

#include "plugins/PluginKind.h"

#include <CLI/CLI.hpp>
#include <KvSyncTool/Exception.h>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtCore/QSaveFile>
#include <QtCore/QTextCodec>

#include <exception>
#include <memory>

#if defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace KvSyncCli {

namespace {

constexpr char commandName[] = "load-trial";
constexpr char allSymbolsFlag[] = "--all-symbols";

struct TrialOptions
{
    std::string file;
    std::string report;
    bool allSymbols = false;
};

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

void runTrial(const TrialOptions &options)
{
#if defined(Q_OS_WIN)
    // No window waits for somebody to click it away.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
#endif
    QPluginLoader loader(fromArgument(options.file));
    if (options.allSymbols)
        loader.setLoadHints(loader.loadHints() | QLibrary::ResolveAllSymbolsHint);
    writeReport(fromArgument(options.report), loadAndCatch(loader));
}

} // namespace

QStringList trialArguments(const QString &filePath, SymbolCheck check, const QString &reportFile)
{
    QStringList arguments{QStringLiteral("plugins"), QString::fromLatin1(commandName), filePath,
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

void addTrialCommand(CLI::App &plugins, Command &chosen)
{
    const auto options = std::make_shared<TrialOptions>();
    CLI::App *const command = plugins.add_subcommand(commandName);
    command->group("");
    command->add_option("FILE", options->file)->required();
    command->add_option("REPORT", options->report)->required();
    command->add_flag(allSymbolsFlag, options->allSymbols);
    command->callback(
        [options, &chosen] { chosen = [options](Context &) { runTrial(*options); }; });
}

} // namespace KvSyncCli
