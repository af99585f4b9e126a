#include "ScanLog.h"

#include <initializer_list>

namespace {

std::string line(int at, const char *what, std::initializer_list<long long> values)
{
    std::string text = std::to_string(at) + " ms: " + what;
    for (const long long value : values)
        text += ' ' + std::to_string(value);
    return text;
}

} // namespace

void ScanLog::frame(int at, const Frame &frame)
{
    all.push_back(line(at, "frame",
                       {frame.number, frame.callback, frame.degrees, frame.brightness,
                        frame.exposureUs, frame.images, frame.spoiled}));
}

void ScanLog::event(int at, int first, int second)
{
    all.push_back(line(at, "event", {first, second}));
}

void ScanLog::step(int from, int to, const TimedStep &step, int result,
                   const Tessel3SyncSimulator::Account &account)
{
    all.push_back(
        line(from, stepName(step.step),
             {step.value, to, result, account.produced, account.delivered, account.noCallback,
              account.hostSlow, account.simulatorSlow, account.stopped, account.planned}));
}
