// The out arguments of a call: written by name as scripted, or corrupted.
#ifndef TESSEL3SYNCSIMULATOR_OUTPUTS_H
#define TESSEL3SYNCSIMULATOR_OUTPUTS_H

#include "scanner/PictureSource.h"
#include "script/Functions.h"

#include <Tessel3SyncSimulator/Control.h>

#include <functional>
#include <string>
#include <vector>

namespace Tessel3SyncSimulator {

/// A copy of the text that lives as long as the process, one for equal texts: hosts keep what the
/// library returns. Any thread.
char *lastingText(const std::string &text);

/// Writes a text with its terminating zero into a buffer for user information, cut to fit.
void writeToBuffer(char *buffer, const std::string &text);

// Outputs that the types of Tessel3Sync.h do not describe

/// Where a call writes the images of a snapshot: the caller's vector, over buffers of ours.
struct ImageOutput
{
    std::vector<unsigned char *> &pointers;
    Images &storage;
};

/// The caller's buffer of 512 bytes for user information.
struct BufferOutput
{
    char *&buffer;
};

/// Another buffer put in the place of the caller's.
struct ReplacementOutput
{
    char *&buffer;
};

/// The kind of output that a type of argument is.
template <typename Target>
inline constexpr Kind kindOf = Kind::Null;
template <>
inline constexpr Kind kindOf<bool> = Kind::Flag;
template <>
inline constexpr Kind kindOf<int> = Kind::Integer;
template <>
inline constexpr Kind kindOf<double> = Kind::Number;
template <>
inline constexpr Kind kindOf<std::string> = Kind::Text;
template <>
inline constexpr Kind kindOf<char *> = Kind::TextOrNull;
template <>
inline constexpr Kind kindOf<std::vector<bool>> = Kind::Flags;
template <>
inline constexpr Kind kindOf<std::vector<int>> = Kind::Integers;
template <>
inline constexpr Kind kindOf<std::vector<char *>> = Kind::TextList;
template <>
inline constexpr Kind kindOf<ImageOutput> = Kind::TextList;
template <>
inline constexpr Kind kindOf<BufferOutput> = Kind::TextOrNull;
template <>
inline constexpr Kind kindOf<ReplacementOutput> = Kind::Text;

// Each writes a value. One of another kind, which scripting refuses, writes nothing.

template <typename Target>
void writeOutput(Target &target, const Value &value)
{
    if (const auto *held = std::get_if<Target>(&value))
        target = *held;
}
void writeOutput(char *&target, const Value &value);
void writeOutput(void *&target, const Value &value);
void writeOutput(std::vector<char *> &target, const Value &value);
void writeOutput(ImageOutput &target, const Value &value);
void writeOutput(BufferOutput &target, const Value &value);
void writeOutput(ReplacementOutput &target, const Value &value);

// Each turns what the call wrote into its complement.
void corruptOutput(bool &target);
void corruptOutput(int &target);
void corruptOutput(double &target);
void corruptOutput(std::string &target);
void corruptOutput(char *&target);
void corruptOutput(void *&target);
void corruptOutput(std::vector<bool> &target);
void corruptOutput(std::vector<int> &target);
void corruptOutput(std::vector<char *> &target);
void corruptOutput(ImageOutput &target);
void corruptOutput(BufferOutput &target);
void corruptOutput(ReplacementOutput &target);

/// One out argument of a call.
struct BoundOutput
{
    std::function<void(const Value &)> write;
    std::function<void()> corrupt;
};

/// A function with the out arguments of one call, in the order of the table.
struct CalledFunction
{
    const Function *function;
    std::vector<BoundOutput> outputs;
};

template <typename... Targets>
constexpr bool areOutputsOf(const Function &function)
{
    const Kind kinds[] = {kindOf<Targets>..., Kind::Null};
    bool fit = function.outputCount() == sizeof...(Targets);
    for (std::size_t i = 0; fit && i < sizeof...(Targets); ++i)
        fit = function.outputs[i].kind == kinds[i];
    return fit;
}

/// The place of a function in the table.
constexpr std::size_t indexOf(std::string_view name)
{
    const Function *function = findFunction(name);
    return function ? static_cast<std::size_t>(function - functions) : std::size(functions);
}

/// Binds the out arguments of a call. What differs from the table does not compile.
template <std::size_t index, typename... Targets>
CalledFunction call(Targets &...targets)
{
    static_assert(index < std::size(functions), "the library has no such function");
    static_assert(areOutputsOf<Targets...>(functions[index]),
                  "the outputs are those of script/Functions.h, in that order");
    return {&functions[index],
            {BoundOutput{[&targets](const Value &value) { writeOutput(targets, value); },
                         [&targets] { corruptOutput(targets); }}...}};
}

} // namespace Tessel3SyncSimulator

#endif
