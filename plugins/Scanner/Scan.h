#ifndef SCANNER_SCAN_H
#define SCANNER_SCAN_H

#include "FrameAccount.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>

namespace Scanner {

/// Tells the host of an event: its name and its payload.
using Publish = std::function<void(const QString &name, const QVariantList &payload)>;

enum class EndReason { Complete, Stopped, ConnectionLost, Failed };

/// How a scan ended.
struct ScanEnd
{
    EndReason reason = EndReason::Complete;
    QString text; ///< a sentence; empty if complete
};

/// Publishes "scanEnded". What a slot throws is logged: the scan is over whatever it thinks.
void publishEnd(const Publish &publish, const ScanEnd &end, const FrameAccount &account) noexcept;

/// A scan that has begun, as its frames come.
class FrameSource
{
public:
    FrameSource() = default;
    FrameSource(const FrameSource &) = delete;
    FrameSource &operator=(const FrameSource &) = delete;
    virtual ~FrameSource() = default;

    /// The next frame, one map an image. Throws if none comes.
    virtual QVariantList next() = 0;
    /// Puts the device at rest, and throws if it refuses. Further calls do nothing.
    virtual void stop() = 0;
    /// How the scan ended, by the exception that is being handled.
    virtual ScanEnd thrownEnd() = 0;
    virtual FrameAccount account() const = 0;
};

/// Takes so many frames of the source and returns their maps, or none if they are not to be kept.
/// Publishes "frameArrived", "progress" and, with the device at rest, "scanEnded".
QVariantList runScan(FrameSource &source, int frames, bool keep, const Publish &publish);

} // namespace Scanner

#endif
