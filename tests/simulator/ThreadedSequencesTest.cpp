// Random courses of what a host and the world do, on threads of their own, during scans in real
// time. KVSYNC_THREADED_SEQUENCES says how many there are.
#include "ScannerFixture.h"

#include <atomic>
#include <cstdlib>
#include <random>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

namespace {

constexpr int usualSequences = 200;
constexpr int stepsOfEach = 50;

/// The host's end of all callbacks of one sequence.
struct Host
{
    std::mutex mutex;
    std::condition_variable came;
    int last = 0; ///< number of the last frame
    long long delivered = 0;
    long long missing = 0; ///< numbers that were left out
    std::atomic<int> inside{0};

    void take(int number)
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            // A lower number begins a new scan.
            missing += number > last ? number - last - 1 : number - 1;
            last = number;
            ++delivered;
        }
        came.notify_all();
    }
};

/// One registration of a callback, with all that the callback needs.
struct Registration
{
    Host &host;
    void *device; ///< a copy: the host's own variable belongs to its thread
    bool stops;   ///< stops the scan from inside
    std::atomic<bool> ended{false};

    static void frame(const void *const &context, std::vector<unsigned char *> &images,
                      const int &width, const int &height, std::vector<int> &numbers)
    {
        auto &self = *static_cast<Registration *>(const_cast<void *>(context));
        EXPECT_EQ(1, ++self.host.inside) << "two callbacks at a time";
        EXPECT_FALSE(self.ended) << "called after its registration had ended";
        int sum = 0;
        for (const unsigned char *image : images)
            sum += image[0] + image[width * height - 1];
        EXPECT_GE(sum, 0);
        self.host.take(numbers.at(0));
        if (self.stops)
            EnableVideoTrigger(self.device, CAMERA_TRIGGER_MODE_NO_COLOR, false);
        --self.host.inside;
    }

    static void event(const void *const &context, const unsigned char &, const unsigned char &)
    {
        auto &self = *static_cast<Registration *>(const_cast<void *>(context));
        EXPECT_EQ(1, ++self.host.inside) << "two callbacks at a time";
        EXPECT_FALSE(self.ended) << "called after its registration had ended";
        --self.host.inside;
    }
};

const char *const plans[] = {
    "{}",
    R"({"faults": [{"everyFrame": 3, "drop": true}, {"everyFrame": 4, "corrupt": true}]})",
    R"({"faults": [{"everyFrame": 5, "delayMs": 3}, {"function": "Project", "delayMs": 2}]})",
    R"({"faults": [{"frame": 7, "delayMs": 2, "disconnect": true, "backAfterMs": 1}]})",
    R"({"faults": [{"function": "Project", "disconnect": true, "backAfterMs": 1}]})",
    R"({"faults": [{"frame": 2, "disconnect": true}]})",
};

} // namespace

class ThreadedSequence : public Scanner
{
protected:
    using Dice = std::mt19937;

    /// Half of them wait for a frame, so that whatever comes then comes in the midst of a scan.
    void begin(bool scanning)
    {
        ScannerSetup setup = smallSetup();
        setup.width = 32;
        setup.height = 32;
        setup.triggerPeriodMs = 1;
        reset(setup);
        registrations.clear();
        connect();
        setCallbacks(true, true, false);
        ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
        std::unique_lock<std::mutex> lock(host->mutex);
        host->came.wait(lock, [&] { return !scanning || host->delivered > 0; });
    }

    /// What the host does, on one thread.
    void callAtRandom(Dice &dice)
    {
        const int value = static_cast<int>(dice() % 100);
        switch (dice() % 11) {
        case 0:
        case 1:
            EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(value % 2), true);
            break;
        case 2:
            EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, false);
            break;
        case 3:
            SetVideoTriggerPeriod(device, value % 4);
            break;
        case 4:
        case 5:
            setCallbacks(value % 5 != 0, value % 3 != 0, value % 4 == 0);
            break;
        case 6:
            Project(device, static_cast<PROJECTWORKTYPES>(value % 4));
            break;
        case 7:
            ReconnectDevice(device);
            break;
        case 8:
            snap();
            break;
        case 9:
            if (value % 3 == 0 && DisConnectDevice(device) == Ok)
                endRegistrations();
            if (ConnectDevice("SPECKLE", "", serials, a, b, device) == Ok)
                endRegistrations();
            break;
        default:
            look(value * 10);
        }
    }

    /// What happens to the scanner meanwhile, on another.
    static void happenAtRandom(Dice &dice)
    {
        const int value = static_cast<int>(dice() % 100);
        switch (dice() % 7) {
        case 0:
            setAttached(value % 4 != 0);
            break;
        case 1:
            sendStatus(ButtonEvent, static_cast<unsigned char>(value));
            break;
        case 2:
            setTurntableAngle(value % 3);
            break;
        case 3:
            setFaultPlan(plans[static_cast<std::size_t>(value) % std::size(plans)]);
            break;
        case 4:
            setHostile(value % 4 == 0);
            break;
        default:
            look(value * 10);
        }
        setAttached(true);
    }

    /// Looks at the account so often that time passes.
    static void look(int times)
    {
        for (int i = 0; i < times; ++i)
            EXPECT_TRUE(account().balances());
    }

    void setCallbacks(bool frames, bool events, bool stops)
    {
        auto &next = registrations.emplace_back(new Registration{*host, device, stops});
        const auto scan = frames ? &Registration::frame : nullptr;
        const auto status = events ? &Registration::event : nullptr;
        if (SetScanCallBackFunction(device, scan, next.get()) != Ok)
            return;
        SetStatusCallBackFunction(device, status, next.get());
        endRegistrations(1);
    }

    /// All but the newest have been replaced, or their connection has ended: no callback may come.
    void endRegistrations(std::size_t butFor = 0)
    {
        for (std::size_t i = 0; i + butFor < registrations.size(); ++i)
            registrations[i]->ended = true;
    }

    void snap()
    {
        std::vector<unsigned char *> images;
        int width = 0;
        int height = 0;
        double exposure = 0.0;
        int gain = 0;
        SnapColorImage(device, images, width, height, 0, exposure, gain, CONTROLROUTE_SCAN);
    }

    void run(std::uint_fast32_t seed)
    {
        host = std::make_unique<Host>();
        begin(seed % 2 == 0);
        std::thread world([seed] {
            Dice dice(2 * seed);
            for (int i = 0; i < stepsOfEach; ++i)
                happenAtRandom(dice);
        });
        Dice dice(2 * seed + 1);
        for (int i = 0; i < stepsOfEach; ++i)
            callAtRandom(dice);
        world.join();
        // Refused only if the scanner was unplugged when the host last connected; then it is over.
        DisConnectDevice(device);
        endRegistrations();
        const Account counted = account();
        EXPECT_TRUE(counted.balances());
        EXPECT_EQ(host->delivered, counted.delivered);
        EXPECT_LE(host->missing, counted.dropped());
    }

    std::unique_ptr<Host> host;
    std::vector<std::unique_ptr<Registration>> registrations;
};

TEST_F(ThreadedSequence, NeitherHangsNorLosesAFrameWithoutCountingIt)
{
    const char *text = std::getenv("KVSYNC_THREADED_SEQUENCES");
    const int sequences = text ? std::atoi(text) : usualSequences;
    for (int seed = 0; seed < sequences && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        run(static_cast<std::uint_fast32_t>(seed));
    }
}
