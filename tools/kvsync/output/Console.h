#ifndef KVSYNC_CONSOLE_H
#define KVSYNC_CONSOLE_H

#include <KvSyncTool/ErrorCode.h>
#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdio>

namespace KvSyncCli {

/// The standard output for what kvsync itself has to say, and for nothing else: what libraries
/// print there goes to standard error, or nowhere, for the rest of the process.
class ConsoleOutput
{
public:
    /// One object in a process. Libraries' lines are shown on standard error if asked for.
    explicit ConsoleOutput(bool showLibraries);
    ~ConsoleOutput();
    ConsoleOutput(const ConsoleOutput &) = delete;
    ConsoleOutput &operator=(const ConsoleOutput &) = delete;

    /// Writes at once. Throws `DeviceOperationFailed` if it cannot.
    void write(const QByteArray &utf8);

private:
    std::FILE *file;
};

/// "kvsync: text" on standard error.
void printError(const QString &text);
/// A further line for people on standard error.
void printHint(const QString &text);

/// "ConnectFailed (0x010D000A): text"; a plug-in's own code has no name and reads "UnnamedCode".
QString errorText(ErrorCode code, const QString &text);
/// What is to be said of the exception that is being handled, whatever it is.
QString currentErrorText();

/// A bar on standard error while something long runs; nothing at all if that is no terminal.
class ProgressBar
{
public:
    ProgressBar();
    /// Ends the line.
    ~ProgressBar();
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    void show(int done, int dropped, int all);

private:
    const bool isShown;
    bool isDrawn = false;
};

} // namespace KvSyncCli

#endif
