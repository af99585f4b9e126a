#ifndef KVSYNC_TESTS_SIMULATOR_STATUSCATCHER_H
#define KVSYNC_TESTS_SIMULATOR_STATUSCATCHER_H

#include "ScannerFixture.h"

#include <utility>

/// The host's end of status events: registers itself and keeps what comes.
class StatusCatcher
{
public:
    using Events = std::vector<std::pair<int, int>>;

    explicit StatusCatcher(void *&device);
    ~StatusCatcher();

    /// Runs in the callback.
    std::function<void()> reaction;

    /// Waits until exactly these came, in this order; false after ten seconds or for others.
    bool waitFor(const Events &expected);
    Events events() const;

private:
    static void receive(const void *const &context, const unsigned char &first,
                        const unsigned char &second);

    void *&device;
    mutable std::mutex mutex;
    std::condition_variable changed;
    Events caught;
};

#endif
