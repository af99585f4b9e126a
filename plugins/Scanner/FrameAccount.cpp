#include "FrameAccount.h"

#include <iterator>

namespace Scanner {

namespace {

/// In the order of DropCause.
const std::array<QString, 4> &causeNames()
{
    static const std::array<QString, 4> names = {QStringLiteral("lost"), QStringLiteral("hostSlow"),
                                                 QStringLiteral("unusable"),
                                                 QStringLiteral("stopped")};
    return names;
}

/// Gaps that are remembered; what is missing in older ones stays lost.
constexpr std::size_t mostGaps = 64;

} // namespace

FrameAccount::FrameAccount(int framesAskedFor)
    : framesAsked(framesAskedFor)
{
}

void FrameAccount::came(int number)
{
    if (number <= lastNumber) {
        ++disordered;
        takeBack(number);
        return;
    }
    dropped(DropCause::Lost, number - lastNumber - 1);
    miss(lastNumber + 1, number - 1);
    lastNumber = number;
}

void FrameAccount::miss(int first, int last)
{
    if (first > last)
        return;
    missing.emplace(first, last);
    if (missing.size() > mostGaps)
        missing.erase(missing.begin());
}

void FrameAccount::takeBack(int number)
{
    const auto after = missing.upper_bound(number);
    if (after == missing.begin())
        return;
    const auto gap = std::prev(after);
    const auto [first, last] = *gap;
    if (number > last)
        return;
    missing.erase(gap);
    miss(first, number - 1);
    miss(number + 1, last);
    dropped(DropCause::Lost, -1);
}

void FrameAccount::delivered()
{
    ++deliveredFrames;
}

void FrameAccount::dropped(DropCause cause, qint64 count)
{
    droppedFrames.at(static_cast<std::size_t>(cause)) += count;
}

QVariantMap FrameAccount::toMap() const
{
    QVariantMap causes;
    qint64 allDropped = 0;
    for (std::size_t cause = 0; cause < droppedFrames.size(); ++cause) {
        causes.insert(causeNames().at(cause), droppedFrames.at(cause));
        allDropped += droppedFrames.at(cause);
    }
    return {{QStringLiteral("frames"), framesAsked},
            {QStringLiteral("produced"), deliveredFrames + allDropped},
            {QStringLiteral("delivered"), deliveredFrames},
            {QStringLiteral("dropped"), allDropped},
            {QStringLiteral("causes"), causes},
            {QStringLiteral("disordered"), disordered}};
}

} // namespace Scanner
