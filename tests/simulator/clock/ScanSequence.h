// A random course of events around one scanner, from a seed: what the host calls, what happens to
// the scanner, and how long everything takes. All times are milliseconds.
#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_SCANSEQUENCE_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_SCANSEQUENCE_H

#include <Tessel3SyncSimulator/Control.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class Step {
    Connect,
    Disconnect,
    TriggerOn,
    TriggerOff,
    Period,
    Brightness,
    Exposure,
    Table,
    ScanCallback,   ///< 0 none, 1 and 2 two different ones
    StatusCallback, ///< 0 none, 1 one
    Event,
    Unplug,
    Plug,
    CloseCameras,
    Reconnect,
    Laser, ///< the call that a plan may delay, refuse or lose the connection at
    Snapshot,
    Plan, ///< number of a Plan
};

struct TimedStep
{
    int at;
    Step step;
    int value;
};

/// A fault plan: at most one fault of a frame, one of repeated frames, and one of a call.
struct Plan
{
    int frame = 0; ///< 0: none
    Tessel3SyncSimulator::FrameFault atFrame;
    int every = 0; ///< 0: none
    Tessel3SyncSimulator::FrameFault atEvery;
    bool laser = false;
    Tessel3SyncSimulator::Answer atLaser;

    std::string json() const;
};

struct Sequence
{
    explicit Sequence(std::uint32_t chosen);

    std::uint32_t seed;
    bool hostile;
    int periodMs;                ///< of a new connection
    int prepareMs;               ///< to make a scene at another angle ready
    std::vector<int> pictureMs;  ///< by the frame's number, in turns
    std::vector<int> scanHoldMs; ///< how long the host takes for a frame, in turns
    int statusHoldMs;            ///< and for an event
    std::vector<Plan> plans;
    std::vector<TimedStep> steps; ///< the last one disconnects

    int pictureOf(int frame) const
    {
        return pictureMs[static_cast<std::size_t>(frame) % pictureMs.size()];
    }
    int scanHold(int delivery) const
    {
        return scanHoldMs[static_cast<std::size_t>(delivery) % scanHoldMs.size()];
    }

    /// The longest that any call may take: a planned delay, and the longest operation of the
    /// scanner.
    int boundMs() const;
};

const char *stepName(Step step);

#endif
