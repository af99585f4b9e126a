#ifndef KVSYNC_TESTS_SIMULATOR_STATUSCATCHER_H
#define KVSYNC_TESTS_SIMULATOR_STATUSCATCHER_H

#include "ScannerFixture.h"

#include <utility>

/// The host's end of status events: registers itself and keeps what comes.
class StatusCatcher
{
public:
    using Events = std::vector<std::pair<int, int>>;

    using Reaction = std::function<void()>;

    /// The reaction runs in the callback; see FrameCatcher.
    explicit StatusCatcher(void *&device, Reaction reaction = {});
    ~StatusCatcher();

    StatusCatcher(const StatusCatcher &) = delete;
    StatusCatcher &operator=(const StatusCatcher &) = delete;

    /// Waits until exactly these came, in this order; false after ten seconds or for others.
    bool waitFor(const Events &expected);
    Events events() const;

private:
    static void receive(const void *const &context, const unsigned char &first,
                        const unsigned char &second);

    void *&device;
    const Reaction react;
    mutable std::mutex mutex;
    std::condition_variable changed;
    Events caught;
};

#endif
