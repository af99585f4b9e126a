#include "api/SimulatedLibrary.h"

#include "api/Platform.h"

#include <iostream>
#include <stdexcept>

namespace Tessel3SyncSimulator {

SimulatedLibrary::SimulatedLibrary()
{
    stayLoaded();
    time->serve(frames);
    readEnvironment();
}

SimulatedLibrary &SimulatedLibrary::instance()
{
    static SimulatedLibrary &only = *new SimulatedLibrary;
    return only;
}

void SimulatedLibrary::readEnvironment()
{
    plan = Script();
    error.clear();
    ScannerSetup setup;
    const auto planFile = pathFromEnvironment(FaultPlanVariable);
    const auto description = textFromEnvironment(ScannerVariable);
    try {
        const FaultPlan planned = planFile ? loadFaultPlan(*planFile, setup) : FaultPlan();
        const ScannerSetup described = planned.scanner.value_or(setup);
        setup = description ? readScannerVariable(*description, described) : described;
        plan = planned.script;
    } catch (const std::invalid_argument &unusable) {
        error = unusable.what();
        std::cerr << "Tessel3Sync simulator: " << error << std::endl;
    }
    onlyScanner.setSetup(setup);
    const auto blocksFile = pathFromEnvironment(UserInformationVariable);
    blocks = blocksFile ? UserBlocks(*blocksFile) : UserBlocks();
}

Lock SimulatedLibrary::enter()
{
    Lock lock(mutex);
    onlyScanner.catchUp();
    return lock;
}

void SimulatedLibrary::pass(Lock &lock, int milliseconds)
{
    time->pass(lock, std::chrono::milliseconds(milliseconds));
    onlyScanner.catchUp();
}

void SimulatedLibrary::awaitCallback(Lock &lock)
{
    frames.awaitCallback(lock);
    onlyScanner.catchUp();
}

void SimulatedLibrary::disconnectAll(Lock &lock)
{
    do {
        onlyScanner.disconnect();
        awaitCallback(lock);
    } while (onlyScanner.isConnected());
}

void SimulatedLibrary::reset(Lock &lock)
{
    disconnectAll(lock);
    onlyScanner.reset();
    calls = CallRecorder();
    scripted = Script();
    readEnvironment();
}

void SimulatedLibrary::usePlan(const Script &replacement)
{
    plan = replacement;
    error.clear();
    onlyScanner.planEvents();
}

/// A copy: the script may change while the call waits.
Answer SimulatedLibrary::answerTo(const std::string &function, int call) const
{
    const Answer *first = scripted.find(function, call);
    const Answer *answer = first ? first : plan.find(function, call);
    return answer ? *answer : Answer();
}

void SimulatedLibrary::useForTests(TimeSource &otherTime, PictureSource &otherPictures)
{
    time = &otherTime;
    time->serve(frames);
    onlyScanner.useTime(otherTime);
    frames.usePictures(otherPictures);
}

FrameFault SimulatedLibrary::faultOf(int frame) const
{
    const FrameFault *first = scripted.find(frame);
    const FrameFault *fault = first ? first : plan.find(frame);
    return fault ? *fault : FrameFault();
}

std::vector<StatusBytes> SimulatedLibrary::eventsAt(int frame) const
{
    std::vector<StatusBytes> events;
    for (const PlannedEvent &event : plan.eventsAt(frame))
        events.push_back({event.kind, event.value});
    return events;
}

std::multimap<int, StatusBytes> SimulatedLibrary::timedEvents() const
{
    std::multimap<int, StatusBytes> events;
    for (const auto &[afterMs, event] : plan.timedEvents())
        events.emplace(afterMs, StatusBytes{event.kind, event.value});
    return events;
}

} // namespace Tessel3SyncSimulator
