#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_SCANLOG_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_SCANLOG_H

#include "ScanSequence.h"

#include <string>
#include <vector>

/// What came of a sequence, line by line: as the scanner did it and as the model has it.
class ScanLog
{
public:
    /// A frame that a callback got.
    struct Frame
    {
        int callback;
        int number;
        int degrees;
        int brightness;
        int exposureUs;
        int images;
        bool spoiled;
    };

    void frame(int at, const Frame &frame);
    void event(int at, int first, int second);

    /// A step, from its beginning to its end.
    void step(int from, int to, const TimedStep &step, int result,
              const Tessel3SyncSimulator::Account &account);

    const std::vector<std::string> &lines() const { return all; }

private:
    std::vector<std::string> all;
};

#endif
