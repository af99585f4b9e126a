// What the scanner asks about things that were planned for it.
#ifndef TESSEL3SYNCSIMULATOR_SCANPLAN_H
#define TESSEL3SYNCSIMULATOR_SCANPLAN_H

#include <Tessel3SyncSimulator/Control.h>

#include <map>
#include <vector>

namespace Tessel3SyncSimulator {

/// The arguments of the status callback: a StatusEvent and what belongs to it.
struct StatusBytes
{
    unsigned char first;
    unsigned char second;
};

/// The simulator's mutex is held whenever it is asked.
class ScanPlan
{
public:
    virtual FrameFault faultOf(int frame) const = 0;
    virtual bool isHostile() const = 0;

    /// The events that come when a frame is due, in order.
    virtual std::vector<StatusBytes> eventsAt(int frame) const = 0;

    /// The events that come after connecting, by milliseconds.
    virtual std::multimap<int, StatusBytes> timedEvents() const = 0;

protected:
    ~ScanPlan() = default;
};

} // namespace Tessel3SyncSimulator

#endif
