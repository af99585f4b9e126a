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
        return "the connection to the scanner is lost";
    case CamerasClosed:
        return "the cameras are closed";
    case UnknownMode:
        return "the scanning mode is not known";
    case UnknownCamera:
        return "no connected camera has this number";
    case NullArgument:
        return "a text or buffer that is needed is null";
    case OutOfRange:
        return "a value lies outside its range";
    case ListMismatch:
        return "the camera lists are not those that were handed out";
    case BadAddress:
        return "no block of user information has this address";
    case BadLength:
        return "user information has a length of 0 to 511 bytes";
    case NoColorCamera:
        return "the scanner has no color camera";
    case StorageFailed:
        return "the user information cannot be stored";
    case BadFaultPlan:
        return "the fault plan cannot be used";
    case PlannedFault:
        return "a planned fault";
    default:
        return "unknown status";
    }
}

} // namespace Tessel3SyncSimulator
