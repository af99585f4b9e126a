#include "ScannerFixture.h"

#include <chrono>
#include <numeric>
#include <stdexcept>

using namespace Tessel3Sync;
using namespace std::chrono_literals;

Scanner::Scanner()
{
    Tessel3SyncSimulator::reset(smallSetup());
}

Scanner::~Scanner()
{
    Tessel3SyncSimulator::reset();
}

Tessel3SyncSimulator::ScannerSetup Scanner::smallSetup()
{
    Tessel3SyncSimulator::ScannerSetup setup;
    setup.width = 160;
    setup.height = 128;
    setup.triggerPeriodMs = 2;
    return setup;
}

void Scanner::connect()
{
    ASSERT_EQ(Ok, GetCamerasInformation("KV-SIM-0001", serials, a, b, flags, count));
    serials.push_back(serials.front());
    a.push_back(a.front());
    b.push_back(b.front());
    ASSERT_EQ(Ok, ConnectDevice("SPECKLE", "", serials, a, b, device));
}

Frame Scanner::firstFrame(int mode)
{
    for (;;) {
        const Frame frame = FrameCatcher(device).scan(1, mode).front();
        // On a busy machine the first may be dropped.
        if (frame.number == 1)
            return frame;
    }
}

void Scanner::expectRefused(Tessel3SyncSimulator::Status status, RETSTATUS result)
{
    EXPECT_EQ(static_cast<int>(status), static_cast<int>(result));
}

FrameCatcher::FrameCatcher(void *&scanner, Reaction reaction)
    : device(scanner)
    , react(std::move(reaction))
{
    EXPECT_EQ(Ok, SetScanCallBackFunction(device, &FrameCatcher::receive, this));
}

FrameCatcher::~FrameCatcher()
{
    endCallbacks(SetScanCallBackFunction(device, nullptr, nullptr));
}

bool FrameCatcher::waitFor(std::size_t frames)
{
    std::unique_lock<std::mutex> lock(mutex);
    return changed.wait_for(lock, 10s, [&] { return caught.size() >= frames; });
}

std::vector<Frame> FrameCatcher::frames() const
{
    std::lock_guard<std::mutex> lock(mutex);
    return caught;
}

std::vector<Frame> FrameCatcher::scan(std::size_t frames, int mode)
{
    EXPECT_EQ(Ok, EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(mode), true));
    EXPECT_TRUE(waitFor(frames));
    EXPECT_EQ(Ok, EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(mode), false));
    return this->frames();
}

void FrameCatcher::receive(const void *const &context, std::vector<unsigned char *> &images,
                           const int &width, const int &height, std::vector<int> &numbers)
{
    auto &self = *static_cast<FrameCatcher *>(const_cast<void *>(context));
    Frame frame;
    frame.width = width;
    frame.height = height;
    frame.thread = std::this_thread::get_id();
    frame.number = numbers.empty() ? 0 : numbers.front();
    for (std::size_t i = 0; i < images.size(); ++i) {
        EXPECT_EQ(frame.number, numbers.at(i));
        frame.images.emplace_back(images[i], images[i] + width * height);
    }
    {
        std::lock_guard<std::mutex> lock(self.mutex);
        self.caught.push_back(frame);
    }
    self.changed.notify_all();
    if (self.react)
        self.react(frame);
}

void endCallbacks(RETSTATUS removal)
{
    // The removal has waited for the callback, or the disconnection does.
    if (removal != Ok)
        Tessel3SyncSimulator::reset(Tessel3SyncSimulator::setup());
}

std::string refusalOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const std::invalid_argument &error) {
        return error.what();
    }
    return "accepted";
}

bool eventually(const std::function<bool()> &condition)
{
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

double meanOf(const std::vector<unsigned char> &image)
{
    return std::accumulate(image.begin(), image.end(), 0.0) / static_cast<double>(image.size());
}
