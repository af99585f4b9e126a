#include "scanner/TableHistory.h"

#include <iterator>

namespace Tessel3SyncSimulator {

void TableHistory::clear()
{
    angles.clear();
    newest = 0;
}

void TableHistory::record(int first, int last, double degrees)
{
    const auto differs = [&](double before) { return before < degrees || degrees < before; };
    if (angles.empty() || differs(angles.rbegin()->second))
        angles[first] = degrees;
    newest = last;
}

std::optional<double> TableHistory::at(int frame) const
{
    if (frame < 1 || frame > newest)
        return std::nullopt;
    return std::prev(angles.upper_bound(frame))->second;
}

} // namespace Tessel3SyncSimulator
