// The scanner as the frame thread sees it.
#ifndef TESSEL3SYNCSIMULATOR_SCANNERVIEW_H
#define TESSEL3SYNCSIMULATOR_SCANNERVIEW_H

#include "scanner/ScanPlan.h"
#include "scanner/SessionClock.h"

#include <memory>
#include <optional>

namespace Tessel3SyncSimulator {

struct Callbacks
{
    Tessel3Sync::ScanCallBack scan = nullptr;
    void *scanContext = nullptr;
    Tessel3Sync::StatusCallBack status = nullptr;
    void *statusContext = nullptr;
};

/// One scan, from enabling the trigger to disabling it.
struct ScanSession
{
    ScanSession(int triggerMode, const SessionClock &started)
        : mode(triggerMode)
        , clock(started)
    {
    }

    const int mode;
    bool lingering = false; ///< disabled, but frames go on coming: hostile mode
    SessionClock clock;
};

/// The simulator's mutex must be held.
class ScannerView
{
public:
    virtual TimePoint now() const = 0;

    /// Does what has become due by now.
    virtual void catchUp() = 0;

    /// When something other than a frame is due next, if anything is.
    virtual std::optional<TimePoint> nextChange() const = 0;

    /// The oldest status event that was not delivered; none if there is none.
    virtual std::optional<StatusBytes> takeEvent() = 0;

    virtual Callbacks callbacks() const = 0;
    virtual bool isHostile() const = 0;

    /// Whether a callback is running: what becomes due meanwhile waits for the host.
    virtual void setHostBusy(bool busy) = 0;

    /// Null while the trigger is disabled. Whoever releases the mutex asks again.
    virtual std::shared_ptr<ScanSession> session() const = 0;

    /// What a frame would show that was due now.
    virtual Shot shot() const = 0;

    /// Loses the connection to the host, for good or for a time.
    virtual void loseConnection(std::optional<int> backAfterMs) = 0;

protected:
    ~ScannerView() = default;
};

} // namespace Tessel3SyncSimulator

#endif
