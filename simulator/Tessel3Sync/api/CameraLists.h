// The cameras as a host enumerates them and names them when it connects.
#ifndef TESSEL3SYNCSIMULATOR_CAMERALISTS_H
#define TESSEL3SYNCSIMULATOR_CAMERALISTS_H

#include "api/Status.h"
#include "scanner/Scanner.h"

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

std::vector<ListedCamera> listedCameras(const ScannerSetup &setup);

/// Success if an attached scanner answers to the name.
RETSTATUS checkName(const Scanner &scanner, const char *name);

/// Which cameras the lists name, each once: hosts list the first camera a second time at the end.
RETSTATUS chooseCameras(const ScannerSetup &setup, const std::vector<char *> &serials,
                        const std::vector<int> &a, const std::vector<int> &b,
                        std::vector<CameraKind> &chosen);

} // namespace Tessel3SyncSimulator

#endif
