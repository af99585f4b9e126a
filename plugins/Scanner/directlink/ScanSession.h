#ifndef SCANNER_SCANSESSION_H
#define SCANNER_SCANSESSION_H

#include "DirectLink.h"
#include "FrameReceiver.h"
#include "Light.h"
#include "Parameters.h"

#include <memory>

namespace Scanner {

/// How a scan runs, as a host asks for it.
struct ScanRequest
{
    int periodMs = 0;
    bool color = false;
    int colorMode = 0;
    ScanLight light;

    /// Reads "periodMs" (from 1; the scanner's present period if missing), "color" (false if
    /// missing), with color "colorMode" (0 if missing), and what ScanLight reads.
    static ScanRequest from(const Parameters &parameters, DirectLink &link);
    static QStringList keys();
};

/// A running scan. From its construction on frames go to the sink, none of them in another light
/// than the one asked for; its end, on every path, stops the scanner, removes the callback and
/// switches the lasers off that the scan switched on.
class ScanSession
{
public:
    /// Throws `CameraFailed` if a scan is running or the library refuses the callback,
    /// `ConnectFailed` if the connection is lost, and what ScanLight throws.
    ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                std::shared_ptr<FrameSink> sink, const ScanRequest &scanRequest);
    ~ScanSession();
    ScanSession(const ScanSession &) = delete;
    ScanSession &operator=(const ScanSession &) = delete;

private:
    struct Claimed
    {
    };
    ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                std::shared_ptr<FrameSink> sink, const ScanRequest &scanRequest, Claimed);

    void setCallback(void *function);
    void start();
    void startInOtherLight();
    void switchTrigger(bool on);

    DirectLink &link;
    FrameReceiver &receiver;
    const ScanRequest request;
};

} // namespace Scanner

#endif
