// A handler may do next to nothing, so it hands the number to a thread through a pipe.
#include "session/SignalWatch.h"

#include <KvSyncTool/Exception.h>

#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace KvSyncCli {

namespace {

constexpr int watchedSignals[] = {SIGHUP, SIGINT, SIGTERM};
constexpr unsigned char lastWord = 0; ///< no signal: the thread ends

// All that a handler can reach.
volatile std::sig_atomic_t writeEnd = -1;
volatile std::sig_atomic_t hasCome = 0;

void endHere(int number)
{
    std::signal(number, SIG_DFL);
    kill(getpid(), number);
}

extern "C" void handleSignal(int number)
{
    if (hasCome) {
        endHere(number);
        return;
    }
    hasCome = 1;
    const auto word = static_cast<unsigned char>(number);
    if (write(writeEnd, &word, sizeof word) != sizeof word)
        endHere(number);
}

void handle(int number, void (*handler)(int))
{
    struct sigaction present = {};
    sigaction(number, nullptr, &present);
    if (present.sa_handler == SIG_IGN)
        return;
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
}

} // namespace

struct SignalWatch::State
{
    ~State()
    {
        for (const int end : pipeEnds)
            if (end >= 0)
                close(end);
    }

    void watch()
    {
        unsigned char word = lastWord;
        while (read(pipeEnds[0], &word, sizeof word) == sizeof word && word != lastWord)
            if (!begin(word))
                endHere(word);
    }

    std::function<bool(int number)> begin;
    int pipeEnds[2] = {-1, -1}; ///< to read, to write
    std::thread thread;
};

SignalWatch::SignalWatch(std::function<bool(int number)> begin)
    : state(std::make_unique<State>())
{
    state->begin = std::move(begin);
    if (pipe2(state->pipeEnds, O_CLOEXEC) != 0)
        throw KvSyncTool::Exception(DeviceOperationFailed,
                                    QStringLiteral("No file descriptor is left"));
    writeEnd = state->pipeEnds[1];
    try {
        state->thread = std::thread(&State::watch, state.get());
    } catch (const std::system_error &) {
        throw KvSyncTool::Exception(DeviceOperationFailed,
                                    QStringLiteral("No thread can be started"));
    }
    for (const int number : watchedSignals)
        handle(number, handleSignal);
    // A write that fails shall say so, not end the process with the lights on.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

SignalWatch::~SignalWatch()
{
    for (const int number : watchedSignals)
        handle(number, SIG_DFL);
    const unsigned char word = lastWord;
    while (write(state->pipeEnds[1], &word, sizeof word) != sizeof word)
        std::this_thread::yield();
    state->thread.join();
}

QString signalName(int number)
{
    switch (number) {
    case SIGHUP:
        return QStringLiteral("SIGHUP");
    case SIGINT:
        return QStringLiteral("SIGINT");
    case SIGTERM:
        return QStringLiteral("SIGTERM");
    default:
        return QStringLiteral("signal %1").arg(number);
    }
}

} // namespace KvSyncCli
