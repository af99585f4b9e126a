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

/// The wish of a user or of the system that the process end: Ctrl-C, SIGTERM, a closed console.
///
/// What must not be left as it is, such as a scanner with its lights on, registers how it is ended.
/// The process then goes its ordinary way out. A second wish ends it at once, and so does the first
/// if nothing is registered. One object in a process.
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

    /// As long as it lives, `end` is called when the process shall end: once, on a thread of its
    /// own, and at once if that wish is older. It must not throw.
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
    /// Whether the process ends in order; if not, the system shall end it.
    bool begin(int signalNumber);

    std::mutex mutex; ///< guards the list, and is held while endings run
    std::list<const Ending *> endings;
    std::atomic<int> number{0};
    std::unique_ptr<SignalWatch> watch;
};

} // namespace KvSyncCli

#endif
