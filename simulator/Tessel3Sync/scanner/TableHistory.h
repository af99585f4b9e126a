#ifndef TESSEL3SYNCSIMULATOR_TABLEHISTORY_H
#define TESSEL3SYNCSIMULATOR_TABLEHISTORY_H

#include <map>
#include <optional>

namespace Tessel3SyncSimulator {

/// The angle of the table when each frame of the newest scan was due.
class TableHistory
{
public:
    void clear();

    /// Frames must be recorded in order.
    void record(int first, int last, double degrees);

    /// None if the scan has had no such frame.
    std::optional<double> at(int frame) const;

private:
    std::map<int, double> angles; ///< by the first frame that had them
    int newest = 0;
};

} // namespace Tessel3SyncSimulator

#endif
