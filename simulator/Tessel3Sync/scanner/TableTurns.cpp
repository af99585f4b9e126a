#include "scanner/TableTurns.h"

#include <iterator>

namespace Tessel3SyncSimulator {

void TableTurns::clear()
{
    turns.clear();
    newest = 0;
}

void TableTurns::takeDown(int first, int last, double degrees)
{
    const auto turned = [&](double before) { return before < degrees || degrees < before; };
    if (turns.empty() || turned(turns.rbegin()->second))
        turns[first] = degrees;
    newest = last;
}

std::optional<double> TableTurns::at(int frame) const
{
    if (frame < 1 || frame > newest)
        return std::nullopt;
    return std::prev(turns.upper_bound(frame))->second;
}

} // namespace Tessel3SyncSimulator
