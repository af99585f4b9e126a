#include "StatusQueue.h"

#include <utility>

namespace Scanner {

bool StatusQueue::push(unsigned char first, unsigned char second)
{
    const std::lock_guard<std::mutex> lock(mutex);
    waiting.push_back({first, second});
    if (waiting.size() <= mostWaiting)
        return true;
    waiting.pop_front();
    ++dropped;
    return false;
}

QVariantMap StatusQueue::pop()
{
    const std::lock_guard<std::mutex> lock(mutex);
    const Status oldest = waiting.front();
    waiting.pop_front();
    QVariantMap map{{QStringLiteral("first"), oldest.first},
                    {QStringLiteral("second"), oldest.second}};
    if (const int before = std::exchange(dropped, 0))
        map.insert(QStringLiteral("dropped"), before);
    return map;
}

} // namespace Scanner
