#ifndef SCANNER_STATUSQUEUE_H
#define SCANNER_STATUSQUEUE_H

#include <QtCore/QVariant>

#include <cstddef>
#include <deque>
#include <mutex>

namespace Scanner {

/// Status changes on their way from the library's thread to the host: the latest 64, since the
/// host's slots may be slow. Any thread may call.
class StatusQueue
{
public:
    static constexpr std::size_t mostWaiting = 64;

    /// Whether one more waits now. Otherwise the oldest was dropped for it.
    bool push(unsigned char first, unsigned char second);
    /// The oldest that waits, for the host: {"first", "second"}, and {"dropped"} if so many before
    /// it were dropped. Call it once for each that was pushed and did not drop another.
    QVariantMap pop();

private:
    struct Status
    {
        int first;
        int second;
    };

    std::mutex mutex;
    std::deque<Status> waiting;
    int dropped = 0; ///< before the oldest that waits
};

} // namespace Scanner

#endif
