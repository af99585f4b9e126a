// The console calls a handler on a thread of its own.
#include "session/SignalWatch.h"

#include <atomic>
#include <csignal>
#include <mutex>
#include <utility>

#include <windows.h>

namespace KvSyncCli {

struct SignalWatch::State
{
    std::function<bool(int number)> begin;
};

namespace {

// All that a handler can reach.
std::mutex mutex; ///< held while `begin` runs
const std::function<bool(int number)> *present = nullptr;
std::atomic<bool> hasCome{false};

bool isLastCall(DWORD event)
{
    return event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
}

bool begin(int number)
{
    const std::lock_guard<std::mutex> lock(mutex);
    return present && (*present)(number);
}

// FALSE: the system's own handler ends the process.
BOOL WINAPI handleEvent(DWORD event)
{
    if (hasCome.exchange(true) || !begin(event == CTRL_C_EVENT ? SIGINT : SIGTERM))
        return FALSE;
    // When the handler of a closing console or session returns, the process is ended. This thread
    // lasts until the process has ended by itself.
    if (isLastCall(event))
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

SignalWatch::SignalWatch(std::function<bool(int number)> beginFunction)
    : state(std::make_unique<State>())
{
    state->begin = std::move(beginFunction);
    {
        const std::lock_guard<std::mutex> lock(mutex);
        present = &state->begin;
    }
    SetConsoleCtrlHandler(handleEvent, TRUE);
}

SignalWatch::~SignalWatch()
{
    SetConsoleCtrlHandler(handleEvent, FALSE);
    const std::lock_guard<std::mutex> lock(mutex);
    present = nullptr;
}

QString signalName(int number)
{
    return number == SIGINT ? QStringLiteral("Ctrl-C") : QStringLiteral("the system");
}

} // namespace KvSyncCli
