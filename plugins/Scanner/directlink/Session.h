#ifndef SCANNER_DIRECTLINK_SESSION_H
#define SCANNER_DIRECTLINK_SESSION_H

#include "Callbacks.h"
#include "CommandInfo.h"
#include "Connection.h"
#include "Controls.h"
#include "Parameters.h"

#include <chrono>
#include <memory>

namespace Scanner::DirectLink {

/// A scanner that is quiet for so long during a scan is asked whether it is still there.
constexpr std::chrono::milliseconds quietTime(250);

/// How a scan ends whose scanner is gone.
ScanEnd lostConnection();
/// How a scan ended by the exception that is being handled: it failed, unless the scanner is gone.
ScanEnd endOfThrown(Connection &link);

/// How a scan runs, as a host asks for it.
struct ScanRequest
{
    int periodMs = 0;
    int triggerMode = 1; ///< the color mode, or 1 without color
    ScanLight light;

    /// Reads "periodMs" (from 1; the scanner's present period if missing), "color" (false if
    /// missing), with color "colorMode" (0 if missing), and what ScanLight reads.
    static ScanRequest from(const Parameters &parameters, Connection &link);
    static std::vector<ParameterInfo> parameters();
};

/// A running scan. From its construction on frames go to the sink, none of them in another light
/// than the one asked for. Its end stops the scanner, removes the callback and switches the lasers
/// off that the scan switched on.
class Session
{
public:
    /// Throws `CameraFailed` if a scan is running or the library refuses the callback,
    /// `ConnectFailed` if the connection is lost, `CommandFailed` if the scanner refuses a step,
    /// and what ScanLight throws; the scanner is stopped then.
    Session(Connection &connection, FrameReceiver &frameReceiver, std::shared_ptr<FrameSink> sink,
            const ScanRequest &scanRequest);
    /// Stops, whatever the scanner says to it.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Takes every step to the scanner's rest, then throws the first that it refused, with its code
    /// and a text, or `ConnectFailed` if the connection is lost. Further calls do nothing.
    void stop();

private:
    struct Claimed
    {
    };
    Session(Connection &connection, FrameReceiver &frameReceiver, std::shared_ptr<FrameSink> sink,
            const ScanRequest &scanRequest, Claimed);

    void start();
    void switchTrigger(bool on);
    ErrorCode setTrigger(KvSyncCore::DeviceController &controller, bool on) const;

    Connection &link;
    FrameReceiver &receiver;
    const ScanRequest request;
    bool isStopped = false;
};

} // namespace Scanner::DirectLink

#endif
