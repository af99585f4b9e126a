// The one simulated scanner of the process.
//
// One mutex guards everything; it is released while host code runs, while pictures are made, and
// while somebody waits. What is written here holds for every member: the mutex must be held, as
// enter() gives it.
#ifndef TESSEL3SYNCSIMULATOR_SIMULATOR_H
#define TESSEL3SYNCSIMULATOR_SIMULATOR_H

#include "CallRecorder.h"
#include "Connection.h"
#include "Picture.h"
#include "Script.h"
#include "Status.h"
#include "UserInformation.h"
#include "scanner/FrameSource.h"
#include "scanner/RealTime.h"
#include "scanner/TableTurns.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

class Simulator final : private DueConditions, private ScannerSide
{
public:
    /// Never destroyed: its thread may outlive the end of main().
    static Simulator &instance();

    ~Simulator() = delete;
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    /// Locks the mutex and catches up.
    Lock enter();

    /// Brings about what time has brought: to be called again by whoever released the mutex,
    /// before anything is changed, since a frame shows what was so when it was due.
    void catchUp() override;

    /// Lets time pass within a call, the mutex released.
    void pass(Lock &lock, int milliseconds);

    /// Begins a connection with the cameras; the handle is one that was never used before.
    void *connect(const std::vector<CameraKind> &cameras);

    /// Ends the connection; waits for a running callback unless called from it.
    void disconnect(Lock &lock);

    /// Likewise, with any that somebody else opens meanwhile.
    void disconnectAll(Lock &lock);

    /// Success if the handle is that of the open connection.
    RETSTATUS checkHandle(void *handle) const;

    // Each waits for a running callback unless called from it.
    void setScanCallback(Lock &lock, Tessel3Sync::ScanCallBack function, void *context);
    void setStatusCallback(Lock &lock, Tessel3Sync::StatusCallBack function, void *context);

    void setTriggerPeriod(int milliseconds);
    void startTrigger(int mode);
    void stopTrigger();

    /// What the host's switching off does: in hostile mode frames linger.
    void switchTriggerOff();

    bool isAttached() const { return attached; }

    /// Unplugs the scanner, for good or for a time, or plugs it in; the host gets an event.
    void detach(std::optional<int> backAfterMs);
    void attach();
    void sendStatus(unsigned char first, unsigned char second);

    void turnTable(double degrees) { tableDegrees = degrees; }
    double tableAngle() const { return tableDegrees; }

    /// The angle of the table when a frame of the newest scan was due; how it stands if there was
    /// no such frame.
    double tableAngleAt(int frame) const { return tableTurns.at(frame).value_or(tableDegrees); }

    const Account &account() const { return counted; }
    const Answer *answerTo(const std::string &function, int call) const;

    /// Replaces the fault plan: faults from now on, and the events that are still to come.
    void usePlan(const Script &planned);

    /// Begins anew, as the environment has it; the mutex is released meanwhile, as for disconnect.
    void reset(Lock &lock);

    /// Replaces time and pictures, before anything else has happened.
    void useForTests(TimeSource &otherTime, PictureSource &otherPictures);

    ScannerSetup setup;
    Connection connection;
    CallRecorder recorder;
    UserInformation userInformation;
    Script script;         ///< laid down by the control header
    Script plan;           ///< and by a fault plan
    std::string planError; ///< why the environment's plan cannot be used

private:
    Simulator();

    void readEnvironment();
    void endSession();
    void planEvents();
    void sendPlanned();

    // What the session's clock asks.
    Shot takeDown(int first, int last) override;
    FrameFault faultOf(int frame) const override;
    bool isHostile() const override { return script.hostile || plan.hostile; }
    bool isHostBusy() const override { return frames.isHostBusy(); }

    // What the frame thread asks.
    TimePoint now() const override { return time->now(); }
    std::optional<TimePoint> nextChange() const override;
    std::optional<StatusBytes> takeEvent() override;
    Callbacks callbacks() const override { return connection.callbacks; }
    std::shared_ptr<ScanSession> session() const override { return scan; }
    Shot shot() const override;
    void loseConnection(std::optional<int> backAfterMs) override { detach(backAfterMs); }

    std::mutex mutex;
    RealTime realTime{mutex};
    TimeSource *time = &realTime;
    Picture picture;
    FrameSource frames{*this, picture};
    Account counted;

    bool attached = true;
    std::optional<TimePoint> backAt; ///< attached again by itself
    std::shared_ptr<ScanSession> scan;
    double tableDegrees = 0.0;
    TableTurns tableTurns;
    std::deque<char> handles; ///< every handle ever given out is the address of one of these
};

} // namespace Tessel3SyncSimulator

#endif
