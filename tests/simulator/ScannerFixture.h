#ifndef KVSYNC_TESTS_SIMULATOR_SCANNERFIXTURE_H
#define KVSYNC_TESTS_SIMULATOR_SCANNERFIXTURE_H

#include <Tessel3SyncSimulator/Control.h>

#include <gtest/gtest.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

constexpr auto Ok = Tessel3Sync::RETSTATUS_SUCCESS;

using Images = std::vector<std::vector<unsigned char>>;

struct Frame
{
    int number = 0;
    int width = 0;
    int height = 0;
    Images images;
    std::thread::id thread;
};

/// A host's view of one connection to a fresh, small simulated scanner.
class Scanner : public testing::Test
{
protected:
    Scanner();
    ~Scanner() override;

    /// The scanner that each test begins with: 160 x 128 pixels, a period of 2 ms.
    static Tessel3SyncSimulator::ScannerSetup smallSetup();

    /// Enumerates and connects, listing the first camera twice as hosts do.
    void connect();

    /// Frame number 1 of a new scan, whose noise is therefore always the same.
    Frame firstFrame(int mode = 1);

    /// Expects a refusal, by its status.
    static void expectRefused(Tessel3SyncSimulator::Status status, Tessel3Sync::RETSTATUS result);

    void *device = nullptr;
    std::vector<char *> serials;
    std::vector<int> a;
    std::vector<int> b;
    std::vector<bool> flags;
    int count = 0;
};

/// The host's end of a scan: registers itself as the scan callback and keeps what comes.
class FrameCatcher
{
public:
    using Reaction = std::function<void(const Frame &)>;

    /// The reaction runs in the callback, after the frame was kept. It is given here and nowhere
    /// else: so all that it uses is older than the catcher, and still there when its end waits for
    /// the callback.
    explicit FrameCatcher(void *&device, Reaction reaction = {});
    ~FrameCatcher();

    FrameCatcher(const FrameCatcher &) = delete;
    FrameCatcher &operator=(const FrameCatcher &) = delete;

    /// Waits for so many frames in all; false after ten seconds.
    bool waitFor(std::size_t frames);
    std::vector<Frame> frames() const;

    /// Starts the trigger, waits for so many frames, stops it and returns the frames.
    std::vector<Frame> scan(std::size_t frames, int mode = 1);

private:
    static void receive(const void *const &context, std::vector<unsigned char *> &images,
                        const int &width, const int &height, std::vector<int> &numbers);

    void *&device;
    const Reaction react;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::vector<Frame> caught;
};

/// Ends a registration, and waits for its callback though the handle is void.
void endCallbacks(Tessel3Sync::RETSTATUS removal);

/// The text with which the simulator's control refuses something; "accepted" if it does not.
std::string refusalOf(const std::function<void()> &action);

/// Waits until the condition holds; false after ten seconds.
bool eventually(const std::function<bool()> &condition);

double meanOf(const std::vector<unsigned char> &image);

#endif
