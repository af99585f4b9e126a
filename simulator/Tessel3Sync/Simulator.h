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

#include <deque>
#include <map>
#include <mutex>
#include <string>

namespace Tessel3SyncSimulator {

class Simulator
{
public:
    /// Never destroyed: its thread may outlive the end of main().
    static Simulator &instance();

    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    /// Begins a connection with the cameras; the handle is one that was never used before.
    void *connect(const std::vector<CameraKind> &cameras);

    /// Ends the connection; waits for a running callback unless called from it.
    void disconnect(Lock &lock);

    /// Success if the handle is that of the open connection and the scanner is attached.
    RETSTATUS checkHandle(void *handle) const;

    void startTrigger(int mode);
    void stopTrigger();

    /// Begins anew; the mutex is released meanwhile, as for disconnect.
    void reset(Lock &lock, const ScannerSetup &setup);

    std::mutex mutex;

    ScannerSetup setup;
    bool attached = true;
    double tableDegrees = 0.0;
    Connection connection;
    CallRecorder recorder;
    std::map<int, std::string> userInformation; ///< by address; outlasts connections
    Script script;
    FrameSource frames{*this};

private:
    Simulator();
    ~Simulator() = delete;

    std::deque<char> handles; ///< every handle ever given out is the address of one of these
    int sessions = 0;
};

} // namespace Tessel3SyncSimulator

#endif
