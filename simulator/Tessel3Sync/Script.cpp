#include "Script.h"

#include "Functions.h"

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
    checkDelay(fault.delayMs);
    checkDelay(fault.backAfterMs.value_or(0));
    frames.add(occasion, fault);
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
