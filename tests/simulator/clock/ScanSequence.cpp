#include "ScanSequence.h"

#include <algorithm>
#include <random>

using namespace Tessel3SyncSimulator;

namespace {

/// The same numbers on every system, which the standard's distributions do not promise.
class Dice
{
public:
    explicit Dice(std::uint32_t seed)
        : engine(seed)
    {
    }

    int upTo(int highest)
    {
        return static_cast<int>(engine() % (static_cast<unsigned>(highest) + 1));
    }
    int from(int lowest, int highest) { return lowest + upTo(highest - lowest); }
    bool oneIn(int times) { return upTo(times - 1) == 0; }
    int oneOf(const std::vector<int> &values)
    {
        return values[static_cast<std::size_t>(upTo(static_cast<int>(values.size()) - 1))];
    }

private:
    std::mt19937 engine;
};

/// How often each step comes, and its lowest and highest value.
struct Habit
{
    Step step;
    const char *name;
    int weight;
    int lowest;
    int highest;
};

constexpr Habit habits[] = {
    {Step::Connect, "Connect", 2, 0, 0},
    {Step::Disconnect, "Disconnect", 1, 0, 0},
    {Step::TriggerOn, "TriggerOn", 6, 0, 1},
    {Step::TriggerOff, "TriggerOff", 4, 0, 1},
    {Step::Period, "Period", 4, -1, 40},
    {Step::Brightness, "Brightness", 4, 0, 100},
    {Step::Exposure, "Exposure", 2, 1, 9000},
    {Step::Table, "Table", 3, 0, 3},
    {Step::ScanCallback, "ScanCallback", 4, 0, 2},
    {Step::StatusCallback, "StatusCallback", 2, 0, 1},
    {Step::Event, "Event", 3, 0, 9},
    {Step::Unplug, "Unplug", 1, 0, 0},
    {Step::Plug, "Plug", 3, 0, 0},
    {Step::CloseCameras, "CloseCameras", 1, 0, 0},
    {Step::Reconnect, "Reconnect", 3, 0, 0},
    {Step::Laser, "Laser", 3, 0, 0},
    {Step::Snapshot, "Snapshot", 1, 0, 0},
    {Step::Plan, "Plan", 2, 0, 1},
};

std::optional<int> backAfter(Dice &dice)
{
    return dice.oneIn(3) ? std::nullopt : std::make_optional(dice.upTo(40));
}

FrameFault frameFault(Dice &dice)
{
    FrameFault fault;
    fault.delayMs = dice.oneIn(2) ? dice.from(1, 60) : 0;
    fault.drop = dice.oneIn(3);
    fault.corrupt = dice.oneIn(4);
    fault.disconnect = dice.oneIn(4);
    if (fault.disconnect)
        fault.backAfterMs = backAfter(dice);
    return fault;
}

Plan plan(Dice &dice)
{
    Plan made;
    if (dice.oneIn(2)) {
        made.frame = dice.from(1, 12);
        made.atFrame = frameFault(dice);
    }
    if (dice.oneIn(3)) {
        made.every = dice.from(2, 7);
        made.atEvery = frameFault(dice);
    }
    made.laser = dice.oneIn(2);
    if (made.laser) {
        made.atLaser.delayMs = dice.upTo(40);
        if (dice.oneIn(3))
            made.atLaser.status = 44;
        made.atLaser.disconnect = dice.oneIn(4);
        if (made.atLaser.disconnect)
            made.atLaser.backAfterMs = backAfter(dice);
    }
    return made;
}

template <typename Fault>
std::string members(const Fault &fault)
{
    std::string text = ", \"delayMs\": " + std::to_string(fault.delayMs);
    if (fault.corrupt)
        text += ", \"corrupt\": true";
    if (fault.disconnect)
        text += ", \"disconnect\": true";
    if (fault.backAfterMs)
        text += ", \"backAfterMs\": " + std::to_string(*fault.backAfterMs);
    return text;
}

std::string entry(const char *occasion, int number, const FrameFault &fault)
{
    return std::string("{\"") + occasion + "\": " + std::to_string(number) + members(fault) +
           (fault.drop ? ", \"drop\": true}" : "}");
}

const Habit &habit(int part)
{
    for (const Habit &one : habits) {
        part -= one.weight;
        if (part < 0)
            return one;
    }
    return habits[0];
}

} // namespace

const char *stepName(Step step)
{
    for (const Habit &one : habits) {
        if (one.step == step)
            return one.name;
    }
    return "?";
}

std::string Plan::json() const
{
    std::vector<std::string> entries;
    if (frame)
        entries.push_back(entry("frame", frame, atFrame));
    if (every)
        entries.push_back(entry("everyFrame", every, atEvery));
    if (laser) {
        const std::string status =
            atLaser.status ? ", \"status\": " + std::to_string(*atLaser.status) : "";
        entries.push_back(R"({"function": "EnableIRLaser")" + members(atLaser) + status + "}");
    }
    std::string text;
    for (const std::string &one : entries)
        text += (text.empty() ? "" : ", ") + one;
    return "{\"faults\": [" + text + "]}";
}

Sequence::Sequence(std::uint32_t chosen)
    : seed(chosen)
{
    Dice dice(seed);
    hostile = dice.oneIn(25); // each of its callbacks costs a thread
    periodMs = dice.oneOf({1, 2, 5, 10, 33});
    prepareMs = dice.oneOf({0, 1, 20, 120});
    for (int i = 0; i < 5; ++i) {
        pictureMs.push_back(dice.oneIn(4) ? dice.upTo(50) : 0);
        scanHoldMs.push_back(dice.oneIn(4) ? dice.upTo(80) : dice.upTo(1));
    }
    statusHoldMs = dice.oneOf({0, 0, 1, 30});
    plans = {plan(dice), dice.oneIn(2) ? Plan() : plan(dice)};

    steps = {{0, Step::Connect, 0}, {0, Step::ScanCallback, 1}};
    if (dice.oneIn(2))
        steps.push_back({0, Step::StatusCallback, 1});
    steps.push_back({0, Step::TriggerOn, 0});
    int weights = 0;
    for (const Habit &one : habits)
        weights += one.weight;
    int at = 0;
    const int count = dice.from(5, 30);
    for (int i = 0; i < count; ++i) {
        at += dice.oneIn(3) ? 0 : dice.upTo(40);
        const Habit &next = habit(dice.upTo(weights - 1));
        steps.push_back({at, next.step, dice.from(next.lowest, next.highest)});
    }
    steps.push_back({at + dice.upTo(100), Step::Disconnect, 0});
}

int Sequence::boundMs() const
{
    int longest = 0;
    for (const Plan &one : plans)
        longest = std::max(longest, one.atLaser.delayMs);
    return longest + prepareMs + *std::max_element(pictureMs.begin(), pictureMs.end()) +
           std::max(statusHoldMs, *std::max_element(scanHoldMs.begin(), scanHoldMs.end()));
}
