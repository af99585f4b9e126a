#include "ClockFixture.h"

#include "api/SimulatedLibrary.h"

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

VirtualScanner::VirtualScanner()
{
    SimulatedLibrary::instance().useForTests(time, pictures);
    ScannerSetup setup;
    setup.width = 16;
    setup.height = 16;
    setup.triggerPeriodMs = 10;
    reset(setup);
    connect();
}

VirtualScanner::~VirtualScanner()
{
    reset();
}

void VirtualScanner::connect()
{
    std::vector<char *> serials;
    std::vector<int> a;
    std::vector<int> b;
    std::vector<bool> flags;
    int count = 0;
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    ASSERT_EQ(Ok, ConnectDevice("SPECKLE", "", serials, a, b, device));
}

void VirtualScanner::switchOn()
{
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
}

void VirtualScanner::switchOff()
{
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, false));
}

void VirtualScanner::takeFrames(std::function<void(const ReceivedFrame &)> reaction)
{
    onFrame = std::move(reaction);
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, &VirtualScanner::frame, this));
}

void VirtualScanner::takeEvents(std::function<void()> reaction)
{
    onEvent = std::move(reaction);
    ASSERT_EQ(Ok, SetStatusCallBackFunction(device, &VirtualScanner::event, this));
}

void VirtualScanner::frame(const void *const &context, std::vector<unsigned char *> &images,
                           const int &, const int &, std::vector<int> &numbers)
{
    auto &self = *static_cast<VirtualScanner *>(const_cast<void *>(context));
    self.frames.push_back({self.time.ms(), numbers.at(0), FakePictures::shownIn(images.at(0))});
    if (self.onFrame)
        self.onFrame(self.frames.back());
}

void VirtualScanner::event(const void *const &context, const unsigned char &first,
                           const unsigned char &second)
{
    auto &self = *static_cast<VirtualScanner *>(const_cast<void *>(context));
    self.events.emplace_back(first, second);
    if (self.onEvent)
        self.onEvent();
}

Numbers VirtualScanner::numbers() const
{
    Numbers all;
    for (const ReceivedFrame &frame : frames)
        all.push_back(frame.number);
    return all;
}

Counted VirtualScanner::counted()
{
    const Account now = account();
    EXPECT_TRUE(now.balances());
    return {now.delivered,     now.noCallback, now.hostSlow,
            now.simulatorSlow, now.stopped,    now.planned};
}
