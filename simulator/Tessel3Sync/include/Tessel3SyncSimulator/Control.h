// Controls the simulated scanner, for tests and host developers.
//
// The simulator is a shared library that implements the functions of Tessel3Sync.h, so a host
// drives it without noticing. Through this header the same process chooses what the scanner is,
// reads the calls that it received, scripts their results and reads the account of its frames.
//
// Threads: every function here may be called from any thread at any time, also from inside a
// callback. Everything is returned by value.
//
// The scanner has the name "KV-SIM-0001"; an empty name finds it too. While it is connected:
//  - frames are delivered on a thread of the library's own, one delivery at a time, one period
//    apart. The images come in the order of the connected cameras, dimension1 is the width,
//    dimension2 the height, and the integer of every image is the frame number, which starts at 1
//    with each EnableVideoTrigger;
//  - trigger mode 1 delivers the speckle cameras, every other mode the color camera's brightness
//    too;
//  - four frames are buffered for a slow host; older ones are dropped;
//  - removing or replacing a callback, and disconnecting, wait for a callback that is running,
//    unless called from it. Disabling the trigger does not wait. A callback must not throw;
//  - image buffers belong to the library and are valid until the callback returns; snapshots until
//    the next snapshot or the disconnect; texts until the process ends. The library is therefore
//    never unloaded.
#ifndef TESSEL3SYNCSIMULATOR_CONTROL_H
#define TESSEL3SYNCSIMULATOR_CONTROL_H

#include <Tessel3Sync/Tessel3Sync.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace Tessel3SyncSimulator {

/// What the simulator returns when it refuses a call. Success is 7.
enum Status : int {
    UnknownScanner = 1, ///< no attached scanner has this name or serial number
    NotConnected = 2,   ///< the device handle is null
    UnknownHandle = 3,  ///< the device handle belongs to no open connection
    ConnectionLost = 4, ///< the scanner is no longer attached
    CamerasClosed = 5,  ///< the cameras were closed and not reconnected
    UnknownMode = 6,    ///< ConnectDevice knows only the mode "SPECKLE"
    UnknownCamera = 8,  ///< no connected camera has this index
    NullArgument = 9,   ///< a required text or buffer is null
    OutOfRange = 10,    ///< a value is out of range
    ListMismatch = 11,  ///< the lists for ConnectDevice differ from those that were returned
    BadAddress = 12,    ///< no block of user information has this address
    BadLength = 13,     ///< the length of user information is not 0 to 511 bytes
    NoColorCamera = 14, ///< a snapshot needs the color camera
    StorageFailed = 15, ///< the file of the user information cannot be read or written
    BadFaultPlan = 16,  ///< the fault plan cannot be used; the text says why
    PlannedFault = 17,  ///< a fault plan makes the call fail without naming a status
};

/// What the projector shows; other work types are refused.
enum ProjectorWork : int {
    ProjectorOff = 0,
    ProjectorFlat = 1,
    ProjectorSpeckle = 2,
    ProjectorStripes = 3,
};

/// The blue laser's lines; other modes are refused.
enum LaserMode : int {
    LaserOneLine = 0,
    LaserParallelLines = 1,
    LaserCrossedLines = 2,
};

/// Ranges of what can be set, limits included.
constexpr int MaximumRatio = 100;         ///< duty ratios and projector brightness: 0 to 100 %
constexpr int MaximumGain = 65535;        ///< gain g multiplies by 1 + g / 16, from 0
constexpr double MinimumExposureUs = 1.0; ///< microseconds
constexpr double MaximumExposureUs = 1000000.0; ///< microseconds; not limited by the trigger period
constexpr int MaximumTriggerMode = 7;           ///< trigger modes 0 to 7; 1 is without color
constexpr int MaximumControlRoute = 2;          ///< control routes 0 to 2; 0 leaves the strobe dark
constexpr int MaximumStrobeState = 4;           ///< strobe states 0 to 4; 0 is dark
constexpr int MaximumDistanceStatus = 3;        ///< distance indications 0 to 3
constexpr int MaximumTriggerPeriodMs = 3600000; ///< milliseconds, from 1
constexpr int MinimumSide = 16;                 ///< pixels of an image's width and height
constexpr int MaximumSide = 4096;
constexpr int UserInformationBlocks = 256; ///< addresses 0 to 255
constexpr int UserInformationLength = 511; ///< bytes in one block

