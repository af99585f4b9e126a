#include "StandardOutput.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QString>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace KvSyncCli {

namespace {

constexpr int outputDescriptor = 1;
constexpr int errorDescriptor = 2;

#if defined(_WIN32)
constexpr char nullDevice[] = "NUL";

int duplicate(int descriptor)
{
    return _dup(descriptor);
}

void redirect(int from, int to)
{
    _dup2(to, from);
}

int openNullDevice()
{
    return _open(nullDevice, _O_WRONLY);
}

void closeDescriptor(int descriptor)
{
    _close(descriptor);
}

std::FILE *openForWriting(int descriptor)
{
    return _fdopen(descriptor, "w");
}

bool isTerminal(int descriptor)
{
    return _isatty(descriptor) != 0;
}
#else
constexpr char nullDevice[] = "/dev/null";

int duplicate(int descriptor)
{
    return dup(descriptor);
}

void redirect(int from, int to)
{
    dup2(to, from);
}

int openNullDevice()
{
    return open(nullDevice, O_WRONLY | O_CLOEXEC);
}

void closeDescriptor(int descriptor)
{
    close(descriptor);
}

std::FILE *openForWriting(int descriptor)
{
    return fdopen(descriptor, "w");
}

bool isTerminal(int descriptor)
{
    return isatty(descriptor) != 0;
}
#endif

[[noreturn]] void raiseUnwritable()
{
    throw KvSyncTool::Exception(DeviceOperationFailed,
                                QStringLiteral("Standard output cannot be written"));
}

void sendLibrariesTo(bool standardError)
{
    std::fflush(stdout);
    if (standardError) {
        redirect(outputDescriptor, errorDescriptor);
        return;
    }
    const int nowhere = openNullDevice();
    if (nowhere < 0)
        return;
    redirect(outputDescriptor, nowhere);
    closeDescriptor(nowhere);
}

} // namespace

StandardOutput::StandardOutput(bool showLibraries)
    : file(openForWriting(duplicate(outputDescriptor)))
{
    if (!file)
        raiseUnwritable();
    sendLibrariesTo(showLibraries);
}

StandardOutput::~StandardOutput()
{
    std::fclose(file);
}

void StandardOutput::write(const QByteArray &utf8)
{
    const auto size = static_cast<std::size_t>(utf8.size());
    if (std::fwrite(utf8.constData(), 1, size, file) != size || std::fflush(file) != 0)
        raiseUnwritable();
}

bool isErrorOutputTerminal()
{
    return isTerminal(errorDescriptor);
}

} // namespace KvSyncCli
