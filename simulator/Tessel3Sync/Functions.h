// The forty-one functions and their outputs, by name.
#ifndef TESSEL3SYNCSIMULATOR_FUNCTIONS_H
#define TESSEL3SYNCSIMULATOR_FUNCTIONS_H

#include <Tessel3SyncSimulator/Control.h>

#include <string>
#include <vector>

namespace Tessel3SyncSimulator {

enum class OutputKind { Flag, Integer, Number, Text, TextOrNull, Null, Flags, Integers, TextList };

struct OutputName
{
    const char *name;
    OutputKind kind;
};

struct Function
{
    const char *name;
    std::vector<OutputName> outputs;
};

const std::vector<Function> &functions();

/// Null if the library has no such function, or the function no such output.
const Function *findFunction(const std::string &name);
const OutputName *findOutput(const Function &function, const std::string &name);

bool fits(const Value &value, OutputKind kind);

/// The kind in words, for messages.
const char *kindText(OutputKind kind);

} // namespace Tessel3SyncSimulator

#endif