/// Environment variables: the file name of a fault plan; a description of the scanner, as JSON like
/// the plan's "scanner", whose members it overrides; and the file name of the user information.
/// They are read at the first call, and by reset(). If the plan or the description cannot be used,
/// the reason is written to standard error, and every call but GetStatusDescriptionString returns
/// BadFaultPlan, whose description is the reason.
constexpr const char *FaultPlanVariable = "TESSEL3SYNC_SIMULATOR_PLAN";
constexpr const char *ScannerVariable = "TESSEL3SYNC_SIMULATOR_SCANNER";
constexpr const char *UserInformationVariable = "TESSEL3SYNC_SIMULATOR_USER_INFORMATION";

// What the scanner is

enum class CameraKind { LeftSpeckle, RightSpeckle, Color };

/// One simulated scanner.
struct ScannerSetup
{
    /// Each kind at most once, in any order. May be empty.
    std::vector<CameraKind> cameras{CameraKind::LeftSpeckle, CameraKind::RightSpeckle,
                                    CameraKind::Color};
    int width = 1280;         ///< pixels, MinimumSide to MaximumSide
    int height = 1024;        ///< likewise
    std::uint32_t seed = 1;   ///< of the pattern and of the sensor noise
    int triggerPeriodMs = 33; ///< after connecting, until the host sets another; from 1
};

/// Starts over with the scanner described, whatever the environment says of it: disconnects, waits
/// for a running callback, and discards every call, script, setting and user information. Throws
/// std::invalid_argument, changing nothing, if the description is out of range.
TESSEL3SYNC_API void reset(const ScannerSetup &setup);

/// The same with the scanner that a process starts with: that of the environment and its plan, by
/// default ScannerSetup().
TESSEL3SYNC_API void reset();

/// The present description of the scanner.
TESSEL3SYNC_API ScannerSetup setup();

// What happens to it

/// First and second byte of the status callback. Events are delivered one after another on the
/// frame thread; an event is lost if no callback is registered.
enum StatusEvent : unsigned char {
    ConnectionEvent = 1, ///< with a ConnectionState
    DistanceEvent = 2,   ///< with a DistanceState
    ButtonEvent = 3,     ///< with the number of the pressed button, from 1
};
enum ConnectionState : unsigned char { ConnectionIsLost = 0, ConnectionIsBack = 1 };
enum DistanceState : unsigned char { DistanceTooNear = 1, DistanceRight = 2, DistanceTooFar = 3 };

/// Sends a status event to the connected host, if any.
TESSEL3SYNC_API void sendStatus(unsigned char first, unsigned char second);

/// Unplugs the scanner or plugs it in again; the connected host gets a connection event. While it
/// is unplugged it is not found, and its calls return ConnectionLost, except those that disconnect
/// or set callbacks. The trigger stops and the cameras close: a host whose connection is back calls
/// ReconnectDevice.
TESSEL3SYNC_API void setAttached(bool attached);

/// Turns the table with the object to an angle in degrees, for all later frames. Throws
/// std::invalid_argument unless the angle is within 3,600,000 degrees of 0.
TESSEL3SYNC_API void setTurntableAngle(double degrees);
TESSEL3SYNC_API double turntableAngle();

/// Keeps user information in a file, by its name in UTF-8, beyond the end of the process. Reads the
/// file if it exists. An empty name keeps it in memory again, empty at first. If the file is not
/// one of the simulator's, it is left alone, and reads and writes return StorageFailed.
TESSEL3SYNC_API void setUserInformationFile(const std::string &file);

// The calls that it received

/// One call of the library.
struct Call
{
    std::string function;
    /// Every input in order, as text: numbers plain, texts in quotation marks, lists in brackets,
    /// pointers as addresses or "null". The device handle is "device" if it is that of the open
    /// connection. Lists are shown as they were on entry; what a call only writes is omitted.
    std::vector<std::string> arguments;

