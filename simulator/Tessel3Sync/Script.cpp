#include "Script.h"

#include "Functions.h"
#include "Ranges.h"

#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

void check(const Occasion &occasion)
{
    if (occasion.number < 1)
        throw std::invalid_argument("calls and frames are numbered from 1");
}

void checkDelay(int delayMs)
{
    if (delayMs < 0 || delayMs > MaximumDelayMs)
        throw std::invalid_argument("a delay is 0 to " + std::to_string(MaximumDelayMs) +
                                    " milliseconds");
}

bool isBadDelivery(const FrameFault &fault)
{
    return fault.nullImage || fault.missingImage || fault.toldWidth || fault.toldHeight ||
           fault.numbering != Numbering::Own;
}

void checkImage(int image)
{
    if (!isIn(0, image, MaximumImages - 1))
        throw std::invalid_argument("the images of a delivery are 0 to " +
                                    std::to_string(MaximumImages - 1));
}

void checkToldSide(int side)
{
    if (!isIn(-MaximumSide, side, MaximumSide))
        throw std::invalid_argument("a side that is told is " + std::to_string(-MaximumSide) +
                                    " to " + std::to_string(MaximumSide) + " pixels");
}

void check(const FrameFault &fault)
{
    checkDelay(fault.delayMs);
    checkDelay(fault.backAfterMs.value_or(0));
    checkImage(fault.nullImage.value_or(0));
    checkImage(fault.missingImage.value_or(0));
    checkToldSide(fault.toldWidth.value_or(0));
    checkToldSide(fault.toldHeight.value_or(0));
    if (isBadDelivery(fault) && (fault.drop || fault.disconnect))
        throw std::invalid_argument("a frame that is not delivered has no bad delivery");
}

void check(const Function &function, const std::string &outputName, const Value &value)
{
    const std::string functionName = function.name;
    const OutputName *output = findOutput(function, outputName);
    if (!output)
        throw std::invalid_argument(functionName + " has no output \"" + outputName + '"');
    if (!fits(value, output->kind))
        throw std::invalid_argument("output \"" + outputName + "\" of " + functionName +
                                    " must be " + kindText(output->kind));
}

} // namespace

void Script::add(const std::string &name, const Occasion &occasion, const Answer &answer)
{
    const Function *function = findFunction(name);
    if (!function)
        throw std::invalid_argument("the library has no function \"" + name + '"');
    check(occasion);
    checkDelay(answer.delayMs);
    checkDelay(answer.backAfterMs.value_or(0));
    for (const auto &[output, value] : answer.outputs)
        check(*function, output, value);
    answers[name].add(occasion, answer);
}

void Script::add(const Occasion &occasion, const FrameFault &fault)
{
    check(occasion);
    check(fault);
    frames.add(occasion, fault);
}

void Script::addEvent(const Occasion &frame, const StatusBytes &event)
{
    check(frame);
    frameEvents.emplace_back(frame, event);
}

void Script::addEvent(int afterMs, const StatusBytes &event)
{
    checkDelay(afterMs);
    timed.emplace(afterMs, event);
}

std::vector<StatusBytes> Script::eventsAt(int frame) const
{
    std::vector<StatusBytes> events;
    for (const auto &[occasion, event] : frameEvents) {
        if (occasion.includes(frame))
            events.push_back(event);
    }
    return events;
}

const Answer *Script::find(const std::string &function, int call) const
{
    const auto scripted = answers.find(function);
    return scripted == answers.end() ? nullptr : scripted->second.find(call);
}

const FrameFault *Script::find(int frame) const
{
    return frames.find(frame);
}

} // namespace Tessel3SyncSimulator
