#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_CLOCKFIXTURE_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_CLOCKFIXTURE_H

#include "FakePictures.h"
#include "VirtualTime.h"

#include <Tessel3SyncSimulator/Control.h>

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

constexpr auto Ok = Tessel3Sync::RETSTATUS_SUCCESS;

using Numbers = std::vector<int>;

/// What became of the frames: delivered, noCallback, hostSlow, simulatorSlow, stopped, planned.
using Counted = std::vector<long long>;

/// A frame as a callback got it.
struct ReceivedFrame
{
    int at; ///< milliseconds
    int number;
    Shown shown;
};

/// A scanner of 16 x 16 pixels and a period of 10 ms in a time that only the test lets pass, and a
/// host that is connected to it over the library's own functions.
class VirtualScanner : public testing::Test
{
protected:
    VirtualScanner();
    ~VirtualScanner() override;

    void connect();
    void switchOn();
    void switchOff();

    /// Has the host take frames or events, each for as long as the reaction takes.
    void takeFrames(std::function<void(const ReceivedFrame &)> reaction = {});
    void takeEvents(std::function<void()> reaction = {});

    Numbers numbers() const;
    static Counted counted();

    VirtualTime time;
    FakePictures pictures{time};
    void *device = nullptr;
    std::vector<ReceivedFrame> frames;
    std::vector<std::pair<int, int>> events;

private:
    static void frame(const void *const &context, std::vector<unsigned char *> &images,
                      const int &width, const int &height, std::vector<int> &numbers);
    static void event(const void *const &context, const unsigned char &first,
                      const unsigned char &second);

    std::function<void(const ReceivedFrame &)> onFrame;
    std::function<void()> onEvent;
};

#endif
