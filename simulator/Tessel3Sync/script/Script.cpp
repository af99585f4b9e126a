#include "script/Script.h"

#include "script/Values.h"

#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

void require(bool condition, const std::string &text)
{
    if (!condition)
        throw std::invalid_argument(text);
}

void check(const Occurrence &occurrence)
{
    require(occurrence.number >= 1, "calls and frames are numbered from 1");
}

void checkDelay(int delayMs)
{
    require(delayMs >= 0 && delayMs <= MaximumDelayMs,
            "a delay must be 0 to " + std::to_string(MaximumDelayMs) + " milliseconds");
}

bool isBadDelivery(const FrameFault &fault)
{
    return fault.nullImage || fault.missingImage || fault.toldWidth || fault.toldHeight ||
           fault.numbering != Numbering::Own;
}

void checkImage(int image)
{
    require(image >= 0 && image < MaximumImages,
            "the number of an image must be 0 to " + std::to_string(MaximumImages - 1));
}

void checkReportedSide(int side)
{
    require(side >= -MaximumSide && side <= MaximumSide,
            "a reported width or height must be " + std::to_string(-MaximumSide) + " to " +
                std::to_string(MaximumSide) + " pixels");
}

void check(const FrameFault &fault)
{
    checkDelay(fault.delayMs);
    checkDelay(fault.backAfterMs.value_or(0));
    checkImage(fault.nullImage.value_or(0));
    checkImage(fault.missingImage.value_or(0));
    checkReportedSide(fault.toldWidth.value_or(0));
    checkReportedSide(fault.toldHeight.value_or(0));
    require(!isBadDelivery(fault) || !(fault.drop || fault.disconnect),
            "a frame that is dropped cannot be delivered badly");
}

void check(const Function &function, const std::string &outputName, const Value &value)
{
    const std::string functionName(function.name);
    const Output *output = findOutput(function, outputName);
    require(output, functionName + " has no output \"" + outputName + '"');
    require(fits(value, output->kind), "output \"" + outputName + "\" of " + functionName +
                                           " must be " + kindText(output->kind));
}

} // namespace

void Script::add(const std::string &function, const Occurrence &occurrence, const Answer &answer)
{
    const Function *known = findFunction(function);
    require(known, "the library has no function \"" + function + '"');
    check(occurrence);
    checkDelay(answer.delayMs);
    checkDelay(answer.backAfterMs.value_or(0));
    for (const auto &[output, value] : answer.outputs)
        check(*known, output, value);
    answers[function].add(occurrence, answer);
}

void Script::add(const Occurrence &frame, const FrameFault &fault)
{
    check(frame);
    check(fault);
    frames.add(frame, fault);
}

void Script::addEvent(const Occurrence &frame, const PlannedEvent &event)
{
    check(frame);
    frameEvents.emplace_back(frame, event);
}

void Script::addEvent(int afterMs, const PlannedEvent &event)
{
    checkDelay(afterMs);
    timed.emplace(afterMs, event);
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

std::vector<PlannedEvent> Script::eventsAt(int frame) const
{
    std::vector<PlannedEvent> events;
    for (const auto &[occurrence, event] : frameEvents) {
        if (occurrence.includes(frame))
            events.push_back(event);
    }
    return events;
}

} // namespace Tessel3SyncSimulator