    bool operator==(const Call &other) const
    {
        return function == other.function && arguments == other.arguments;
    }
};

/// A pointer as Call::arguments shows it.
TESSEL3SYNC_API std::string addressText(const void *pointer);

/// A call as "Function(argument, argument)".
TESSEL3SYNC_API std::string callText(const Call &call);

/// The newest ten thousand calls since reset() or clearCalls(), oldest first.
TESSEL3SYNC_API std::vector<Call> calls();

/// Discards the recorded calls. Calls are still numbered from reset().
TESSEL3SYNC_API void clearCalls();

/// How often a function was called since reset().
TESSEL3SYNC_API int callCount(const std::string &function);

// What its calls return

/// Texts or image buffers in a list; an empty optional is a null pointer.
using Texts = std::vector<std::optional<std::string>>;

/// The value of one output. Null is for texts and buffers.
using Value = std::variant<std::nullptr_t, bool, int, double, std::string, std::vector<bool>,
                           std::vector<int>, Texts>;

/// What one call does instead of what it would do by itself.
struct Answer
{
    Answer() = default;
    Answer(std::optional<int> returned, std::map<std::string, Value> written)
        : status(returned)
        , outputs(std::move(written))
    {
    }

    /// Returned, and the call does nothing.
    std::optional<int> status;
    /// Outputs by their names in Tessel3Sync.h, written last, whatever the status. The vector of
    /// images takes Texts of raw bytes. For ReadUserInfomation, "buffer" writes a text into the
    /// caller's buffer, or with null sets the pointer to null; "replacement" puts a text into a new
    /// buffer of 512 bytes, which the caller frees with delete[]. The simulator frees a buffer that
    /// it replaces.
    std::map<std::string, Value> outputs;
    /// Milliseconds that pass before anything else happens. Other calls are served meanwhile.
    int delayMs = 0;
    /// Every output is the complement of the right one: numbers, flags, texts and pixels bit by
    /// bit.
    bool corrupt = false;
    /// The connection is lost before the call is served, and comes back by itself after these
    /// milliseconds, if any.
    bool disconnect = false;
    std::optional<int> backAfterMs;
};

/// The number that a frame is delivered with.
enum class Numbering {
    Own,
    Twice,   ///< that of the frame before it
    Swapped, ///< that of the frame after it, which gets this one's
    Skipped, ///< the next one; all later frames of the scan are numbered one higher too
};

/// What happens to a frame.
struct FrameFault
{
    int delayMs = 0;         ///< milliseconds before the frame is delivered or dropped
    bool drop = false;       ///< counted as planned
    bool corrupt = false;    ///< the middle third of every image is complemented
    bool disconnect = false; ///< the connection is lost instead of a delivery
    std::optional<int> backAfterMs;

    // Bad deliveries, which count as delivered; not together with drop or disconnect. An image that
    // the delivery does not have changes nothing.
    std::optional<int> nullImage;    ///< the buffer of this image is a null pointer
    std::optional<int> missingImage; ///< this image is left out, but its number is not
    /// The reported size in pixels, -MaximumSide to MaximumSide. The buffers hold as many bytes as
    /// the absolute values ask for, so that a host may believe them.
    std::optional<int> toldWidth;
    std::optional<int> toldHeight;
    Numbering numbering = Numbering::Own;
};

/// The most images of a delivery, one for each camera.
constexpr int MaximumImages = 3;

/// The longest delay of an answer or a fault.
constexpr int MaximumDelayMs = 600000;

/// The number that stands for every call of a function.
constexpr int EveryCall = 0;

/// Scripts one call of a function, by its number since reset() (from 1), or every call. A later
/// answer to the same call replaces an earlier one; an answer for one number takes precedence over
/// one for every call, and both over the fault plan's. Throws std::invalid_argument for an unknown
/// function or output, or for a value of the wrong kind.
TESSEL3SYNC_API void script(const std::string &function, int call, const Answer &answer);

/// The same for a frame, by its number in any scan.
TESSEL3SYNC_API void scriptFrame(int frame, const FrameFault &fault);

