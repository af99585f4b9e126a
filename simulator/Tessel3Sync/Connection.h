// What exists while a host is connected.
#ifndef TESSEL3SYNCSIMULATOR_CONNECTION_H
#define TESSEL3SYNCSIMULATOR_CONNECTION_H

#include "Outputs.h"
#include "Settings.h"
#include "scanner/TimeSource.h"

#include <deque>
#include <map>
#include <vector>

namespace Tessel3SyncSimulator {

struct ConnectedCamera
{
    CameraKind kind;
    CameraSettings settings;
};

/// What the status callback tells: a StatusEvent and what belongs to it.
struct StatusBytes
{
    unsigned char first;
    unsigned char second;
};

struct Callbacks
{
    Tessel3Sync::ScanCallBack scan = nullptr;
    void *scanContext = nullptr;
    Tessel3Sync::StatusCallBack status = nullptr;
    void *statusContext = nullptr;
};

struct Connection
{
    void *handle = nullptr; ///< null while nobody is connected
    TimePoint begun;
    bool camerasOpen = false;
    std::vector<ConnectedCamera> cameras;
    LightSettings light;
    int triggerPeriodMs = 0;
    Callbacks callbacks;
    std::deque<StatusBytes> events;                      ///< not delivered yet
    std::multimap<TimePoint, StatusBytes> plannedEvents; ///< not come to pass yet
    Snapshot snapshot;
    int snapshots = 0;
};

} // namespace Tessel3SyncSimulator

#endif
