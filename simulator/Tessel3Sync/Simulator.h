// The one simulated scanner of the process.
//
// One mutex guards everything; it is released while host code runs, while pictures are made, and
// while somebody waits. What is written here holds for every member: the mutex must be held.
#ifndef TESSEL3SYNCSIMULATOR_SIMULATOR_H
#define TESSEL3SYNCSIMULATOR_SIMULATOR_H

#include "CallRecorder.h"
#include "Connection.h"
#include "FrameSource.h"
#include "Lock.h"
#include "Script.h"
#include "Status.h"
#include "UserInformation.h"

#include <chrono>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace Tessel3SyncSimulator {

class Simulator
{
public:
    /// Never destroyed: its thread may outlive the end of main().
    static Simulator &instance();

    ~Simulator() = delete;
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    /// Begins a connection with the cameras; the handle is one that was never used before.
    void *connect(const std::vector<CameraKind> &cameras);

    /// Ends the connection; waits for a running callback unless called from it.
    void disconnect(Lock &lock);

    /// Success if the handle is that of the open connection.
    RETSTATUS checkHandle(void *handle) const;

    void startTrigger(int mode);
    void stopTrigger();

    /// What the host's switching off does: in hostile mode frames linger.
    void switchTriggerOff();

    /// Unplugs the scanner, for good or for a time, or plugs it in; the host gets an event.
    void detach(std::optional<int> backAfterMs);
    void attach();
    void sendStatus(unsigned char first, unsigned char second);

    void turnTable(double degrees);

    /// The angle of the table when a frame of the newest scan was taken.
    double tableDegreesAt(int frame) const;

    const Answer *answerTo(const std::string &function, int call) const;
    const FrameFault *faultOf(int frame) const;
    bool isHostile() const;

    /// Begins anew; the mutex is released meanwhile, as for disconnect.
    void reset(Lock &lock, const ScannerSetup &setup);

    std::mutex mutex;

    ScannerSetup setup;
    bool attached = true;
    std::optional<std::chrono::steady_clock::time_point> backAt; ///< attached again by itself
    double tableDegrees = 0.0;
    Connection connection;
    CallRecorder recorder;
    UserInformation userInformation;
    Script script;         ///< laid down by the control header
    Script plan;           ///< and by a fault plan
    std::string planError; ///< why the environment's plan cannot be used
    FrameSource frames{*this};

private:
    Simulator();

    void readEnvironment();

    std::deque<char> handles; ///< every handle ever given out is the address of one of these
    int sessions = 0;
    std::map<int, double> tableTurns; ///< from which frame of the newest scan the table stood how
};

} // namespace Tessel3SyncSimulator

#endif
