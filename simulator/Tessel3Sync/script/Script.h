// Scripted answers, faults and events: by call of a function, and by frame.
#ifndef TESSEL3SYNCSIMULATOR_SCRIPT_H
#define TESSEL3SYNCSIMULATOR_SCRIPT_H

#include <Tessel3SyncSimulator/Control.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Tessel3SyncSimulator {

/// When something happens: the n-th time only, or every n-th time.
struct Occurrence
{
    int number;
    bool repeated;

    bool includes(int n) const { return repeated ? n % number == 0 : n == number; }
};

/// What happens when. A single occurrence takes precedence over repeated ones, and a later entry
/// over an earlier one.
template <typename Event>
class Schedule
{
public:
    void add(const Occurrence &occurrence, const Event &event)
    {
        if (occurrence.repeated)
            repeated.emplace_back(occurrence, event);
        else
            single.insert_or_assign(occurrence.number, event);
    }

    /// Null if nothing happens the n-th time.
    const Event *find(int n) const
    {
        const auto exact = single.find(n);
        if (exact != single.end())
            return &exact->second;
        for (auto entry = repeated.rbegin(); entry != repeated.rend(); ++entry) {
            if (entry->first.includes(n))
                return &entry->second;
        }
        return nullptr;
    }

private:
    std::map<int, Event> single;
    std::vector<std::pair<Occurrence, Event>> repeated;
};

/// A status event of the scanner: a button or a distance.
struct PlannedEvent
{
    StatusEvent kind;
    unsigned char value;
};

class Script
{
public:
    /// Throws std::invalid_argument, as the other add functions do, for what the library does not
    /// have.
    void add(const std::string &function, const Occurrence &occurrence, const Answer &answer);
    void add(const Occurrence &frame, const FrameFault &fault);

    /// An event when a frame becomes due, in every scan.
    void addEvent(const Occurrence &frame, const PlannedEvent &event);

    /// An event so long after every connecting.
    void addEvent(int afterMs, const PlannedEvent &event);

    // Null if nothing is scripted for the call or the frame.
    const Answer *find(const std::string &function, int call) const;
    const FrameFault *find(int frame) const;

    /// The events of one frame, in the order in which they were added.
    std::vector<PlannedEvent> eventsAt(int frame) const;

    /// By the milliseconds after which they come.
    const std::multimap<int, PlannedEvent> &timedEvents() const { return timed; }

    bool hostile = false;

private:
    std::map<std::string, Schedule<Answer>> answers;
    Schedule<FrameFault> frames;
    std::vector<std::pair<Occurrence, PlannedEvent>> frameEvents;
    std::multimap<int, PlannedEvent> timed;
};

} // namespace Tessel3SyncSimulator

#endif
