#include "ScanModel.h"

#include <algorithm>

using namespace Tessel3SyncSimulator;

namespace {

constexpr int buffers = 4;

} // namespace

ScanModel::ScanModel(const Sequence &followed)
    : sequence(followed)
    , steps(followed.steps.begin(), followed.steps.end())
{
}

const std::vector<std::string> &ScanModel::run()
{
    while (!steps.empty() || call || doing != Doing::Nothing || !events.empty() || backAt) {
        tick();
        ++now;
    }
    return log.lines();
}

std::vector<int> ScanModel::tableAngles() const
{
    std::vector<int> all;
    for (const auto &[frame, degrees] : angles)
        all.push_back(degrees);
    all.push_back(table);
    return all;
}

/// The order of what falls into one millisecond: what is due, the frame thread as long as it is
/// free, the host, and last the end of what the frame thread was doing. The test that
/// this is held against has one thread, so a call and the frame thread's doing end late if the
/// other began within them and takes longer.
void ScanModel::tick()
{
    do {
        timeBrings();
    } while (endsLate() || threadWorks() || callEnds() || stepBegins() || doingEnds());
}

bool ScanModel::endsLate()
{
    const bool free = doing == Doing::Nothing;
    if (call && free && now > call->until)
        endCall();
    else if (!call && !free && now > doneAt)
        finish();
    else
        return false;
    return true;
}

bool ScanModel::callEnds()
{
    if (!call || now < call->until || (doing != Doing::Nothing && !call->nested))
        return false;
    endCall();
    return true;
}

bool ScanModel::stepBegins()
{
    if (call || steps.empty() || now < steps.front().at)
        return false;
    beginStep();
    return true;
}

bool ScanModel::doingEnds()
{
    if (doing == Doing::Nothing || now < doneAt || (call && call->nested))
        return false;
    finish();
    return true;
}

void ScanModel::timeBrings()
{
    if (backAt && now >= *backAt)
        comeBack();
    while (scan && !scan->paused && scan->nextDue <= now)
        becomeDue();
}

bool ScanModel::threadWorks()
{
    if (doing != Doing::Nothing)
        return false;
    if (!events.empty()) {
        const auto [first, second] = events.front();
        events.pop_front();
        if (statusCallback) {
            log.event(now, first, second);
            begin(Doing::StatusCallback, sequence.statusHoldMs);
        }
        return true;
    }
    if (!scan)
        return false;
    if (scan->paused) {
        sceneAtWork = table;
        begin(Doing::FirstScene, sequence.prepareMs);
        if (sceneReady == table)
            finish();
        return true;
    }
    if (!scan->current && static_cast<int>(scan->waiting.size()) > scan->heldBack) {
        scan->current = scan->waiting.front();
        scan->waiting.pop_front();
        scan->currentReady = now + scan->current->fault.delayMs;
    }
    if (!scan->current || now < scan->currentReady)
        return false;
    workOnCurrent();
    return true;
}

void ScanModel::begin(Doing what, int forMs)
{
    doing = what;
    doneAt = now + forMs;
    scanAtWork = scan ? scan->id : 0;
}

void ScanModel::workOnCurrent()
{
    const Frame frame = *scan->current;
    if (frame.fault.drop || frame.fault.disconnect || !scanCallback) {
        drop(frame, &Account::noCallback);
        scan->current.reset();
        if (frame.fault.disconnect)
            lose(frame.fault.backAfterMs);
        return;
    }
    frameAtWork = frame;
    sceneAtWork = frame.degrees;
    if (sceneReady == frame.degrees) {
        begin(Doing::Picture, sequence.pictureOf(frame.number));
        return;
    }
    scan->paused = true;
    scan->pausedSince = now;
    begin(Doing::FrameScene, sequence.prepareMs);
}

void ScanModel::finish()
{
    const Doing done = doing;
    doing = Doing::Nothing;
    if (done == Doing::FirstScene || done == Doing::FrameScene) {
        sceneReady = sceneAtWork;
        resume();
    }
    if (done == Doing::FrameScene) {
        doing = Doing::Picture;
        doneAt = now + sequence.pictureOf(frameAtWork->number);
    }
    if (done == Doing::Picture)
        endPicture();
}

void ScanModel::resume()
{
    if (!scan || scan->id != scanAtWork)
        return;
    scan->paused = false;
    scan->nextDue += now - scan->pausedSince;
}

void ScanModel::endPicture()
{
    if (!scan || scan->id != scanAtWork)
        return; // the frame was counted when its scan ended
    scan->current.reset();
    if (scanCallback)
        deliver();
    else
        drop(*frameAtWork, &Account::noCallback);
}

void ScanModel::deliver()
{
    const Frame &frame = *frameAtWork;
    log.frame(now, {scanCallback, frame.number, frame.degrees, frame.brightness, frame.exposureUs,
                    frame.images, frame.fault.corrupt});
    begin(Doing::ScanCallback, sequence.scanHold(static_cast<int>(counted.delivered)));
    ++counted.produced;
    ++counted.delivered;
}

void ScanModel::becomeDue()
{
    ++framesDue;
    scan->nextDue += scan->periodMs;
    const int number = ++scan->number;
    angles[number] = table;
    if (scan->burstRemaining == 0)
        scan->burstRemaining = burstFrom(number);
    --scan->burstRemaining;
    ++scan->heldBack;
    if (scan->burstRemaining == 0)
        scan->heldBack = 0;
    scan->waiting.push_back(
        {number, table, brightness, exposureUs, scan->mode == 1 ? 2 : 3, faultOf(number)});
    if (scan->waiting.size() > buffers)
        makeRoom();
}

void ScanModel::makeRoom()
{
    auto &waiting = scan->waiting;
    int lost = 0;
    while (lost < buffers && waiting[static_cast<std::size_t>(lost)].fault.disconnect)
        ++lost;
    if (lost >= buffers + 1 - scan->heldBack)
        --scan->heldBack;
    Cause cause = &Account::simulatorSlow;
    if (scan->current && scan->current->fault.delayMs > 0)
        cause = &Account::planned;
    if (doing == Doing::ScanCallback || doing == Doing::StatusCallback)
        cause = &Account::hostSlow;
    drop(waiting[static_cast<std::size_t>(lost)], cause);
    waiting.erase(waiting.begin() + lost);
}

void ScanModel::drop(const Frame &frame, Cause cause)
{
    ++counted.produced;
    if (frame.fault.drop || frame.fault.disconnect)
        cause = &Account::planned;
    ++(counted.*cause);
}

void ScanModel::endScan()
{
    if (!scan)
        return;
    if (scan->current)
        drop(*scan->current, &Account::stopped);
    for (const Frame &frame : scan->waiting)
        drop(frame, &Account::stopped);
    scan.reset();
}

FrameFault ScanModel::faultOf(int frame) const
{
    if (plan.frame == frame)
        return plan.atFrame;
    return plan.every && frame % plan.every == 0 ? plan.atEvery : FrameFault();
}
