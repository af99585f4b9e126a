#ifndef KVSYNC_INTERRUPTION_H
#define KVSYNC_INTERRUPTION_H

#include <QtCore/QString>

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace KvSyncCli {

class SignalWatch;

/// A request by the user or the system to end the process: Ctrl-C, SIGTERM, a closed console.
///
/// What must not be left as it is, such as a scanner with its lights on, registers how to end it.
/// The process then returns from main as ever. A second request ends it at once, and so does the
/// first if nothing is registered. One object in a process.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    /// The number of the signal that came while something was registered; 0 if none did. Any
    /// thread.
    int signal() const { return number; }
    /// "Ended by SIGINT"; empty if none came.
    QString text() const;
    /// What a shell reports of a process that a signal ended.
    int exitStatus() const;

    /// As long as it lives, `end` is called when the process is asked to end: once, on a thread of
    /// its own, and at once if it was asked before. It must not throw.
    class Ending
    {
    public:
        Ending(Interruption &of, std::function<void()> endFunction);
        /// Waits while `end` runs.
        ~Ending();
        Ending(const Ending &) = delete;
        Ending &operator=(const Ending &) = delete;

    private:
        friend class Interruption;
        Interruption &interruption;
        const std::function<void()> end;
        std::list<const Ending *>::iterator place;
    };

private:
    /// Returns whether the process ends in order; if not, the system is to end it.
    bool begin(int signalNumber);

    std::mutex mutex; ///< guards the list, and is held while endings run
    std::list<const Ending *> endings;
    std::atomic<int> number{0};
    std::unique_ptr<SignalWatch> watch;
};

} // namespace KvSyncCli

#endif
