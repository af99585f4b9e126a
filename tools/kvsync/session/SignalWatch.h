#ifndef KVSYNC_SIGNALWATCH_H
#define KVSYNC_SIGNALWATCH_H

#include <QtCore/QString>

#include <functional>
#include <memory>

namespace KvSyncCli {

/// The system's half of Interruption: signals on Unix, console events on Windows. Those that the
/// process was told to ignore stay ignored.
class SignalWatch
{
public:
    /// `begin` gets the signal's number, outside any signal handler, and returns whether the
    /// process ends in order. If not, and for every further signal, it ends here and now.
    explicit SignalWatch(std::function<bool(int number)> begin);
    ~SignalWatch();
    SignalWatch(const SignalWatch &) = delete;
    SignalWatch &operator=(const SignalWatch &) = delete;

private:
    struct State;
    const std::unique_ptr<State> state;
};

/// "SIGTERM"
QString signalName(int number);

} // namespace KvSyncCli

#endif
