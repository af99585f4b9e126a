// The lists of cameras that a host gets when it enumerates, and passes when it connects.
#ifndef TESSEL3SYNCSIMULATOR_CAMERALISTS_H
#define TESSEL3SYNCSIMULATOR_CAMERALISTS_H

#include "api/Status.h"
#include "scanner/Scanner.h"

#include <vector>

namespace Tessel3SyncSimulator {

/// A camera's entry in the lists: its serial number, whether it is a color camera (1), and the port
/// that it is plugged into.
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

/// Success if an attached scanner has the name.
RETSTATUS checkName(const Scanner &scanner, const char *name);

/// The cameras in the lists, each once: hosts repeat the first camera at the end.
RETSTATUS chooseCameras(const ScannerSetup &setup, const std::vector<char *> &serials,
                        const std::vector<int> &a, const std::vector<int> &b,
                        std::vector<CameraKind> &chosen);

} // namespace Tessel3SyncSimulator

#endif
