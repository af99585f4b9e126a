// The model's other half: what the host calls and what the world does.
#include "ScanModel.h"

#include "scanner/SessionClock.h"

using namespace Tessel3SyncSimulator;

namespace {

constexpr int success = Tessel3Sync::RETSTATUS_SUCCESS;
constexpr std::uint32_t scannerSeed = 1;

} // namespace

/// The one thing that is not the model's own: whatever lengths the scanner chooses will do.
int ScanModel::burstFrom(int frame) const
{
    return sequence.hostile ? burstLength(scannerSeed, frame) : 1;
}

void ScanModel::beginStep()
{
    const TimedStep step = steps.front();
    steps.pop_front();
    const bool delayed = step.step == Step::Laser && plan.laser && plan.atLaser.delayMs > 0;
    if (delayed) {
        call = Call{step, now, now + plan.atLaser.delayMs, doing != Doing::Nothing, plan.atLaser};
        return;
    }
    const int result = perform(step);
    log.step(now, now, step, result, counted);
}

void ScanModel::endCall()
{
    const Call ended = *call;
    call.reset();
    const int result = answerLaser(ended.answer);
    log.step(ended.from, now, ended.step, result, counted);
}

int ScanModel::refused(bool needsCameras, bool evenIfLost) const
{
    if (!connected)
        return NotConnected;
    if (!attached && !evenIfLost)
        return ConnectionLost;
    return needsCameras && !camerasOpen ? static_cast<int>(CamerasClosed) : success;
}

int ScanModel::perform(const TimedStep &step)
{
    const bool cameras = step.step == Step::TriggerOn || step.step == Step::TriggerOff ||
                         step.step == Step::Exposure || step.step == Step::CloseCameras ||
                         step.step == Step::Snapshot;
    const bool lost = step.step == Step::ScanCallback || step.step == Step::StatusCallback ||
                      step.step == Step::Disconnect;
    const int refusal = refused(cameras, lost);
    switch (step.step) {
    // These need no connection.
    case Step::Connect:
        return connect();
    case Step::Table:
        table = 30 * step.value;
        return success;
    case Step::Event:
        send(ButtonEvent, step.value);
        return success;
    case Step::Unplug:
        lose(std::nullopt);
        return success;
    case Step::Plug:
        comeBack();
        return success;
    case Step::Plan:
        plan = sequence.plans[static_cast<std::size_t>(step.value)];
        return success;
    case Step::Laser:
        return answerLaser(plan.laser ? plan.atLaser : Answer());
    default:
        break;
    }
    if (refusal != success)
        return refusal;
    switch (step.step) {
    case Step::Disconnect:
        endScan();
        forgetConnection();
        break;
    case Step::TriggerOn:
        endScan();
        angles.clear();
        scan = Scan{};
        scan->id = ++scans;
        scan->mode = step.value;
        scan->periodMs = periodMs;
        scan->pausedSince = now;
        scan->nextDue = now + periodMs;
        break;
    case Step::TriggerOff:
        if (scan && sequence.hostile && scanCallback)
            scan->lingering = true;
        else
            endScan();
        break;
    case Step::Period:
        if (step.value < 1)
            return OutOfRange;
        setPeriod(step.value);
        break;
    case Step::Brightness:
        brightness = step.value;
        break;
    case Step::Exposure:
        exposureUs = step.value;
        break;
    case Step::ScanCallback:
        scanCallback = step.value;
        if (!scanCallback && scan && scan->lingering)
            endScan();
        break;
    case Step::StatusCallback:
        statusCallback = step.value;
        break;
    case Step::CloseCameras:
        endScan();
        camerasOpen = false;
        break;
    case Step::Reconnect:
        endScan();
        camerasOpen = true;
        break;
    default:
        break;
    }
    return success;
}

int ScanModel::answerLaser(const Answer &answer)
{
    if (answer.disconnect)
        lose(answer.backAfterMs);
    return answer.status ? *answer.status : refused(false, false);
}

int ScanModel::connect()
{
    if (!attached)
        return UnknownScanner;
    endScan();
    forgetConnection();
    connected = true;
    camerasOpen = true;
    periodMs = sequence.periodMs;
    brightness = 60;
    exposureUs = 8000;
    return success;
}

void ScanModel::forgetConnection()
{
    connected = false;
    camerasOpen = false;
    scanCallback = 0;
    statusCallback = 0;
    events.clear();
}

void ScanModel::setPeriod(int chosen)
{
    periodMs = chosen;
    if (!scan || scan->periodMs == chosen)
        return;
    scan->periodMs = chosen;
    scan->nextDue = (scan->paused ? scan->pausedSince : now) + chosen;
    scan->burstRemaining = 0;
    scan->heldBack = 0;
}

void ScanModel::lose(std::optional<int> backAfterMs)
{
    backAt = backAfterMs ? std::make_optional(now + *backAfterMs) : std::nullopt;
    if (!attached)
        return;
    attached = false;
    camerasOpen = false;
    endScan();
    send(ConnectionEvent, ConnectionIsLost);
}

void ScanModel::comeBack()
{
    backAt.reset();
    if (attached)
        return;
    attached = true;
    send(ConnectionEvent, ConnectionIsBack);
}

void ScanModel::send(int first, int second)
{
    if (connected)
        events.emplace_back(first, second);
}
