#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_SCANPLAYER_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_SCANPLAYER_H

#include "FakePictures.h"
#include "ScanLog.h"
#include "VirtualTime.h"

/// Takes the simulator through a sequence, over the library's own functions.
class ScanPlayer
{
public:
    explicit ScanPlayer(const Sequence &followed);
    ~ScanPlayer();

    ScanPlayer(const ScanPlayer &) = delete;
    ScanPlayer &operator=(const ScanPlayer &) = delete;

    const std::vector<std::string> &run();

    /// How long the longest call took, in milliseconds.
    int longestCallMs() const { return longestCall; }

    /// How the table stood for the first frames of the newest scan.
    static std::vector<int> tableAngles(std::size_t frames);

private:
    /// What is registered as a callback's context.
    struct Callback
    {
        ScanPlayer *player;
        int number;
    };

    void play(const TimedStep &step);
    int perform(const TimedStep &step);
    int setScanCallback(int number);
    int setStatusCallback(int number);
    int snapshot();

    static void takeFrame(const void *const &context, std::vector<unsigned char *> &images,
                          const int &width, const int &height, std::vector<int> &numbers);
    static void takeEvent(const void *const &context, const unsigned char &first,
                          const unsigned char &second);

    const Sequence &sequence;
    ScanLog log;
    VirtualTime time;
    FakePictures pictures{time};
    Callback callbacks[3] = {{this, 0}, {this, 1}, {this, 2}};
    void *device = nullptr;
    int deliveries = 0;
    int longestCall = 0;
};

#endif
