// What exists while a host is connected.
#ifndef TESSEL3SYNCSIMULATOR_CONNECTION_H
#define TESSEL3SYNCSIMULATOR_CONNECTION_H

#include "Outputs.h"
#include "Settings.h"

#include <cstdint>
#include <deque>
#include <vector>

namespace Tessel3SyncSimulator {

struct ConnectedCamera
{
    CameraKind kind;
    CameraSettings settings;
};

struct Trigger
{
    bool enabled = false;
    bool lingering = false; ///< switched off, but frames go on coming: hostile mode
    int mode = Tessel3Sync::CAMERA_TRIGGER_MODE_NO_COLOR;
    int periodMs = 0;
    int session = 0; ///< changes with every enabling, so that an old frame knows it is late
    int frame = 0;   ///< number of the last frame produced in this session

    bool runs() const { return enabled || lingering; }
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
    bool camerasOpen = false;
    std::vector<ConnectedCamera> cameras;
    LightSettings light;
    Trigger trigger;
    Callbacks callbacks;
    std::deque<StatusBytes> events; ///< not delivered yet
    Snapshot snapshot;
    int snapshots = 0;
};

} // namespace Tessel3SyncSimulator

#endif