/// Replaces the fault plan by a JSON text, or by a file whose name is UTF-8 (docs/simulator.md has
/// the format; an empty object is the plan without faults). Throws std::invalid_argument, keeping
/// the old plan, with a text that says what is wrong and where; also for a plan that describes the
/// scanner while a host is connected.
TESSEL3SYNC_API void setFaultPlan(const std::string &json);
TESSEL3SYNC_API void loadFaultPlan(const std::string &file);

/// Hostile mode: every callback comes from another thread; frames come in bursts of up to four; and
/// after the trigger is disabled they go on coming until the callback is removed or the scanner is
/// disconnected. A fault plan can enable it too.
TESSEL3SYNC_API void setHostile(bool hostile);

// What became of its frames

/// Frames since reset(). At any time produced = delivered + dropped.
struct Account
{
    long long produced = 0;
    long long delivered = 0;     ///< the callback was called, and may still be running
    long long noCallback = 0;    ///< dropped: no scan callback was registered
    long long hostSlow = 0;      ///< dropped: the buffers were full while the host's callback ran
    long long simulatorSlow = 0; ///< dropped: the image was not ready in time
    long long stopped = 0;       ///< dropped: due but not yet delivered when the scan ended
    long long planned = 0;       ///< dropped by a fault plan, or lost while a planned delay passed

    long long dropped() const { return noCallback + hostSlow + simulatorSlow + stopped + planned; }
    bool balances() const { return produced == delivered + dropped(); }
};

TESSEL3SYNC_API Account account();

// The truth about its pictures

/// What a pixel reads without light, in gray levels, whatever the exposure and gain.
constexpr int BlackLevel = 4;

/// The amplification of a gain, relative to the gain after connecting, 16.
constexpr double amplification(int gain)
{
    return (1.0 + gain / 16.0) / 2.0;
}

/// The variance of a pixel's noise, in squared gray levels, where the light raises it by `signal`
/// gray levels above BlackLevel. It is the sum of the variances of rounding, of the converter, of
/// the dark sensor, and of the light itself. It holds where neither 0 nor 255 clips the noise, and
/// up to a standard deviation of 50 gray levels, beyond which noise grows no further.
constexpr double noiseVariance(double signal, int gain)
{
    const double a = amplification(gain);
    return 1.0 / 12.0 + 0.3 + 0.3 * a * a + 0.02 * a * signal;
}

/// A camera without distortion. World coordinates are the scanner's, in millimeters: x to the
/// right, y down, z away from the scanner. A world point p is c = rotation * (p - position) in the
/// camera's frame, and its image is at x = focalLength * c.x / c.z + centreX, y = focalLength * c.y
/// / c.z + centreY, where integers are the centers of pixels.
struct Calibration
{
    int width = 0;
    int height = 0;
    double focalLength = 0.0;         ///< pixels
    double centreX = 0.0;             ///< pixels
    double centreY = 0.0;             ///< pixels
    std::array<double, 9> rotation{}; ///< row by row
    std::array<double, 3> position{}; ///< millimeters
};

/// The calibration of a camera at the present resolution.
TESSEL3SYNC_API Calibration calibration(CameraKind camera);

/// The depth of a pixel whose ray meets nothing. It is farther away than every surface.
constexpr float NothingThere = std::numeric_limits<float>::infinity();

/// The true depth of each pixel, row by row: the z of its surface point in the camera's own frame
/// (Calibration's c.z), in millimeters, or NothingThere. With the number of a frame of the newest
/// scan since reset(), as the table stood when the frame was due, even after the scan or the
/// connection has ended. Without a number, or with one that the scan has not had, for the present
/// scene.
TESSEL3SYNC_API std::vector<float> trueDepth(CameraKind camera, int frame);
TESSEL3SYNC_API std::vector<float> trueDepth(CameraKind camera);

} // namespace Tessel3SyncSimulator

/// The turntable for code that looks the functions up at run time, such as a command plug-in.
/// Setting returns 1, or 0 if the angle is refused.
extern "C" TESSEL3SYNC_API int Tessel3SyncSimulator_setTurntableAngle(double degrees);
extern "C" TESSEL3SYNC_API double Tessel3SyncSimulator_turntableAngle(void);

#endif
