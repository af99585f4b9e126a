#ifndef TESSEL3SYNCSIMULATOR_SCANNERSIDE_H
#define TESSEL3SYNCSIMULATOR_SCANNERSIDE_H

#include "Connection.h"
#include "scanner/SessionClock.h"

#include <memory>
#include <optional>

namespace Tessel3SyncSimulator {

/// One scan, from the trigger's going on to its going off.
struct ScanSession
{
    ScanSession(int triggerMode, const SessionClock &begun)
        : mode(triggerMode)
        , clock(begun)
    {
    }

    const int mode;
    bool lingering = false; ///< switched off, but frames go on coming: hostile mode
    SessionClock clock;
};

/// What the frame thread knows of the scanner, and does to it. The simulator's mutex must be held.
class ScannerSide
{
public:
    virtual TimePoint now() const = 0;

    /// Brings about what time has brought until now.
    virtual void catchUp() = 0;

    /// When something comes about that is no frame, if anything does.
    virtual std::optional<TimePoint> nextChange() const = 0;

    /// The next status event that the host has not got; none if there is no more.
    virtual std::optional<StatusBytes> takeEvent() = 0;

    virtual Callbacks callbacks() const = 0;
    virtual bool isHostile() const = 0;

    /// Null while the trigger is off. Whoever releases the mutex asks again.
    virtual std::shared_ptr<ScanSession> session() const = 0;

    /// What a frame would show that was due now.
    virtual Shot shot() const = 0;

    /// Loses the connection to the host, for good or for a time.
    virtual void loseConnection(std::optional<int> backAfterMs) = 0;

protected:
    ~ScannerSide() = default;
};

} // namespace Tessel3SyncSimulator

#endif
