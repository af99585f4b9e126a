#include "ScanPlayer.h"

#include "api/SimulatedLibrary.h"

#include <algorithm>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

namespace {

/// The three cameras as they are enumerated: their serial numbers, kinds and ports.
struct Cameras
{
    std::vector<char *> serials;
    std::vector<int> a;
    std::vector<int> b;

    Cameras()
    {
        std::vector<bool> flags;
        int count = 0;
        GetCamerasInformation("", serials, a, b, flags, count);
    }
};

/// The same for every sequence, since the texts last; taken down while the scanner is plugged in.
Cameras &cameras()
{
    static Cameras all;
    return all;
}

} // namespace

ScanPlayer::ScanPlayer(const Sequence &followed)
    : sequence(followed)
{
    SimulatedLibrary::instance().useForTests(time, pictures);
    ScannerSetup setup;
    setup.width = 16;
    setup.height = 16;
    setup.triggerPeriodMs = sequence.periodMs;
    reset(setup);
    setHostile(sequence.hostile);
    cameras();
    pictures.prepareMs = sequence.prepareMs;
    pictures.pictureMs = [this](int frame) { return sequence.pictureOf(frame); };
    for (const TimedStep &step : sequence.steps)
        time.at(step.at, [this, step] { play(step); });
}

ScanPlayer::~ScanPlayer()
{
    reset();
}

const std::vector<std::string> &ScanPlayer::run()
{
    time.passUntil(sequence.steps.back().at + 1000);
    return log.lines();
}

void ScanPlayer::play(const TimedStep &step)
{
    const int from = time.ms();
    const int result = perform(step);
    longestCall = std::max(longestCall, time.ms() - from);
    log.step(from, time.ms(), step, result, account());
}

int ScanPlayer::perform(const TimedStep &step)
{
    const int value = step.value;
    switch (step.step) {
    case Step::Connect:
        return ConnectDevice("SPECKLE", "", cameras().serials, cameras().a, cameras().b, device);
    case Step::Disconnect:
        return DisConnectDevice(device);
    case Step::TriggerOn:
        return EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(value), true);
    case Step::TriggerOff:
        return EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(value), false);
    case Step::Period:
        return SetVideoTriggerPeriod(device, value);
    case Step::Brightness:
        return SetProjectorBrightness(device, value);
    case Step::Exposure:
        return SetCameraExposure(device, 0, value);
    case Step::ScanCallback:
        return setScanCallback(value);
    case Step::StatusCallback:
        return setStatusCallback(value);
    case Step::CloseCameras:
        return CloseDeviceCamera(device);
    case Step::Reconnect:
        return ReconnectDevice(device);
    case Step::Laser:
        return EnableIRLaser(device, true);
    case Step::Snapshot:
        return snapshot();
    case Step::Table:
        setTurntableAngle(30.0 * value);
        break;
    case Step::Event:
        sendStatus(ButtonEvent, static_cast<unsigned char>(value));
        break;
    case Step::Unplug:
        setAttached(false);
        break;
    case Step::Plug:
        setAttached(true);
        break;
    case Step::Plan:
        setFaultPlan(sequence.plans[static_cast<std::size_t>(value)].json());
        break;
    }
    return RETSTATUS_SUCCESS;
}

int ScanPlayer::setScanCallback(int number)
{
    const auto function = number ? &ScanPlayer::takeFrame : nullptr;
    return SetScanCallBackFunction(device, function, &callbacks[number]);
}

int ScanPlayer::setStatusCallback(int number)
{
    const auto function = number ? &ScanPlayer::takeEvent : nullptr;
    return SetStatusCallBackFunction(device, function, &callbacks[number]);
}

int ScanPlayer::snapshot()
{
    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    double exposure = 0.0;
    int gain = 0;
    return SnapColorImage(device, images, width, height, 0, exposure, gain, CONTROLROUTE_SCAN);
}

std::vector<int> ScanPlayer::tableAngles(std::size_t frames)
{
    const Lock lock = SimulatedLibrary::instance().enter();
    std::vector<int> all;
    while (all.size() < frames) {
        const int frame = static_cast<int>(all.size()) + 1;
        all.push_back(static_cast<int>(SimulatedLibrary::instance().scanner().tableAngleAt(frame)));
    }
    return all;
}

void ScanPlayer::takeFrame(const void *const &context, std::vector<unsigned char *> &images,
                           const int &width, const int &height, std::vector<int> &numbers)
{
    const auto &callback = *static_cast<const Callback *>(context);
    ScanPlayer &self = *callback.player;
    const Shown shown = FakePictures::shownIn(images.at(0));
    self.log.frame(self.time.ms(),
                   {callback.number, numbers.at(0), static_cast<int>(shown.tableDegrees),
                    shown.brightness, static_cast<int>(shown.exposureUs),
                    static_cast<int>(images.size()),
                    FakePictures::isSpoiled(images.at(0), width * height)});
    self.time.pass(self.sequence.scanHold(self.deliveries++));
}

void ScanPlayer::takeEvent(const void *const &context, const unsigned char &first,
                           const unsigned char &second)
{
    ScanPlayer &self = *static_cast<const Callback *>(context)->player;
    self.log.event(self.time.ms(), first, second);
    self.time.pass(self.sequence.statusHoldMs);
}
