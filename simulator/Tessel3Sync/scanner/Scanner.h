// The simulated scanner: what it is, who is connected to it, and its scan.
#ifndef TESSEL3SYNCSIMULATOR_SCANNER_H
#define TESSEL3SYNCSIMULATOR_SCANNER_H

#include "scanner/ScannerView.h"
#include "scanner/TableHistory.h"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace Tessel3SyncSimulator {

/// The simulator's mutex must be held for every operation. Whoever released it calls catchUp()
/// before changing anything, since a frame shows what held when it was due.
class Scanner final : public ScannerView, private DueConditions
{
public:
    /// Uses both as long as it lives.
    Scanner(TimeSource &timeSource, const ScanPlan &scanPlan);

    /// Uses another time. For tests, before anything else has happened.
    void useTime(TimeSource &other) { time = &other; }

    /// Makes it a new scanner that nobody is connected to.
    void reset();

    /// Changes what the scanner is, while nobody is connected.
    void setSetup(const ScannerSetup &described) { scannerSetup = described; }
    const ScannerSetup &setup() const { return scannerSetup; }

    // The connection

    /// Begins a connection with the cameras. The handle is one that was never used before.
    void *connect(const std::vector<CameraKind> &cameras);
    void disconnect();
    bool isConnected() const { return connection.handle != nullptr; }
    bool isConnectedAs(const void *handle) const { return handle && handle == connection.handle; }

    /// Sends the timed events of the plan that are still to come, instead of those planned before.
    void planEvents();

    /// Unplugs the scanner, for good or for a time, or plugs it in. The host gets an event.
    void detach(std::optional<int> backAfterMs);
    void attach();
    bool isAttached() const { return attached; }
    void sendStatus(const StatusBytes &event);

    // What the host sets. The callback that is running goes on.

    void setScanCallback(Tessel3Sync::ScanCallBack function, void *context);
    void setStatusCallback(Tessel3Sync::StatusCallBack function, void *context);

    /// Each disables the trigger.
    void openCameras();
    void closeCameras();
    bool areCamerasOpen() const { return connection.camerasOpen; }

    int cameraCount() const { return static_cast<int>(connection.cameras.size()); }

    /// Null if there is no such connected camera.
    ConnectedCamera *camera(int index);
    const ConnectedCamera *colorCamera() const;

    LightSettings &light() { return connection.light; }

    // The scan

    void setTriggerPeriod(int milliseconds);
    int triggerPeriod() const { return connection.triggerPeriodMs; }
    void enableTrigger(int mode);

    /// In hostile mode frames go on coming as long as there is a callback.
    void disableTrigger();

    const Account &account() const { return counted; }

    // Snapshots

    /// A new snapshot by the camera: everything that it depends on.
    Shot nextSnapshot(const ConnectedCamera &camera, bool strobe);

    /// The buffers of the newest snapshot, which the host uses until the next one.
    Images &snapshot() { return connection.snapshot; }

    // The table

    void turnTable(double degrees) { tableDegrees = degrees; }
    double tableAngle() const { return tableDegrees; }

    /// The angle when a frame of the newest scan was due; the present one if there was no such
    /// frame.
    double tableAngleAt(int frame) const { return tableHistory.at(frame).value_or(tableDegrees); }

    // For the frame thread

    TimePoint now() const override { return time->now(); }
    void catchUp() override;
    std::optional<TimePoint> nextChange() const override;
    std::optional<StatusBytes> takeEvent() override;
    Callbacks callbacks() const override { return connection.callbacks; }
    bool isHostile() const override { return plan.isHostile(); }
    void setHostBusy(bool busy) override { hostBusy = busy; }
    std::shared_ptr<ScanSession> session() const override { return scan; }
    Shot shot() const override;
    void loseConnection(std::optional<int> backAfterMs) override { detach(backAfterMs); }

private:
    /// What exists while a host is connected.
    struct Connection
    {
        void *handle = nullptr; ///< null while nobody is connected
        TimePoint begun;
        bool camerasOpen = false;
        std::vector<ConnectedCamera> cameras;
        LightSettings light;
        int triggerPeriodMs = 0;
        Callbacks callbacks;
        std::deque<StatusBytes> events;                      ///< not delivered yet
        std::multimap<TimePoint, StatusBytes> plannedEvents; ///< still to come
        Images snapshot;
        int snapshots = 0;
    };

    // What the session's clock asks
    Shot recordDue(int first, int last) override;
    FrameFault faultOf(int frame) const override { return plan.faultOf(frame); }
    bool isHostBusy() const override { return hostBusy; }

    Shot plainShot() const;
    void sendPlanned();
    void endSession();

    TimeSource *time;
    const ScanPlan &plan;
    ScannerSetup scannerSetup;
    Connection connection;
    Account counted;
    bool hostBusy = false;

    bool attached = true;
    std::optional<TimePoint> backAt; ///< attached again by itself
    std::shared_ptr<ScanSession> scan;
    double tableDegrees = 0.0;
    TableHistory tableHistory;
    std::deque<char> handles; ///< every handle ever given out is the address of one of these
};

} // namespace Tessel3SyncSimulator

#endif
