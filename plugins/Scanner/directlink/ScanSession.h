#ifndef SCANNER_SCANSESSION_H
#define SCANNER_SCANSESSION_H

#include "DirectLink.h"
#include "FrameReceiver.h"
#include "Parameters.h"

#include <memory>

namespace Scanner {

/// How a scan runs, as a host asks for it.
struct ScanRequest
{
    int periodMs;
    bool color;
    int colorMode;

    /// Reads "periodMs" (from 1; the scanner's present period if missing), "color" (false if
    /// missing) and "colorMode" (0 if missing).
    static ScanRequest from(const Parameters &parameters, DirectLink &link);
};

/// A running scan. From its construction on frames go to the sink; its end, on every path, stops
/// the scanner and removes the callback.
class ScanSession
{
public:
    /// Throws `CameraFailed` if a scan is running or the library refuses the callback.
    ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                std::shared_ptr<FrameSink> sink, const ScanRequest &request);
    ~ScanSession();
    ScanSession(const ScanSession &) = delete;
    ScanSession &operator=(const ScanSession &) = delete;

private:
    ScanSession(DirectLink &directLink, FrameReceiver &frameReceiver,
                std::shared_ptr<FrameSink> sink);

    DirectLink &link;
    FrameReceiver &receiver;
};

} // namespace Scanner

#endif
