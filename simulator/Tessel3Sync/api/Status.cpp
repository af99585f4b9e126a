#include "api/Status.h"

namespace Tessel3SyncSimulator {

const char *statusText(int status)
{
    switch (status) {
    case Success:
        return "success";
    case UnknownScanner:
        return "no attached scanner has this name or serial number";
    case NotConnected:
        return "no scanner is connected";
    case UnknownHandle:
        return "the device handle belongs to no open connection";
    case ConnectionLost:
        return "the connection to the scanner was lost";
    case CamerasClosed:
        return "the cameras are closed";
    case UnknownMode:
        return "unknown scanning mode";
    case UnknownCamera:
        return "no connected camera has this number";
    case NullArgument:
        return "a required text or buffer is null";
    case OutOfRange:
        return "a value is out of range";
    case ListMismatch:
        return "the camera lists differ from those that were returned";
    case BadAddress:
        return "no block of user information has this address";
    case BadLength:
        return "the length of user information must be 0 to 511 bytes";
    case NoColorCamera:
        return "the scanner has no color camera";
    case StorageFailed:
        return "the file of the user information cannot be read or written";
    case BadFaultPlan:
        return "the fault plan cannot be used";
    case PlannedFault:
        return "a planned fault";
    default:
        return "unknown status";
    }
}

} // namespace Tessel3SyncSimulator
