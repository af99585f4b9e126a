// The scanner as its users are told it is, written to be read: one millisecond after another, all
// state in plain numbers. It knows nothing of how the simulator does it.
#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_SCANMODEL_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_SCANMODEL_H

#include "ScanLog.h"

#include <deque>
#include <map>
#include <optional>
#include <utility>

class ScanModel
{
public:
    explicit ScanModel(const Sequence &followed);

    /// What comes of the sequence.
    const std::vector<std::string> &run();

    /// How many frames became due; every one must have ended.
    long long due() const { return framesDue; }
    const Tessel3SyncSimulator::Account &account() const { return counted; }

    /// The angle of the table for each frame of the newest scan, and the present one.
    std::vector<int> tableAngles() const;

private:
    using Cause = long long Tessel3SyncSimulator::Account::*;

    struct Frame
    {
        int number;
        int degrees;
        int brightness;
        int exposureUs;
        int images;
        Tessel3SyncSimulator::FrameFault fault;
    };

    /// One scan. While it is paused, because a scene is being prepared, nothing becomes due.
    struct Scan
    {
        int id;
        int mode;
        int periodMs;
        int nextDue;
        bool paused = true;
        int pausedSince;
        bool lingering = false;
        int number = 0;
        int burstRemaining = 0; ///< frames that are still to come before those held back are sent
        int heldBack = 0;
        std::deque<Frame> waiting;
        std::optional<Frame> current;
        int currentReady = 0;
    };

    /// What the frame thread is doing.
    enum class Doing { Nothing, FirstScene, FrameScene, Picture, ScanCallback, StatusCallback };

    /// A call that waits for its planned delay; nested if the frame thread waits for it.
    struct Call
    {
        TimedStep step;
        int from;
        int until;
        bool nested;
        Tessel3SyncSimulator::Answer answer;
    };

    void tick();
    void timeBrings();

    // Each does one thing if there is one to do.
    bool endsLate();
    bool callEnds();
    bool stepBegins();
    bool doingEnds();

    // What the frame thread does.
    bool threadWorks();
    void begin(Doing what, int forMs);
    void finish();
    void workOnCurrent();
    void resume();
    void endPicture();
    void deliver();

    // What becomes of frames.
    void becomeDue();
    void makeRoom();
    void drop(const Frame &frame, Cause cause);
    void endScan();
    int burstFrom(int frame) const;
    Tessel3SyncSimulator::FrameFault faultOf(int frame) const;

    // What the host and the world do.
    void beginStep();
    void endCall();
    int perform(const TimedStep &step);
    int refused(bool needsCameras, bool evenIfLost) const;
    int answerLaser(const Tessel3SyncSimulator::Answer &answer);
    int connect();
    void forgetConnection();
    void setPeriod(int periodMs);
    void lose(std::optional<int> backAfterMs);
    void comeBack();
    void send(int first, int second);

    const Sequence &sequence;
    ScanLog log;
    int now = 0;
    std::deque<TimedStep> steps;
    std::optional<Call> call;
    Plan plan;

    bool attached = true;
    std::optional<int> backAt;
    int table = 0;

    bool connected = false;
    bool camerasOpen = false;
    int periodMs = 0;
    int brightness = 0;
    int exposureUs = 0;
    int scanCallback = 0;
    int statusCallback = 0;
    std::deque<std::pair<int, int>> events;

    std::optional<Scan> scan;
    int scans = 0;
    std::map<int, int> angles; ///< of the newest scan's frames

    Doing doing = Doing::Nothing;
    int doneAt = 0;
    int scanAtWork = 0;
    std::optional<Frame> frameAtWork;
    int sceneAtWork = 0;
    int sceneReady = -1; ///< the angle of the scene made last

    Tessel3SyncSimulator::Account counted;
    long long framesDue = 0;
};

#endif
