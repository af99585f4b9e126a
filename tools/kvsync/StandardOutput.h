#ifndef KVSYNC_STANDARDOUTPUT_H
#define KVSYNC_STANDARDOUTPUT_H

#include <QtCore/QByteArray>

#include <cstdio>

namespace KvSyncCli {

/// The standard output for what kvsync itself has to say, and for nothing else: what libraries
/// print there goes to standard error, or nowhere, for the rest of the process.
class StandardOutput
{
public:
    /// One object in a process. Libraries' lines are shown on standard error if asked for.
    explicit StandardOutput(bool showLibraries);
    ~StandardOutput();
    StandardOutput(const StandardOutput &) = delete;
    StandardOutput &operator=(const StandardOutput &) = delete;

    /// Writes at once. Throws `DeviceOperationFailed` if it cannot.
    void write(const QByteArray &utf8);

private:
    std::FILE *file;
};

/// Whether standard error is a terminal, where a progress bar may be drawn.
bool isErrorOutputTerminal();

} // namespace KvSyncCli

#endif
