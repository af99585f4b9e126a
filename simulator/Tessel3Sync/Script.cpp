#include "Script.h"

#include "Functions.h"

#include <stdexcept>

namespace Tessel3SyncSimulator {

void Script::add(const std::string &name, int call, const Answer &answer)
{
    const Function *function = findFunction(name);
    if (!function)
        throw std::invalid_argument("the library has no function " + name);
    if (call < 0)
        throw std::invalid_argument("calls are numbered from 1");
    for (const auto &[outputName, value] : answer.outputs) {
        const OutputName *output = findOutput(*function, outputName);
        if (!output)
            throw std::invalid_argument(name + " has no output " + outputName);
        if (!fits(value, output->kind))
            throw std::invalid_argument("output " + outputName + " of " + name + " is " +
                                        kindText(output->kind));
    }
    answers[name][call] = answer;
}

const Answer *Script::find(const std::string &function, int call) const
{
    const auto scripted = answers.find(function);
    if (scripted == answers.end())
        return nullptr;
    auto answer = scripted->second.find(call);
    if (answer == scripted->second.end())
        answer = scripted->second.find(EveryCall);
    return answer == scripted->second.end() ? nullptr : &answer->second;
}

} // namespace Tessel3SyncSimulator
