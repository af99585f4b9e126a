// Answers and faults that are laid down beforehand: by call number of a function, and by frame.
#ifndef TESSEL3SYNCSIMULATOR_SCRIPT_H
#define TESSEL3SYNCSIMULATOR_SCRIPT_H

#include "Connection.h"

#include <Tessel3SyncSimulator/Control.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Tessel3SyncSimulator {

/// When something happens: the n-th time alone, or every n-th time.
struct Occasion
{
    int number;
    bool repeated;

    bool includes(int n) const { return repeated ? n % number == 0 : n == number; }
};

/// What happens at which occasions. A single one goes before repeated ones, a later entry before an
/// earlier one.
template <typename Event>
class Schedule
{
public:
    void add(const Occasion &occasion, const Event &event)
    {
        if (occasion.repeated)
            repeated.push_back({occasion.number, event});
        else
            single.insert_or_assign(occasion.number, event);
    }

    /// Null if nothing happens the n-th time.
    const Event *find(int n) const
    {
        const auto exact = single.find(n);
        if (exact != single.end())
            return &exact->second;
        for (auto entry = repeated.rbegin(); entry != repeated.rend(); ++entry) {
            if (n % entry->first == 0)
                return &entry->second;
        }
        return nullptr;
    }

private:
    std::map<int, Event> single;
    std::vector<std::pair<int, Event>> repeated;
};

class Script
{
public:
    /// Throws std::invalid_argument for what the library does not have.
    void add(const std::string &name, const Occasion &occasion, const Answer &answer);
    void add(const Occasion &occasion, const FrameFault &fault);

    /// A status event when a frame has become due, in every scan, or so long after every
    /// connecting.
    void addEvent(const Occasion &frame, const StatusBytes &event);
    void addEvent(int afterMs, const StatusBytes &event);

    /// Those of one frame, in the order in which they were added.
    std::vector<StatusBytes> eventsAt(int frame) const;
    /// By the milliseconds after which they come.
    const std::multimap<int, StatusBytes> &timedEvents() const { return timed; }

    /// Null if the call, or the frame, is to be as it is by itself.
    const Answer *find(const std::string &function, int call) const;
    const FrameFault *find(int frame) const;

    bool hostile = false;

private:
    std::map<std::string, Schedule<Answer>> answers;
    Schedule<FrameFault> frames;
    std::vector<std::pair<Occasion, StatusBytes>> frameEvents;
    std::multimap<int, StatusBytes> timed;
};

} // namespace Tessel3SyncSimulator

#endif
