#include "output/Console.h"

#include <KvSyncTool/Exception.h>

#include <string>

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
constexpr int barWidth = 40;

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

ConsoleOutput::ConsoleOutput(bool showLibraries)
    : file(openForWriting(duplicate(outputDescriptor)))
{
    if (!file)
        raiseUnwritable();
    sendLibrariesTo(showLibraries);
}

ConsoleOutput::~ConsoleOutput()
{
    std::fclose(file);
}

void ConsoleOutput::write(const QByteArray &utf8)
{
    const auto size = static_cast<std::size_t>(utf8.size());
    if (std::fwrite(utf8.constData(), 1, size, file) != size || std::fflush(file) != 0)
        raiseUnwritable();
}

QString errorText(ErrorCode code, const QString &text)
{
    const char *const name = KvSyncTool::errorCodeName(code);
    return QString::asprintf("%s (0x%08X): ", name ? name : "UnnamedCode",
                             static_cast<unsigned int>(code)) +
           text;
}

QString currentErrorText()
{
    try {
        throw;
    } catch (const KvSyncTool::Exception &failure) {
        return errorText(failure.code(), failure.message());
    } catch (const std::exception &failure) {
        return QString::fromLocal8Bit(failure.what());
    } catch (...) {
        return QStringLiteral("A plug-in threw something that is no exception");
    }
}

void printError(const QString &text)
{
    printHint(QStringLiteral("kvsync: ") + text);
}

void printHint(const QString &text)
{
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

ProgressBar::ProgressBar()
    : isShown(isTerminal(errorDescriptor))
{
}

ProgressBar::~ProgressBar()
{
    if (isDrawn)
        std::fputc('\n', stderr);
}

void ProgressBar::show(int done, int dropped, int all)
{
    if (!isShown || all <= 0)
        return;
    const int filled = static_cast<int>(static_cast<long long>(barWidth) * done / all);
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(barWidth - filled), '.');
    std::fprintf(stderr, "\r[%s] %d of %d frames, %d dropped", bar.c_str(), done, all, dropped);
    std::fflush(stderr);
    isDrawn = true;
}

} // namespace KvSyncCli
