// The cameras as a host enumerates them and names them when it connects.
#ifndef TESSEL3SYNCSIMULATOR_CAMERALIST_H
#define TESSEL3SYNCSIMULATOR_CAMERALIST_H

#include "Simulator.h"

#include <vector>

namespace Tessel3SyncSimulator {

/// What stands in a camera's place in the lists: its serial number, its kind (1 with color) and
/// the port it is plugged into.
struct ListedCamera
{
    CameraKind kind;
    char *serial;
    int color;
    int port;
};

/// Lasts as long as the process.
char *cameraSerial(CameraKind kind);

std::vector<ListedCamera> listedCameras(const Simulator &simulator);

/// Success if an attached scanner answers to the name.
RETSTATUS checkName(const Simulator &simulator, const char *name);

/// Which cameras the lists name, each once: hosts list the first camera a second time at the end.
RETSTATUS chooseCameras(const Simulator &simulator, const std::vector<char *> &serials,
                        const std::vector<int> &a, const std::vector<int> &b,
                        std::vector<CameraKind> &chosen);

} // namespace Tessel3SyncSimulator

#endif
