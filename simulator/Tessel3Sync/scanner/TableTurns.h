#ifndef TESSEL3SYNCSIMULATOR_TABLETURNS_H
#define TESSEL3SYNCSIMULATOR_TABLETURNS_H

#include <map>
#include <optional>

namespace Tessel3SyncSimulator {

/// How the table stood when each frame of the newest scan was due.
class TableTurns
{
public:
    void clear();

    /// The frames come in order.
    void takeDown(int first, int last, double degrees);

    /// None if the scan has had no such frame.
    std::optional<double> at(int frame) const;

private:
    std::map<int, double> turns; ///< from which frame on it stood how
    int newest = 0;
};

} // namespace Tessel3SyncSimulator

#endif
