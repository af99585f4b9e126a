#ifndef KVSYNCTOOL_ERRORCODE_H
#define KVSYNCTOOL_ERRORCODE_H

/// Result of an operation of the service core.
///
/// A failure is 0x01gg_nnnn: gg is the group (0x00 loading and dispatch, 0x08 camera, 0x0A
/// projector, 0x0D direct scanner link, 0x0F device management), nnnn a number within it. Compare
/// with equality only. The type is a plain 32-bit integer in the binary contract: a plug-in may
/// return codes of its own, which pass through the core unchanged.
enum ErrorCode : int {
    /// The operation succeeded; the only code equal to 0.
    Success = 0,

    /// The plug-in directory does not exist.
    PathNotExist = 0x01000001,
    /// A plug-in file was found, but loading it yielded no root object.
    PluginLoadFailed = 0x01000002,
    /// No plug-in file matches the name pattern.
    PluginFileNotExist = 0x01000006,
    /// A required name, version or path is empty, two paths that must differ are equal, or an
    /// argument of the direct link cannot be used.
    InvalidParameter = 0x01000009,

    /// The function name is not one of the twelve that dispatch knows.
    FunctionNotExist = 0x01002000,
    /// Fewer arguments than the function needs.
    WrongArgumentCount = 0x01002001,

    /// A camera call of the direct link failed: the scan callback, or a color snapshot.
    CameraFailed = 0x01080000,
    /// A projection call of the direct link failed.
    ProjectorFailed = 0x010A0000,
    /// A command of the direct link's command table failed.
    CommandFailed = 0x010D0009,
    /// Connecting, reconnecting or disconnecting the directly linked scanner failed.
    ConnectFailed = 0x010D000A,

    /// A device-level call failed: the scanner library refused it, or a plug-in loader could not be
    /// allocated.
    DeviceOperationFailed = 0x010F0000,
    /// The named plug-in is not loaded in the requested version, or is not a usable factory.
    PluginNotLoaded = 0x010F0001,
    /// Device enumeration or creation was given an empty name or a null version.
    PluginNameOrVersionNull = 0x010F0002,
    /// The handle names no created device, or the device lacks the capability.
    HandleInvalid = 0x010F0003,
};

namespace KvSyncTool {

/// The enumerator's name, for display; null for a code that is not one of the core's, such as a
/// plug-in's own. Callable from any thread.
constexpr const char *errorCodeName(ErrorCode code) noexcept
{
    switch (code) {
    case Success:
        return "Success";
    case PathNotExist:
        return "PathNotExist";
    case PluginLoadFailed:
        return "PluginLoadFailed";
    case PluginFileNotExist:
        return "PluginFileNotExist";
    case InvalidParameter:
        return "InvalidParameter";
    case FunctionNotExist:
        return "FunctionNotExist";
    case WrongArgumentCount:
        return "WrongArgumentCount";
    case CameraFailed:
        return "CameraFailed";
    case ProjectorFailed:
        return "ProjectorFailed";
    case CommandFailed:
        return "CommandFailed";
    case ConnectFailed:
        return "ConnectFailed";
    case DeviceOperationFailed:
        return "DeviceOperationFailed";
    case PluginNotLoaded:
        return "PluginNotLoaded";
    case PluginNameOrVersionNull:
        return "PluginNameOrVersionNull";
    case HandleInvalid:
        return "HandleInvalid";
    }
    return nullptr;
}

} // namespace KvSyncTool

#endif
